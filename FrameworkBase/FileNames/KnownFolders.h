#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup known_folders
/// The application's fixed places on the disk, and temporary files. Paths are UTF-8 with "/".
/// @{

/// The application's folder of the user: "HOME", then "/Library/Application Support", then "/Tolvex Studio 10", without
/// a trailing "/". The folder is created (mode 0777 less the umask) whenever it is missing, but none above it, and a
/// failure is not told: the path comes back all the same.
///
/// "HOME" is read on the first call of the process and never again. When it is not set, the home folder of the password
/// database counts, or the empty string. Callable from any thread.
///
///     On the disk:
///     HOME "/Users/u"  => "/Users/u/Library/Application Support/Tolvex Studio 10"
///     HOME "/Users/u/" => "/Users/u//Library/Application Support/Tolvex Studio 10"
FRAMEWORKBASE_EXPORT std::string GetHomeFolderMac();

/// As GetHomeFolderMac; creates the folder likewise.
FRAMEWORKBASE_EXPORT std::string GetHomeFolderBase();

/// As GetHomeFolderMac; creates the folder likewise.
FRAMEWORKBASE_EXPORT std::string GetProgramFolderUserDocuments();

/// The user's private temporary folder, normally with a trailing "/". Asked anew on every call, callable from any
/// thread. Off macOS: "TMPDIR" with a trailing "/", when it is set and not empty; otherwise "/tmp/tolvex-<uid>/", made
/// on demand, when it is a folder that belongs to the user and is closed to others; otherwise "/tmp/".
FRAMEWORKBASE_EXPORT std::string MacGetTempFolder();

/// @}

namespace Tolvex {

/// @addtogroup known_folders
/// @{

/// The full path of the running executable, as the system gives it, into `buffer`, which has room for 1040 bytes. 0 on
/// success, -1 when it does not fit.
FRAMEWORKBASE_EXPORT int MacGetExecutablePath(char* buffer);

/// The program folder into `buffer`, which has room for 1040 bytes: `pathFolderOverride` as it is when not empty,
/// otherwise the folder of the running executable without a trailing "/". Of the latter, one backslash at the end is
/// dropped. `ignored` is ignored. An override of 1040 bytes or more overruns the buffer; nothing checks it.
///
///     On the disk:
///     override "/opt/app/"                            => "/opt/app/"
///     executable "/A/B.app/Contents/MacOS/B"          => "/A/B.app/Contents/MacOS"
///     executable path too long for the buffer         => ""
FRAMEWORKBASE_EXPORT void path_directory_programma(char* buffer, bool ignored);

/// @}

namespace FileNames {

/// @addtogroup known_folders
/// @{

/// The full path of the running executable; empty when it has 1024 bytes or more.
FRAMEWORKBASE_EXPORT std::string GetModuleFilename();

/// As MacGetTempFolder.
FRAMEWORKBASE_EXPORT std::string GetUnixTempFolder();

/// As MacGetTempFolder.
FRAMEWORKBASE_EXPORT std::string GetTempFolder();

/// As MacGetTempFolder.
FRAMEWORKBASE_EXPORT std::string GetTempFolderT();

/// The temporary folder up to its last "/": itself, as it normally ends in one.
FRAMEWORKBASE_EXPORT std::string GetTempFolderRoot();

/// Creates an empty file in the temporary folder and returns its path; it belongs to the caller. The name is
/// "tolvxtmp", the lowest free number from 0 to 9999, "." and `extension`, which is passed without a dot. A number is
/// taken when a file of that name can be opened for reading and writing, or none can be created. Where a link of that
/// name leads nowhere, the file is created where it leads.
///
///     On the disk:
///     "wav" => ".../tolvxtmp0.wav", ".../tolvxtmp1.wav", ...
///     ""    => ".../tolvxtmp0."
///
/// Throws a plain `std::exception` when all numbers are taken. Two threads or processes that call at the same moment
/// may be given the same file.
FRAMEWORKBASE_EXPORT std::string GetTempFilename(std::string extension);

/// A path in the temporary folder that cannot be opened for reading: "tolvex", a number from 1 up unless the plain name
/// is free, "." and `extension`. Nothing is created; two calls in a row give the same name.
///
///     On the disk:
///     "wav" => ".../tolvex.wav", ".../tolvex1.wav", ...
FRAMEWORKBASE_EXPORT std::string GetUniqueTempFilename(std::string extension);

/// A name as GetTempFilename("fld") gives it, with the file removed again: nothing exists there now. Throws what that
/// throws.
FRAMEWORKBASE_EXPORT std::string GetTempFilenameNoCreate();

/// @}

} // namespace FileNames
} // namespace Tolvex
