#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/TolvexException.h>

#include <cstdio>

/// @addtogroup handles
/// Files in the shape of the Windows file API, over C streams: a handle is a `FILE*`. There is no
/// `ReadFile`; callers use `fread`.
/// @{

/// @name Access, sharing, creation and attribute values, by their Windows names
/// @{
inline constexpr unsigned int GENERIC_READ = 0x80000000;    ///< access: reading
inline constexpr unsigned int GENERIC_WRITE = 0x40000000;   ///< access: writing
inline constexpr unsigned int FILE_SHARE_READ = 1;          ///< sharing; ignored
inline constexpr unsigned int FILE_SHARE_WRITE = 2;         ///< sharing; ignored
inline constexpr unsigned int CREATE_ALWAYS = 2;            ///< creation: a new, empty file; the old one is emptied
inline constexpr unsigned int OPEN_EXISTING = 3;            ///< creation: the file must exist
inline constexpr unsigned int OPEN_ALWAYS = 4;              ///< creation: a new file if there is none
inline constexpr unsigned int FILE_ATTRIBUTE_NORMAL = 0x80; ///< attributes; ignored
/// @}

/// The result of CreateFile if the file cannot be opened: all bits set, never null.
inline std::FILE* const INVALID_HANDLE_VALUE = reinterpret_cast<std::FILE*>(-1);

/// The result of a stream's Seek on failure. It is not negative, as callers keep positions in 32 bits.
inline constexpr long long INVALID_SET_FILE_POINTER = 0xFFFFFFFF;

/// Opens `fileName`, a zero-terminated path. Of the other arguments only `desiredAccess` and `creationDisposition` are
/// used; sharing, attributes and templates are ignored. The modes are those of `fopen`:
///
///     desiredAccess                CREATE_ALWAYS  OPEN_EXISTING  OPEN_ALWAYS          any other
///     at least 0xC0000000       => "w+b"          "r+b"          "r+b", then "w+b"    throws
///     below, with GENERIC_WRITE => "wb"           "r+b"          throws               throws
///     without GENERIC_WRITE     => "rb"           "rb"           "rb", then "w+b"     "rb"
///
/// The second mode of `OPEN_ALWAYS` is tried if the first fails, also for reading: opening a missing file with
/// `GENERIC_READ` and `OPEN_ALWAYS` creates it, empty, and opens it for reading and writing. A folder opens for
/// reading.
///
/// Returns the open stream, to be closed by CloseHandle, or `INVALID_HANDLE_VALUE` with the `errno` of `fopen`. Throws
/// TolvexException with "Unsupported" before anything is opened or created. Callable from any thread.
FRAMEWORKBASE_EXPORT std::FILE* CreateFile(const char* fileName, unsigned int desiredAccess, unsigned int shareMode,
                                           unsigned int securityAttributes, unsigned int creationDisposition,
                                           unsigned int flagsAndAttributes, unsigned int templateFile);

/// Writes `bytesToWrite` bytes from `buffer` at the position of `file`, which must not be `INVALID_HANDLE_VALUE`.
/// Stores the number of bytes written, modulo 2^32, in `bytesWritten`, unless that is null. `overlapped` is ignored.
/// Returns 1 if that number is not 0, and otherwise 0: a SHORT WRITE COUNTS AS SUCCESS, so callers compare the numbers.
///
///     bytesToWrite 0      => 1; `bytesWritten` is left unchanged, and `file` may be null
///     `file` null         => 0; `bytesWritten` is left unchanged
///     nothing written     => 0; `bytesWritten` is 0, and the stream keeps its error state
///
/// A negative `bytesToWrite` counts as a very large one and reads beyond the buffer.
FRAMEWORKBASE_EXPORT int WriteFile(std::FILE* file, const void* buffer, long long bytesToWrite,
                                   unsigned int* bytesWritten, unsigned int overlapped);

/// Closes `file`. Returns 1 on success. Returns 0 for null and `INVALID_HANDLE_VALUE`, and if `fclose` fails: A FULL
/// DISK MAY BE NOTICED ONLY HERE.
FRAMEWORKBASE_EXPORT int CloseHandle(std::FILE* file);

/// Passes the buffered bytes of `file` to the system. `file` may be null, and must not be `INVALID_HANDLE_VALUE`.
/// Returns 1; failures are ignored.
FRAMEWORKBASE_EXPORT int TolvexFlushFileBuffers(std::FILE* file);

/// @}
