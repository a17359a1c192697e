#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup listing
/// Questions about the disk. Nothing here changes it or logs; nothing throws but a failed allocation. Listings hold
/// bare names, hidden ones included, "." and ".." never, in the order in which the system delivers them. A link is
/// listed as a file, also when it leads to a folder. Callable from any thread.
/// @{

/// The names of the files in `folder`: all that are not folders. Empty when `folder` cannot be opened; an error while
/// reading it ends the list early and is not told.
FRAMEWORKBASE_EXPORT std::vector<std::string> GetFolderFiles(std::string folder);

/// The names of the folders in `folder`. Empty when it cannot be opened; ended early by an error while reading it.
FRAMEWORKBASE_EXPORT std::vector<std::string> GetFolderSubfolders(std::string folder);

/// The files of a folder one name a call, for callers in the C style.
///
/// The first call passes a null `name`: it lists `folder`, stores a handle through `handle` and returns the number of
/// names. Each further call takes the last name not yet delivered, copies it into `name` and returns how many are left;
/// `folder` is not read. When none is left the call returns -1 and frees the handle, which must not be used again.
///
/// `size` is the room in `name`, at least 1. A name that does not fit with its terminating zero is cut to `size` bytes
/// and left without one. A caller that stops before the -1 leaves the listing allocated; also after a count of 0 one
/// more call is needed.
///
///     On the disk:
///     files x, y:  null => 2,  then "y" => 1,  then "x" => 0,  then -1
FRAMEWORKBASE_EXPORT int GetFolderFiles(char* folder, char* name, int size, void** handle);

/// `path` itself.
FRAMEWORKBASE_EXPORT std::string FormatDirectory(std::string path);

/// Whether `folder` holds nothing, hidden files included. True also when it cannot be opened: missing, a file, no
/// permission. A folder that is not empty costs a descriptor that stays open for the rest of the process: not for
/// loops.
FRAMEWORKBASE_EXPORT bool IsFolderEmpty(std::string folder);

/// Whether `path` exists, links followed. If so, `isFolder` becomes whether it is a folder; otherwise it stays.
FRAMEWORKBASE_EXPORT bool CheckPathIsDirectory(std::string path, bool& isFolder);

/// Whether `path` exists, whatever it is, links followed. Unlike opening it, this needs no permission to read it.
FRAMEWORKBASE_EXPORT bool CheckFileExistsEvenIfNotAccessible(std::string path);

/// Always false; `isSpecial` stays.
FRAMEWORKBASE_EXPORT bool IsSpecialFile(std::string path, bool& isSpecial);

/// Always false, for links too.
FRAMEWORKBASE_EXPORT bool IsSymlink(std::string path);

/// The blocks free for ordinary users on the volume of `path`, `f_bavail`, times `f_bsize`; all bits set when that
/// cannot be told. These are the free bytes where `f_bsize` is also the unit that the system counts blocks in,
/// `f_frsize`, as on most file systems of Linux. WHERE THE TWO DIFFER THE RESULT IS FAR TOO LARGE: 256 times on current
/// macOS, where blocks are also counted in 32 bits.
FRAMEWORKBASE_EXPORT unsigned long long GetAvailableSpace(std::string path);

/// @}

} // namespace Tolvex::FileNames
