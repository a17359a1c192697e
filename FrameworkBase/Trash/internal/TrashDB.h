#pragma once

#include <FrameworkBase/Base/internal/CritSec.h>
#include <FrameworkBase/Base/internal/DateTime.h>

#include <map>
#include <string>
#include <utility>

/// The records of the trash: where each item came from, and when it was added. A working copy of the file ".trash.db"
/// in the trash folder (docs/trash-database.md has its format): every trash operation calls Load, works, and calls
/// Unload.
///
/// Each call holds the lock while it uses the map. From Load to Unload nothing is locked: two operations at once on one
/// object may lose records.
class TrashDB {
public:
    using DateTime = VarnelNative::Utility::DateTime;

    /// Returns the path of the database file: in the working directory before the first Load.
    std::string GetDBFile() const;

    /// Makes `trashFolder` the folder of this database, and adds the records of its file to the map, where they replace
    /// those with the same key. A missing file adds nothing. A damaged file adds the records before the damage; a
    /// record that is cut inside its origin is added with an empty one. Neither is reported.
    void Load(std::string trashFolder);

    /// Writes the map to the file and empties the map. On failure the map is left unchanged, the file keeps what was
    /// written, its stream, if it could be opened, remains open, and nothing is reported. A failure that shows only
    /// when the file is closed is not noticed: it concerns the last bytes, up to a block of the stream, and so all of
    /// them if the database is smaller than that (4096 bytes on the usual file systems).
    void Unload();

    /// Records, with the present time, that the item at `trashPath` came from `originalPath`.
    void InsertFile(std::string trashPath, std::string originalPath);

    /// Stores the origin of a recorded item, and returns true if it is not empty. Leaves `originalPath` unchanged if
    /// the item is not recorded.
    bool GetFileOriginalPath(std::string trashPath, std::string& originalPath);

    /// Stores when a recorded item was added and returns true. Returns false, and leaves `added` unchanged, if it is
    /// not recorded.
    bool GetFileAdded(std::string trashPath, DateTime& added);

    /// Removes the record of the item, if there is one.
    void DeleteFile(std::string trashPath);

    std::map<std::string, std::pair<DateTime, std::string>> files; ///< by the item's full path in the trash
    std::string folder;
    Tolvex::Sync::CCritSec lock;
};

/// The one database of the process. It is not saved at exit.
extern TrashDB trashDB;
