#pragma once

#include <FrameworkBase/Base/Export.h>

#include <functional>
#include <string>

/// @addtogroup trash
/// @{

/// Purges the trash on a thread of its own and returns at once. The thread loads the database, runs the purge of the
/// trash folder (see the other form), removes the emptied folders, saves the database, and then, at its end, calls
/// `callback` once, unless it is empty, on that same thread. Nobody can join it, so wait for the callback before the
/// process ends. An exception out of the callback ends the process.
///
/// Folders are deleted with remove_dir_content, WHICH FOLLOWS LINKS: a trashed folder that holds a link to a folder of
/// the user's empties that folder when it goes.
///
/// Throws `std::system_error` when no thread can be made; nothing is purged then. Not while another trash operation
/// or cleanup is at work.
FRAMEWORKBASE_EXPORT void CleanupTrashFolder(bool all, std::function<void()> callback);

/// The purge of one folder and what lies below, with the database as it is in memory: for the thread above, which has
/// loaded it. Applications cannot; for them every file is one that is not recorded. Whether anything was deleted.
///
/// - A recorded file is deleted and forgotten when it was recorded more than 30 days ago, or with `all`. Times after
///   now count as not yet due, times before 1601 too.
/// - A file that is not recorded is adopted: recorded with the time of now and no place to go back to, with `all` too.
/// - A file named ".trash.db" is left alone at every level. The name is compared byte for byte: on a volume that
///   ignores letter case and Unicode form, a database that is stored under another spelling counts as any other file.
/// - With `all` every subfolder is deleted. Otherwise it is purged in turn, and WHEN ANYTHING WAS DELETED IN IT THE
///   WHOLE SUBFOLDER GOES, whatever else is in it: a trashed folder expires with its first file. The entries of files
///   that went that way stay in the database.
FRAMEWORKBASE_EXPORT bool CleanupTrashFolder(std::string folder, bool all);

/// Whether there is a file in `folder` or below. True without looking when `depth`, 0 for callers, is above 50. What
/// cannot be opened holds nothing. Callable from any thread.
FRAMEWORKBASE_EXPORT bool HasFiles(std::string folder, int depth);

/// Deletes, with remove_dir_content and its limits, each folder directly in `folder` for which HasFiles is false.
/// Callable from any thread.
FRAMEWORKBASE_EXPORT void CheckDeleteEmptyFolders(std::string folder);

/// @}
