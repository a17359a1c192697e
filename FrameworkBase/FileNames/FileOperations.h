#pragma once

#include <FrameworkBase/Base/Export.h>

#include <cstdint>
#include <string>

namespace Tolvex::FileNames {

/// @addtogroup file_operations
/// These functions change the disk. Nothing is rolled back, and steps that fail are told by the result named or not at
/// all. Permissions, owners and times are not carried over: new folders get mode 0777, copied files 0666, less the
/// umask. Nothing throws but a failed allocation. Callable from any thread, but no operation is atomic unless it says
/// so.
/// @{

/// Why CopyFile failed.
enum CopyFileError : std::int32_t {
    SourceNotFound = 1,    ///< the source cannot be opened for reading
    DestinationExists = 2, ///< the destination exists and was not to be replaced
    CopyFailed = 3,        ///< the source can be opened for reading, but the copy failed
};

/// Creates the folder `path`; the folder above it must exist. False when that fails, for an existing folder too.
FRAMEWORKBASE_EXPORT bool CreateDirectory(std::string path);

/// Creates the folder `path` and those missing above it. The path counts from the root whether or not it begins with
/// "/", and its first component is taken to exist: it is neither created nor looked at. Whatever exists on the way is
/// taken for a folder. False as soon as one cannot be created; those made until then stay. It fails as well when another
/// thread or program creates the same folder in between: a further call goes on from there.
///
///     "/tmp/x/y" => true: /tmp/x, /tmp/x/y     "tmp//x/"  => true: /tmp/x
///     "/solo"    => true: nothing              "/", ""    => true: nothing
///     "/tmp/file/x", file being a file => false
FRAMEWORKBASE_EXPORT bool CreateDirectories(std::string path);

/// Copies the contents of `source` to a new file `destination`, DESTINATION FIRST, in pieces of 4096 bytes. 0 on
/// success; -1 with `errno` of the call that failed: `EEXIST` when the destination exists. A failed copy leaves what it
/// has written. A link is followed at the source; at the destination it counts as existing, wherever it leads.
FRAMEWORKBASE_EXPORT int cp(const char* destination, const char* source);

/// Copies the file `source` to `destination`. A destination that can be opened for reading is refused with
/// `failIfExists` and otherwise REMOVED FIRST, even if the copy then fails; one that exists but cannot be read makes
/// the copy fail. On failure the reason goes to `error` unless that is null; on success `error` is not written.
FRAMEWORKBASE_EXPORT bool CopyFile(std::string source, std::string destination, bool failIfExists,
                                   CopyFileError* error);

/// Copies what is in the folder `source` into `destination`, which is created when missing; the folder above it must
/// exist. Existing files are replaced, failures ignored. Links are copied as the files they lead to; a link to a folder
/// becomes an empty file. `destination` must not lie inside `source`: there is no limit to the depth.
FRAMEWORKBASE_EXPORT void CopyFolder(std::string source, std::string destination);

/// Moves `from` to `to`, atomically when both are on one volume. When the system cannot move it:
///
/// - a folder is copied with CopyFolder, and then the old one is removed whatever the copy achieved, by
///   remove_dir_content with its limits;
/// - for a file, the file that can be read at `to` is copied over `from`, AND WITH NO SUCH FILE THERE, OR A FOLDER, THE
///   FILE IS LOST: `from` is removed and `to` is as it was. Move files between volumes with CopyFile and DeleteFileA
///   instead.
///
/// A folder must not be moved into itself: see CopyFolder.
///
///     file on one volume                              => moved, replacing a file at `to`
///     file to another volume, nothing at `to`         => gone
///     file onto a folder                              => gone
///     missing `from`, readable file at `to`           => `from` becomes a copy of it
///     folder to another volume                        => copied, old one removed
FRAMEWORKBASE_EXPORT void Rename(std::string from, std::string to);

/// Removes the file or link `path` with `unlink` and returns its result: 0, or -1 with `errno`.
FRAMEWORKBASE_EXPORT int DeleteFileA(const char* path);

/// Changes the working directory of the process with `chdir` and returns its result: 0, or -1 with `errno`. Relative
/// paths on all threads are affected.
FRAMEWORKBASE_EXPORT int TolvexSetCurrentDirectory(const char* path);

/// @}

} // namespace Tolvex::FileNames

/// @addtogroup file_operations
/// @{

/// Deletes the folder `folder` and everything in it. Pass 0 as `depth`. What cannot be deleted stays, and so does
/// every folder above it; nothing is told. Does nothing when `folder` is missing or a file.
///
/// - With `folder` as level 0, folders down to level 20 are emptied. Of what lies at level 21 files and empty folders go
///   and other folders stay; deeper levels are not looked at. With a relative `folder` the empty folders at level 21
///   stay too.
/// - A LINK TO A FOLDER IS FOLLOWED: what is in that folder is deleted, and the link. The folder itself stays, empty. A
///   link that leads nowhere stays.
/// - Paths are cut after 1039 bytes.
FRAMEWORKBASE_EXPORT void remove_dir_content(const char* folder, int depth);

/// @}
