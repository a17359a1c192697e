#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup trash
/// The application's own trash: the folder "Trash" in the application's folder (see GetHomeFolderMac). It is flat, and
/// holds a database, ".trash.db", of where each item came from and when.
///
/// DeleteFileToRecycleBin with `loadDatabase`, DeleteFolderWithContents unless it deletes for good, CanPutBack, PutBack
/// and CleanupTrashFolder(all, callback) load the database, work, and save it; the other functions do neither. Call
/// those that load it from one thread, and not during a cleanup, in this process or another: operations that overlap
/// may lose records, and if two items share a name, THE FIRST MAY BE LOST.
///
/// Failures are reported only by the results below. If the database may not be written, an item moves all the same, and
/// its record is in memory only. Items are moved by Rename, which DELETES AN ITEM THAT IT CANNOT MOVE: its declaration
/// lists the reasons. One more is a home folder without "Library/Application Support", as every new Linux user's is:
/// then no trash can be created. Callers that cannot afford to lose an item use the module examples/safe-trash instead.
/// @{

/// Returns the path of the trash folder, without a trailing "/". Creates the application's folder if it is missing, and
/// not the trash folder.
FRAMEWORKBASE_EXPORT std::string GetTrashFolderPath();

/// Moves the file or folder `path` into the trash, which is created if it is missing, and records it, even if the move
/// failed. Pass a full path without a trailing "/": it is recorded as it is, as the place to go back to. The item keeps
/// its name if that is free, and otherwise gets the lowest free number from 1 up before its extension. A name that
/// consists of an extension alone always becomes a number:
///
///     "/a/song.wav", then "/b/song.wav" => "song.wav", "song1.wav" in the trash
///     "/a/README", then "/b/README"     => "README", "README1"
///     "/a/.hidden"                      => "1"
///
/// A name counts as taken if the item can be opened for reading: AN ITEM OF THE SAME NAME THAT MAY NOT BE READ IS
/// REPLACED or, if one of the two is a folder, the new item is lost or mixed with it. While the process has no
/// descriptor left no name is taken.
///
/// A file named ".trash.db" is overwritten by the database if there is none yet. On a volume that ignores letter case
/// and Unicode form, as a Mac's usual one does, this holds for every spelling of that name. Callers refuse them all.
/// They also refuse a folder that holds the trash: it is copied into itself until paths are too long, and then deleted.
///
/// If `loadDatabase` is false, the database is neither loaded nor saved. That is for DeleteFolderWithContents, which
/// has loaded it. Applications cannot load it.
FRAMEWORKBASE_EXPORT void DeleteFileToRecycleBin(std::string path, bool loadDatabase);

/// Moves the folder `path` into the trash as DeleteFileToRecycleBin does or, if `permanently` is true, deletes it by
/// remove_dir_content, WHICH FOLLOWS LINKS. `ignored` is ignored.
FRAMEWORKBASE_EXPORT void DeleteFolderWithContents(const char* path, bool ignored, bool permanently);

/// Returns true if the item at `trashPath`, its full path in the trash, is recorded with an origin. Neither the item
/// nor the origin is looked for on the disk. The database is loaded and saved again.
FRAMEWORKBASE_EXPORT bool CanPutBack(std::string trashPath);

/// Moves the item at `trashPath`, its full path in the trash, back to its origin by Rename, and removes its record even
/// if the move failed. Returns true if an origin was recorded, ALSO IF THE ITEM WAS LOST. Otherwise moves nothing.
///
///     a file where the file was                        => REPLACED
///     a folder where the folder was                    => merged, ITS FILES OF THE SAME NAMES REPLACED
///     the folder it came from has gone                 => THE ITEM IS DELETED, file or folder
///     an item of the other kind now at the old place   => THE ITEM IS DELETED
///     the item has gone, a readable file where it was  => that file is copied into the trash
FRAMEWORKBASE_EXPORT bool PutBack(std::string trashPath);

/// Records every file of `folder` in the database with the present time, AND REPLACES its origin by its bare name, so
/// that it can no longer be put back. In the trash folder this includes ".trash.db". Subfolders are looked up by their
/// bare names in the working directory, not in `folder`: only the top level is reliably recorded. If a folder there
/// holds one of its own name, the process runs out of stack and ends.
///
/// The database is neither loaded nor saved, and applications cannot load it: the records are in memory until the next
/// operation, which replaces those that the database file has as well.
FRAMEWORKBASE_EXPORT void TouchFolder(std::string folder);

/// @}

} // namespace Tolvex::FileNames
