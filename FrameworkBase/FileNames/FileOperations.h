#pragma once

#include <FrameworkBase/Base/Export.h>

#include <cstdint>
#include <string>

namespace Tolvex::FileNames {

/// @addtogroup file_operations
/// Functions that change the disk. Nothing is rolled back. A failed step is reported only
/// where a result is documented. New folders get mode 0777 and copied files mode 0666, less the umask; permissions,
/// owners and times are not copied. A named pipe is copied like a file: if nobody writes to it, the copy waits without
/// end. The only exception is `std::bad_alloc`. Callable from any thread; no operation is atomic unless it says so.
/// @{

/// Why CopyFile failed.
enum CopyFileError : std::int32_t {
    SourceNotFound = 1,    ///< the source cannot be opened for reading
    DestinationExists = 2, ///< the destination exists and was not to be replaced
    CopyFailed = 3,        ///< the source can be opened for reading, but was not copied
};

/// Creates the folder `path`. The folder above it must exist. Returns false on failure, and if anything exists at
/// `path`.
FRAMEWORKBASE_EXPORT bool CreateDirectory(std::string path);

/// Creates the folder `path` and each missing folder above it. The path counts from the root, with or without a leading
/// "/". Its first component is assumed to exist: it is neither created nor checked. Anything that exists on the way is
/// assumed to be a folder. Returns false as soon as a folder cannot be created, also because another thread or program
/// has just created it; those created before it remain, and a further call goes on from there.
///
///     On the disk:
///     "/tmp/x/y" => true: /tmp/x, /tmp/x/y     "tmp//x/"  => true: /tmp/x
///     "/solo"    => true: nothing              "/", ""    => true: nothing
///     "/tmp/file/x", file being a file => false     "/tmp/file" => true: nothing
FRAMEWORKBASE_EXPORT bool CreateDirectories(std::string path);

/// Copies the contents of a file. ARGUMENT ORDER: DESTINATION, THEN SOURCE. A link at `source` is followed. Anything at
/// `destination`, a dangling link included, makes the copy fail: so `cp(path, "/dev/null")` creates an empty file and
/// never replaces one. Returns 0 on success, and otherwise -1 with the `errno` of the call that failed, such as
/// `EEXIST`. A failed copy leaves what it has written.
FRAMEWORKBASE_EXPORT int cp(const char* destination, const char* source);

/// Copies the file `source` to `destination`. If `destination` can be opened for reading, the copy is refused with
/// `failIfExists`; without it the file is REMOVED FIRST, even if the copy then fails. A folder, or a file that may not
/// be read, is left unchanged at `destination` and makes the copy fail.
///
/// Without `failIfExists`, COPYING A FILE ONTO ITSELF DELETES IT, whether by the same path, another spelling of it, or
/// a link to it; the reason is `SourceNotFound`.
///
/// Returns true on success. Otherwise stores the reason in `error`, unless that is null. `error` is not written on
/// success, and `errno` is not to be relied on.
FRAMEWORKBASE_EXPORT bool CopyFile(std::string source, std::string destination, bool failIfExists,
                                   CopyFileError* error);

/// Copies the contents of the folder `source` into `destination`, which is created if it is missing; the folder above
/// it must exist. A file of the same name there is REMOVED FIRST, even if its copy then fails. Links are copied as the
/// files that they point to; a link to a folder becomes an empty file. Failures are ignored and not reported.
///
/// There is no limit to the depth, so `destination` must not be inside `source`. Copying a folder onto itself DELETES
/// EVERY FILE IN IT that can be read, at every level.
FRAMEWORKBASE_EXPORT void CopyFolder(std::string source, std::string destination);

/// Moves `from` to `to` by the system's `rename`, which is atomic and replaces a file at `to`. No failure is reported.
/// IF `from` IS A FILE AND CANNOT BE MOVED, IT IS DELETED, whatever the reason, unless that fails, too. A move fails if
///
/// - `to` is on another volume, or on another mount of the same disk, for which `st_dev` is equal;
/// - the folder of `to` is missing, is not a folder, or may not be written, or its volume is full or read-only;
/// - the folder of `from` may not be written; in a sticky folder, `from` belongs to another user; or `from` is a folder
///   that may not be written itself and moves to another parent;
/// - the name at `to` is too long, or is not one that the volume takes;
/// - something of the other kind is at `to`, or a folder that is not empty; or `from` is a folder and `to` is inside
///   it.
///
/// Not all of this can be checked beforehand, and another program may change it after a check. Callers that cannot
/// afford to lose an item move it by `link` and `unlink`, as examples/safe-trash does, or copy it by CopyFile with
/// `failIfExists` and delete the original after that has returned true. They do not use Rename, nor the trash, which
/// does.
///
/// If the system cannot move it:
///
/// - A folder is copied by CopyFolder, merging into any folder at `to`. The old one is then deleted WHATEVER WAS
///   COPIED, by remove_dir_content. LINKS ARE FOLLOWED: the contents of a folder that a link in it points to are
///   deleted, and not copied. A link to a folder counts as that folder.
/// - For anything else, a readable `to` is copied over `from`, in this order; if that fails, also because `from` itself
///   may not be read, `from` is removed. `to` is left unchanged.
///
/// A folder that is moved into itself is copied into itself until paths are too long, and then DELETED.
///
///     On the disk:
///     file that can be moved                               => moved, replacing a file at `to`
///     file, the move fails, nothing readable at `to`       => gone
///     file, the move fails, a readable file at `to`        => `from` becomes a copy of it, its own contents are gone
///     file that may not be read, the move fails            => gone
///     file onto a folder                                   => gone
///     file onto another hard link of the same file         => nothing: both are left
///     missing `from`, readable file at `to`                => `from` becomes a copy of it
///     folder, the move fails                               => copied as far as possible, the old one deleted
///     folder onto a file                                   => gone
FRAMEWORKBASE_EXPORT void Rename(std::string from, std::string to);

/// Removes the file or link `path` by `unlink`, and returns its result: 0, or -1 with `errno`.
FRAMEWORKBASE_EXPORT int DeleteFileA(const char* path);

/// Changes the working directory of the process, and so the meaning of relative paths on all threads, by `chdir`.
/// Returns its result: 0, or -1 with `errno`.
FRAMEWORKBASE_EXPORT int TolvexSetCurrentDirectory(const char* path);

/// @}

} // namespace Tolvex::FileNames

/// @addtogroup file_operations
/// @{

/// Deletes the folder `folder` and everything in it. Pass an absolute path, and 0 as `depth`. What cannot be deleted is
/// left, with every folder above it; no failure is reported. Does nothing if `folder` is missing, is a file, or may not
/// be read.
///
/// - `folder` is level 0. Folders down to level 20 are emptied. At level 21, files and empty folders are deleted, and
///   other folders and links to folders are left. Deeper levels are not read.
/// - A LINK TO A FOLDER IS FOLLOWED, `folder` itself included: the contents of that folder are deleted, wherever it is,
///   and then the link. That folder itself is left, empty.
/// - A dangling link and every folder above it remain; so does a link whose target in this tree was deleted earlier.
/// - Each entry is looked up by its whole path. If another program renames a folder of that path in the meantime,
///   nothing more in it is deleted; if it puts a new folder in its place, the entries of the new folder are deleted.
/// - Paths are truncated to 1039 bytes. The truncated path may name `folder` or an ancestor, which is then traversed
///   again for each entry, practically without end, or an UNRELATED SIBLING, WHICH IS DELETED. Do not pass paths so
///   long.
/// - If `folder` is relative, each folder in it is also looked up at that path relative to the folder that holds it,
///   and removed there if it is empty: "../../x" can remove a folder elsewhere. Empty folders at level 21 are left.
FRAMEWORKBASE_EXPORT void remove_dir_content(const char* folder, int depth);

/// @}
