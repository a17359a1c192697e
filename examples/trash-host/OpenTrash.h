#pragma once

#include "Database.h"

#include <dirent.h>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// Whether there is anything at `path`, a link that leads nowhere included.
bool Exists(const std::string& path);

/// Whether `path` is a folder and not a link to one.
bool IsFolder(const std::string& path);

/// Refuses unless the user has these rights on `path`, those of unistd.h.
void CheckAccess(const std::string& path, int rights);

/// The files in `folder` and below, links included; none when it is no folder. Refuses a folder that a purge could not
/// delete from the trash, where its path is or will be `pathInTrash`, and one with a link to a folder: the purge would
/// empty what that leads to, wherever it is.
std::vector<std::string> FilesOfDeletable(const std::string& folder, const std::string& pathInTrash);

/// What the trash is opened for. Only Put makes folders. A purge needs no room on the disk: it is what gives it.
enum class Use { List, Purge, Restore, Put };

/// The application's trash for the time of one command. No other run of this program gets at it meanwhile, and its
/// database has been read and found sound.
struct OpenTrash {
    explicit OpenTrash(Use use);

    std::string PathOf(const std::string& name) const { return folder + "/" + name; }
    /// The name of a recorded path inside the trash folder; the path itself when it is elsewhere.
    std::string NameOf(const std::string& path) const;
    /// The names of what lies in the trash folder, but for the database.
    std::set<std::string> Names() const;
    /// The records of what lies in the folder `path`.
    std::pair<Records::iterator, Records::iterator> RecordsBelow(const std::string& path);
    /// Drops the records of `path` and below, where nothing is any more. The library keeps those of the files in a
    /// folder, and a later folder of that name would be purged by their dates.
    bool Forget(const std::string& path);
    void Save() const { WriteDatabase(PathOf(".trash.db"), records); }
    /// Makes the database hold `records`, whatever the library has left of it, with the times that the library gave and
    /// with what it recorded besides.
    void Settle();
    /// Calls `move` for one item after the other, up to an interruption, and settles.
    void ForEach(const std::vector<std::string>& items, const std::function<void(const std::string&)>& move);

    std::string folder;
    Records records;                            ///< at first as in the database
    Records saved;                              ///< as in the database at first
    std::unique_ptr<DIR, int (*)(DIR*)> stream; ///< the trash folder, locked; null when there is none
};
