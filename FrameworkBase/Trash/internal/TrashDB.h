#pragma once

#include <FrameworkBase/Base/internal/CritSec.h>
#include <FrameworkBase/Base/internal/DateTime.h>

#include <map>
#include <string>
#include <utility>

/// What is in the trash: where each item came from and when. A working copy of the file ".trash.db" in the trash folder
/// (docs/trash-database.md has its format): every trash operation calls Load, works and calls Unload.
///
/// Each call holds the lock while it touches the map. A whole Load ... Unload bracket does not: two at once on one
/// object may lose entries.
class TrashDB {
public:
    using DateTime = VarnelNative::Utility::DateTime;

    /// The path of the database file; in the working directory before the first Load.
    std::string GetDBFile() const;

    /// Makes `trashFolder` the folder whose database this is and adds the entries of its file to the map, where they
    /// replace those of the same key. A missing file adds nothing; a damaged one the entries before the damage, and
    /// that of a record cut inside its origin, with an empty one. Not told either way.
    void Load(std::string trashFolder);

    /// Writes the map to the file and empties it. When that fails the map stays, the file keeps what was written, its
    /// stream, if it could be opened, stays open, and nothing is told. A failure that shows only when the file is
    /// closed counts as none: it is that of the last bytes, up to a block of the stream, so of all of them when the
    /// database is smaller than that (4096 bytes on the usual file systems).
    void Unload();

    /// Records, with the time of now, that the item at `trashPath` came from `originalPath`.
    void InsertFile(std::string trashPath, std::string originalPath);

    /// Stores where a recorded item came from, and returns whether that is known: an empty text is not. `originalPath`
    /// stays when the item is not recorded.
    bool GetFileOriginalPath(std::string trashPath, std::string& originalPath);

    /// Stores when a recorded item was put into the trash and returns true; returns false with `added` untouched when
    /// it is not recorded.
    bool GetFileAdded(std::string trashPath, DateTime& added);

    /// Forgets the item, if it is recorded.
    void DeleteFile(std::string trashPath);

    std::map<std::string, std::pair<DateTime, std::string>> files; ///< by the item's full path in the trash
    std::string folder;
    Tolvex::Sync::CCritSec lock;
};

/// The one database of the process. It is not saved at exit.
extern TrashDB trashDB;
