#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup listing
/// Functions that look at the disk and do not change it. Listings hold bare names, hidden ones
/// included and "." and ".." excluded, in the order in which the system delivers them. A link is listed as a file, also
/// if it points to a folder. The only exception is `std::bad_alloc`. Callable from any thread.
/// @{

/// Returns the names of the files in `folder`: of everything that is not a folder. Returns an empty list if `folder`
/// cannot be opened. An error while reading ends the list early and is not reported.
FRAMEWORKBASE_EXPORT std::vector<std::string> GetFolderFiles(std::string folder);

/// Returns the names of the folders in `folder`. Returns an empty list if `folder` cannot be opened. An error while
/// reading ends the list early and is not reported.
FRAMEWORKBASE_EXPORT std::vector<std::string> GetFolderSubfolders(std::string folder);

/// Delivers the files of a folder one name a call, for callers in the style of C.
///
/// The first call passes a null `name`. It lists `folder`, stores a handle in `handle` and returns the number of names.
/// Each further call copies the last name not delivered yet into `name`, and returns how many are left; `folder` is
/// ignored. If none is left, the call returns -1 and frees the handle, which must not be used again. A caller that
/// stops earlier, even after a count of 0, leaks the listing. `folder` must not be a constant, although it is not
/// modified.
///
/// `size` is the room in `name` in bytes, at least 1. A name that does not fit together with its zero byte is cut to
/// `size` bytes and gets no zero byte.
///
///     On the disk:
///     files x, y:  null => 2,  then "y" => 1,  then "x" => 0,  then -1
FRAMEWORKBASE_EXPORT int GetFolderFiles(char* folder, char* name, int size, void** handle);

/// Returns `path` unchanged.
FRAMEWORKBASE_EXPORT std::string FormatDirectory(std::string path);

/// Returns true if `folder` holds nothing, hidden files included, and also if it cannot be opened. Each call on a
/// non-empty folder leaks a descriptor; do not call it in loops.
FRAMEWORKBASE_EXPORT bool IsFolderEmpty(std::string folder);

/// Returns true if `path` exists. Links are followed. Sets `isFolder` if `path` exists; otherwise leaves it unchanged.
FRAMEWORKBASE_EXPORT bool CheckPathIsDirectory(std::string path, bool& isFolder);

/// Returns true if anything exists at `path`. Links are followed. No permission to read it is needed.
FRAMEWORKBASE_EXPORT bool CheckFileExistsEvenIfNotAccessible(std::string path);

/// Returns false, and leaves `isSpecial` unchanged.
FRAMEWORKBASE_EXPORT bool IsSpecialFile(std::string path, bool& isSpecial);

/// Returns false, also for links.
FRAMEWORKBASE_EXPORT bool IsSymlink(std::string path);

/// Returns the number of blocks that ordinary users may still use on the volume of `path`, `f_bavail`, times `f_bsize`.
/// Returns a value with all bits set on failure.
///
/// The result is the number of free bytes if the system counts blocks in units of `f_bsize`, as most file systems of
/// Linux do. It counts them in units of `f_frsize`: WHERE THE TWO DIFFER THE RESULT IS FAR TOO LARGE, by a factor of
/// 256 on current macOS, where the number of blocks also has only 32 bits.
FRAMEWORKBASE_EXPORT unsigned long long GetAvailableSpace(std::string path);

/// @}

} // namespace Tolvex::FileNames
