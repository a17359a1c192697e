#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup trash
/// The application's own trash: a folder "Trash" in the application's folder (see GetHomeFolderMac), flat, and in it a
/// database, ".trash.db", of where each item came from and when. Every operation loads the database, works and saves it
/// again, unless it says otherwise. Call these from one thread, and not while CleanupTrashFolder is at work: operations
/// that overlap may lose entries.
///
/// Nothing reports failures but by the results below. Whoever must know whether an item arrived looks at the disk.
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
/// The item is moved by Rename, so A FILE FROM ANOTHER VOLUME IS LOST. The entry is recorded even when the move failed.
///
/// With `loadDatabase` false the database is neither loaded nor saved: for callers inside the library.
FRAMEWORKBASE_EXPORT void DeleteFileToRecycleBin(std::string path, bool loadDatabase);

/// With `permanently`, deletes the folder `path` with remove_dir_content, whose limits apply. Otherwise moves it into the
/// trash as DeleteFileToRecycleBin does. `ignored` is ignored.
FRAMEWORKBASE_EXPORT void DeleteFolderWithContents(const char* path, bool ignored, bool permanently);

/// Whether the item at `trashPath`, its full path in the trash, is recorded with a place to go back to. The disk is not
/// looked at: neither whether the item is still there nor whether the place is free.
FRAMEWORKBASE_EXPORT bool CanPutBack(std::string trashPath);

/// Moves the item at `trashPath`, its full path in the trash, back to where it came from, by Rename, REPLACING A FILE
/// THERE, and forgets it, even when the move failed. The folder it came from is not created again. Returns what
/// CanPutBack would have.
FRAMEWORKBASE_EXPORT bool PutBack(std::string trashPath);

/// Gives every file of `folder` the time of now in the database, recording those that are not, AND REPLACES where each
/// came from by its bare name, so that it can no longer be put back. Subfolders are then looked up by their bare names,
/// in the working directory of the process and not in `folder`: only the top level is reliably touched. Where
/// those lookups lead in a circle (a folder there that holds one of its own name) it does not end. Neither loads nor
/// saves the database.
FRAMEWORKBASE_EXPORT void TouchFolder(std::string folder);

/// @}

} // namespace Tolvex::FileNames
