#pragma once

#include <FrameworkBase/Base/Export.h>

#include <cstdint>
#include <string>

namespace Tolvex::FileNames {

/// @addtogroup file_operations
/// These functions change the disk. Nothing is rolled back, and steps that fail are told by the result named or not at
/// all. Permissions, owners and times are not carried over: new folders get mode 0777, copied files 0666, less the
/// umask. Nothing throws but a failed allocation. A named pipe is copied like a file: where nobody writes to it the
/// copy waits for ever. Callable from any thread, but no operation is atomic unless it says so.
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
/// taken for a folder. False as soon as one cannot be created; those made until then stay. It fails as well when
/// another thread or program creates the same folder in between: a further call goes on from there.
///
///     On the disk:
///     "/tmp/x/y" => true: /tmp/x, /tmp/x/y     "tmp//x/"  => true: /tmp/x
///     "/solo"    => true: nothing              "/", ""    => true: nothing
///     "/tmp/file/x", file being a file => false     "/tmp/file" => true: nothing
FRAMEWORKBASE_EXPORT bool CreateDirectories(std::string path);

/// Copies the contents of `source` to a new file `destination`, DESTINATION FIRST, in pieces of 4096 bytes. 0 on
/// success; -1 with `errno` of the call that failed: `EEXIST` when the destination exists. A failed copy leaves what it
/// has written. A link is followed at the source; at the destination it counts as existing, wherever it leads.
FRAMEWORKBASE_EXPORT int cp(const char* destination, const char* source);

/// Copies the file `source` to `destination`. A destination that can be opened for reading is refused with
/// `failIfExists` and otherwise REMOVED FIRST, even if the copy then fails; a folder stays and makes the copy fail, as
/// does a file that cannot be read. On failure the reason goes to `error` unless that is null; on success `error` is
/// not written.
///
/// Without `failIfExists`, COPYING A FILE ONTO ITSELF, by the same path, by another spelling of it, or from a link that
/// leads to it, DELETES IT; the reason is `SourceNotFound`.
FRAMEWORKBASE_EXPORT bool CopyFile(std::string source, std::string destination, bool failIfExists,
                                   CopyFileError* error);

/// Copies what is in the folder `source` into `destination`, which is created when missing; the folder above it must
/// exist. A file of the same name there is REMOVED FIRST, even if its copy then fails. Failures are ignored. Links are
/// copied as the files they lead to; a link to a folder becomes an empty file. `destination` must not lie inside
/// `source`: there is no limit to the depth. Copying a folder onto itself DELETES EVERY FILE IN IT that can be read, at
/// every level.
FRAMEWORKBASE_EXPORT void CopyFolder(std::string source, std::string destination);

/// Moves `from` to `to` with the system's `rename`: at once, and replacing a file at `to`. WHEN THAT FAILS, WHATEVER
/// THE REASON, A FILE `from` IS LOST, unless it cannot be deleted where it is: `to` is on another volume, its folder is
/// missing or may not be written, its name is too long, a folder is there. Nothing is told. Callers make sure first
/// that none of these is so, or move with CopyFile, with `failIfExists`, and DeleteFileA.
///
/// When the system cannot move it:
///
/// - A folder is copied with CopyFolder, into what is in a folder at `to` already, and then the old one is deleted
///   WHATEVER THE COPY ACHIEVED, by remove_dir_content with its limits. LINKS ARE FOLLOWED: what is in a folder that a
///   link in it leads to is deleted, and not copied. A link to a folder counts as that folder.
/// - Anything else is the destination of a copy from `to`, replaced when there is a file that can be read. When that
///   copy fails, also because `from` itself cannot be read, `from` is removed. `to` stays as it was.
///
/// A folder that is moved into itself is copied into itself until paths are too long, and then DELETED.
///
///     On the disk:
///     file that can be moved                               => moved, replacing a file at `to`
///     file, the move fails, nothing readable at `to`       => gone
///     file, the move fails, a readable file at `to`        => `from` becomes a copy of it, its own contents are gone
///     file that may not be read, the move fails            => gone
///     file onto a folder                                   => gone
///     file onto another hard link of the same file         => nothing: both stay
///     missing `from`, readable file at `to`                => `from` becomes a copy of it
///     folder, the move fails                               => copied as far as that goes, the old one deleted
///     folder onto a file                                   => gone
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

/// Deletes the folder `folder` and everything in it. Pass an absolute path, and 0 as `depth`. What cannot be deleted
/// stays, and so does every folder above it; nothing is told. Does nothing when `folder` is missing, a file, or may not
/// be read.
///
/// - With `folder` as level 0, folders down to level 20 are emptied. Of what lies at level 21 files and empty folders
///   go; other folders, and links to folders, stay. Deeper levels are not looked at.
/// - A LINK TO A FOLDER IS FOLLOWED, `folder` itself included: what is in that folder is deleted, wherever it is, and
///   then the link. That folder itself stays, empty. A link that leads nowhere stays, and with it the folders above: so
///   does a link to a file or folder of the same tree that was met first.
/// - Each entry is looked up by its whole path. When a folder on it is renamed meanwhile, nothing more in it is
///   deleted; what takes its place under the same names is.
/// - Paths are cut after 1039 bytes. What is left may name `folder` or one above, which is then gone through again for
///   each entry, practically without end, or SOMETHING ELSE BESIDE IT, WHICH IS DELETED. Not for paths that long.
/// - With a relative `folder` each folder in it is also looked for at that path as seen from where it lies, and removed
///   there when it is empty: "../../x" can remove one elsewhere. Empty folders at level 21 stay.
FRAMEWORKBASE_EXPORT void remove_dir_content(const char* folder, int depth);

/// @}
