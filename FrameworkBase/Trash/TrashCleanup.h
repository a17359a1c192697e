#pragma once

#include <FrameworkBase/Base/Export.h>

#include <functional>
#include <string>

/// @addtogroup trash
/// @{

/// Purges the trash on a thread of its own, and returns at once. The thread loads the database, purges the trash folder
/// (see the other overload), removes the folders that are empty then, saves the database, and finally calls `callback`
/// once, unless it is empty. The thread cannot be joined: wait for the callback before the process ends. An exception
/// from the callback, or `std::bad_alloc` on that thread, ends the process.
///
/// Folders are deleted by remove_dir_content, WHICH FOLLOWS LINKS: if a folder in the trash holds a link to a folder of
/// the user's, that folder is emptied.
///
/// Throws `std::system_error` if the thread cannot be created; nothing is purged then. Do not call it during another
/// trash operation or cleanup.
FRAMEWORKBASE_EXPORT void CleanupTrashFolder(bool all, std::function<void()> callback);

/// Purges one folder and everything below it by the database in memory. This is for the thread of the other overload,
/// which has loaded the database. Applications cannot load it, so for them every file counts as unrecorded. Returns
/// true if anything was deleted.
///
/// - Deletes each recorded file that has been in the trash for more than 30 days, or every recorded file if `all` is
///   true, and removes its record. A time in the future, or before 1601, counts as not yet due.
/// - Records each file that is not recorded, with the present time and without an origin, also if `all` is true.
/// - Leaves every file named ".trash.db", at every level. Names are compared byte for byte: on a volume that ignores
///   letter case and Unicode form, a database that is stored under another spelling counts as an ordinary file.
/// - Deletes every subfolder if `all` is true. Otherwise it purges each subfolder in turn, and IF ANYTHING WAS DELETED
///   IN IT, THE WHOLE SUBFOLDER IS DELETED: a folder in the trash expires with its first file. The records of the other
///   files remain in the database.
FRAMEWORKBASE_EXPORT bool CleanupTrashFolder(std::string folder, bool all);

/// Returns true if there is a file in `folder` or below it. Returns true without a look if `depth`, which callers pass
/// as 0, is above 50. A folder that cannot be opened counts as empty. Callable from any thread.
FRAMEWORKBASE_EXPORT bool HasFiles(std::string folder, int depth);

/// Deletes, by remove_dir_content, each folder directly in `folder` for which HasFiles returns false. Callable from any
/// thread.
FRAMEWORKBASE_EXPORT void CheckDeleteEmptyFolders(std::string folder);

/// @}
