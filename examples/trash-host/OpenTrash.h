#pragma once

#include "Database.h"

#include <dirent.h>
#include <memory>
#include <string>
#include <vector>

/// Whether there is anything at `path`, a link that leads nowhere included.
bool Exists(const std::string& path);

/// Whether `path` is a folder and not a link to one.
bool IsFolder(const std::string& path);

/// Refuses a folder with a link to a folder in it. The library's purge follows such links and empties what they lead to,
/// wherever that is.
void RefuseLinksToFolders(const std::string& folder);

/// The application's trash for the time of one command. No other run of this program gets at it meanwhile, and its
/// database has been read and found sound.
///
/// The library's trash operations do not say whether they worked, and A FILE THAT CANNOT BE MOVED IS LOST (see Rename).
/// So every move is tried before the library is asked for it, and the result is looked at.
class OpenTrash {
public:
    /// For changing, missing folders are made.
    explicit OpenTrash(Use use);

    std::string PathOf(const std::string& name) const { return folder + "/" + name; }
    /// The name of a recorded path inside the trash folder; the path itself when it is elsewhere.
    std::string NameOf(const std::string& path) const;
    /// The names of what lies in the trash folder, but for the database.
    std::vector<std::string> Names() const;

    enum class Direction { In, Out };
    /// Refuses unless the system can move the item that is at one of `name` in the trash and `path` to the other, at
    /// which nothing is.
    void TryMove(Direction direction, const std::string& name, const std::string& path) const;

    /// Reads the database again, after the library has changed it.
    void Reload() { records = ReadDatabase(PathOf(".trash.db"), Use::Change); }
    void Save() const { WriteDatabase(PathOf(".trash.db"), records); }
    /// Forgets what is recorded as `path` and below, where nothing is any more. The library leaves the records of the
    /// files in a folder behind, and a later folder of that name would be purged by their dates.
    void Forget(const std::string& path);

    const std::string folder;
    Records records; ///< as in the database when it was last read

private:
    std::unique_ptr<DIR, int (*)(DIR*)> stream; ///< the trash folder, locked; null when there is none
};
