#pragma once

#include <csignal>
#include <dirent.h>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// The commands. Each checks everything before it does anything: after a Refusal the trash and the files are as they
// were, unless the files changed under way or an interruption came. The database tells in any case what is where.

void PutIntoTrash(const std::vector<std::string>& paths);
/// Takes items as PrintTrash prints them or by their full paths.
void RestoreFromTrash(const std::vector<std::string>& items);
/// Deletes what has been in the trash for 30 days, or with `all` everything recorded and every folder. Prints what is
/// gone, and of the rest how long it stays and what is recorded only now.
void PurgeTrash(bool all);
/// Prints what the trash database holds and what lies in the trash unrecorded.
void PrintTrash();

/// Why a command is not carried out, in one line for the user. Names in it have gone through Shown.
struct Refusal : std::runtime_error {
    using runtime_error::runtime_error;
};
void RefuseIf(bool isObstacle, const std::string& reason);
extern volatile std::sig_atomic_t interruption; ///< the signal that asked the program to stop; 0 while none did

/// `text` for the terminal: control characters, backslashes and what is not UTF-8 as \xNN, so that no file name can
/// play tricks and no two names look alike.
std::string Shown(const std::string& text);
/// The columns of the terminal that `shown` takes.
std::size_t Width(const std::string& shown);
void Say(const std::string& line);
/// Shows `text` below the lines until the next one is said; shows nothing where there is no terminal.
void ShowProgress(const std::string& text);
/// Times are those of the trash database: in units of 100 nanoseconds since 1601.
constexpr long long ticksPerDay = 864'000'000'000;
long long Now();
std::string ShownTime(long long ticks);

/// Whether there is anything at `path`, a link that leads nowhere included.
bool Exists(const std::string& path);
/// Whether `path` is a folder and not a link to one.
bool IsFolder(const std::string& path);
/// Refuses unless the user has these `rights` on `path`, those of unistd.h.
void CheckAccess(const std::string& path, int rights);
/// The files in `folder` and below, links included; none when it is no folder. Refuses a folder that the user could not
/// empty, and one with a link to a folder: a purge would empty what that leads to, wherever it is.
std::vector<std::string> FilesOfDeletable(const std::string& folder);

/// When an item came into the trash and from where: an empty text for files that a purge found and recorded.
using Record = std::pair<long long, std::string>;
/// By the item's full path in the trash.
using Records = std::map<std::string, Record>;

/// What the trash is opened for. Only Put makes folders. A purge needs no room on the disk: it is what gives it.
enum class Use { List, Purge, Restore, Put };

/// The application's trash for the time of one command. No other run of this program gets at it meanwhile, and its
/// database has been read and found sound: the library would read a damaged one up to the damage and save only that.
struct OpenTrash {
    explicit OpenTrash(Use use);

    std::string PathOf(const std::string& name) const { return folder + "/" + name; }
    /// The name of a recorded path inside the trash folder; the path itself when it is elsewhere.
    std::string NameOf(const std::string& path) const;
    /// The names of what lies in the trash folder, but for the database.
    std::set<std::string> Names() const;
    /// The records that tell the age of the item at `path`: its own, or those of the files in the folder that it is.
    std::pair<Records::iterator, Records::iterator> RecordsOf(const std::string& path);
    /// Drops the records of `path` and below, where nothing is any more, and tells whether there were any. The library
    /// keeps those of the files in a folder, and a later folder of that name would be purged by their dates.
    bool Forget(const std::string& path);
    /// Makes the database hold `records`, as a whole or not at all.
    void Save() const;
    /// Saves `records` unless the library has, with the times that it gave and what it recorded besides.
    void Settle();
    /// Calls `move` for one item after the other, up to an interruption, and settles.
    void ForEach(const std::vector<std::string>& items, const std::function<void(const std::string&)>& move);

    std::string folder;
    std::string database;
    Records records;                            ///< at first as in the database
    Records saved;                              ///< as in the database at first
    std::unique_ptr<DIR, int (*)(DIR*)> stream; ///< the trash folder, locked; null when there is none
};
