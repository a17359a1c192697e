#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup known_folders
/// The application's fixed places on the disk, and temporary files. Paths are UTF-8 with "/".
/// @{

/// Returns the application's folder of the user: "HOME" + "/Library/Application Support" + "/Tolvex Studio 10", without
/// a trailing "/". Creates that folder if it is missing (mode 0777 less the umask), but none above it. A failure is not
/// reported.
///
/// "HOME" is read on the first call in the process and never again. If it is not set, the home folder of the password
/// database is used, or else the empty string. Callable from any thread.
///
///     On the disk:
///     HOME "/Users/u"  => "/Users/u/Library/Application Support/Tolvex Studio 10"
///     HOME "/Users/u/" => "/Users/u//Library/Application Support/Tolvex Studio 10"
FRAMEWORKBASE_EXPORT std::string GetHomeFolderMac();

/// Returns, and creates, the same folder as GetHomeFolderMac.
FRAMEWORKBASE_EXPORT std::string GetHomeFolderBase();

/// Returns, and creates, the same folder as GetHomeFolderMac.
FRAMEWORKBASE_EXPORT std::string GetProgramFolderUserDocuments();

/// Returns the user's private temporary folder, normally with a trailing "/". The system is asked anew on every call.
/// Callable from any thread.
///
/// Off macOS this is "TMPDIR" with a trailing "/" if that is set and not empty; otherwise "/tmp/tolvex-<uid>/", created
/// on demand, if it is a folder that belongs to the user and is closed to others; otherwise "/tmp/".
FRAMEWORKBASE_EXPORT std::string MacGetTempFolder();

/// @}

namespace Tolvex {

/// @addtogroup known_folders
/// @{

/// Stores the full path of the running executable, as the system reports it, in `buffer`, which has room for 1040
/// bytes. Returns 0 on success, and -1 if it does not fit.
FRAMEWORKBASE_EXPORT int MacGetExecutablePath(char* buffer);

/// Stores the program folder in `buffer`, which has room for 1040 bytes: `pathFolderOverride` unchanged if it is not
/// empty, and otherwise the folder of the running executable without a trailing "/" and without one trailing backslash.
/// `ignored` is ignored. AN OVERRIDE OF 1040 BYTES OR MORE OVERRUNS THE BUFFER; its length is not checked.
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

/// Returns the full path of the running executable, or the empty string if it has 1024 bytes or more.
FRAMEWORKBASE_EXPORT std::string GetModuleFilename();

/// Returns the same folder as MacGetTempFolder.
FRAMEWORKBASE_EXPORT std::string GetUnixTempFolder();

/// Returns the same folder as MacGetTempFolder.
FRAMEWORKBASE_EXPORT std::string GetTempFolder();

/// Returns the same folder as MacGetTempFolder.
FRAMEWORKBASE_EXPORT std::string GetTempFolderT();

/// Returns the temporary folder up to its last "/": the same folder, as its path normally ends in one.
FRAMEWORKBASE_EXPORT std::string GetTempFolderRoot();

/// Creates an empty file in the temporary folder and returns its path; the caller removes it. The name is "tolvxtmp",
/// the lowest free number from 0 to 9999, "." and `extension`, which is passed without a dot. A number is taken if a
/// file of that name can be opened for reading and writing, or if none can be created. If a dangling link has that
/// name, the file is created where the link points.
///
/// Two threads or processes that call at the same time may get the same file. If an existing file cannot be opened for
/// a passing reason, such as a lack of descriptors, it may be returned, emptied.
///
///     On the disk:
///     "wav" => ".../tolvxtmp0.wav", ".../tolvxtmp1.wav", ...
///     ""    => ".../tolvxtmp0."
///
/// Throws a plain `std::exception` if all numbers are taken.
FRAMEWORKBASE_EXPORT std::string GetTempFilename(std::string extension);

/// Returns a path in the temporary folder that cannot be opened for reading: "tolvex.EXT" if that is free, and
/// otherwise "tolvexN.EXT" with the lowest free N from 1 up, where EXT is `extension`. Nothing is created: two calls in
/// a row return the same path.
///
///     On the disk:
///     "wav" => ".../tolvex.wav", ".../tolvex1.wav", ...
FRAMEWORKBASE_EXPORT std::string GetUniqueTempFilename(std::string extension);

/// Returns the path of a file that GetTempFilename("fld") has created, after removing it. Throws what that throws.
FRAMEWORKBASE_EXPORT std::string GetTempFilenameNoCreate();

/// @}

} // namespace FileNames
} // namespace Tolvex
