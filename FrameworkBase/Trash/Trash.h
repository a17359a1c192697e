#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup trash
/// The application's own trash: a folder "Trash" in the application's folder (see GetHomeFolderMac), flat, and in it a
/// database, ".trash.db", of where each item came from and when. DeleteFileToRecycleBin with `loadDatabase`,
/// DeleteFolderWithContents unless it deletes for good, CanPutBack, PutBack, and CleanupTrashFolder(all, callback) load
/// the database, work and save it; the others do neither. Call those that load it from one thread, and not while a
/// cleanup is at work, in this process or another: operations that overlap may lose entries, and OF TWO ITEMS OF ONE
/// NAME THE FIRST.
///
/// Nothing reports failures but by the results below. Items are moved by Rename, and WHEN A MOVE FAILS, WHATEVER THE
/// REASON, A FILE IS LOST, unless it cannot be deleted where it is, and a folder is copied as far as that goes and then
/// deleted, links followed: another volume; a trash folder that may not be written, or that cannot be made because
/// "Library/Application Support" is missing in the home folder, as it is for every new user of Linux; an old place that
/// has gone. Whoever must not lose an item looks at both folders first, and afterwards whether it arrived.
/// @{

/// The path of the trash folder, without a trailing "/". The application's folder is created when missing, the trash
/// folder is not.
FRAMEWORKBASE_EXPORT std::string GetTrashFolderPath();

/// Moves the file or folder `path` into the trash, which is created when missing, and records it. Pass a full path
/// without a trailing "/": it is recorded as it is, as the place to go back to. The item keeps its name; when that is
/// taken, a number from 1 up is put before the extension.
///
///     "/a/song.wav", then "/b/song.wav" => "song.wav", "song1.wav" in the trash
///     "/a/README", then "/b/README"     => "README", "README1"
///     "/a/.hidden"                      => "1": a name that is all extension is left with the number
///
/// A name is taken when it can be opened for reading: AN ITEM OF THE SAME NAME THAT MAY NOT BE READ IS REPLACED, or,
/// when one of the two is a folder, the new item is lost or mixed with it. While the process has no descriptor left no
/// name is taken. A file named ".trash.db" is overwritten by the database while there is none. On a volume that
/// ignores letter case and Unicode form, as a Mac's usual one does, this holds for every spelling of that name:
/// callers refuse them all. A folder that holds the trash must not be moved there: it is copied into itself until
/// paths are too long, and then deleted.
///
/// The entry is recorded also when the move failed.
///
/// With `loadDatabase` false the database is neither loaded nor saved: for DeleteFolderWithContents, which has loaded
/// it. Applications cannot.
FRAMEWORKBASE_EXPORT void DeleteFileToRecycleBin(std::string path, bool loadDatabase);

/// With `permanently`, deletes the folder `path` with remove_dir_content, WHICH FOLLOWS LINKS, within its limits.
/// Otherwise moves it into the trash as DeleteFileToRecycleBin does. `ignored` is ignored.
FRAMEWORKBASE_EXPORT void DeleteFolderWithContents(const char* path, bool ignored, bool permanently);

/// Returns whether the item at `trashPath`, its full path in the trash, is recorded with a place to go back to. Neither
/// the item nor that place is looked for on the disk. The database is loaded and saved again.
FRAMEWORKBASE_EXPORT bool CanPutBack(std::string trashPath);

/// Moves the item at `trashPath`, its full path in the trash, back to where it came from with Rename, and removes its
/// record even if the move failed. Returns what CanPutBack would have returned: true also if the item was lost.
///
///     a file where the file was                        => REPLACED
///     a folder where the folder was                    => merged, ITS FILES OF THE SAME NAMES REPLACED
///     the folder it came from has gone                 => THE ITEM IS DELETED, file or folder
///     an item of the other kind now at the old place   => THE ITEM IS DELETED
///     the item has gone, a readable file where it was  => that file is copied into the trash
FRAMEWORKBASE_EXPORT bool PutBack(std::string trashPath);

/// Gives every file of `folder` the time of now in the database, recording those that are not, AND REPLACES where each
/// came from by its bare name, so that it can no longer be put back. Given the trash folder it records ".trash.db" too.
/// Subfolders are then looked up by their bare names, in the working directory of the process and not in `folder`: only
/// the top level is reliably touched. Where those lookups lead in a circle (a folder there that holds one of its own
/// name) the process runs out of stack and ends.
///
/// The database is neither loaded nor saved, and applications cannot load it: what this records is in memory alone
/// until the next operation, which loads the file's records in place of those of the same files.
FRAMEWORKBASE_EXPORT void TouchFolder(std::string folder);

/// @}

} // namespace Tolvex::FileNames
