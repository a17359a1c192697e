#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/TolvexException.h>

#include <cstdio>

/// @addtogroup handles
/// Files in the shape of the Windows file API, over C streams: a handle is a `FILE*`. There is no `ReadFile`; readers
/// call `fread` on the handle.
/// @{

/// @name Access, sharing, creation and attribute values, by their Windows names
/// @{
inline constexpr unsigned int GENERIC_READ = 0x80000000;    ///< access: reading
inline constexpr unsigned int GENERIC_WRITE = 0x40000000;   ///< access: writing
inline constexpr unsigned int FILE_SHARE_READ = 1;          ///< sharing; ignored
inline constexpr unsigned int FILE_SHARE_WRITE = 2;         ///< sharing; ignored
inline constexpr unsigned int CREATE_ALWAYS = 2;            ///< creation: a new, empty file; the old one is emptied
inline constexpr unsigned int OPEN_EXISTING = 3;            ///< creation: the file must exist
inline constexpr unsigned int OPEN_ALWAYS = 4;              ///< creation: a new file when there is none
inline constexpr unsigned int FILE_ATTRIBUTE_NORMAL = 0x80; ///< attributes; ignored
/// @}

/// What CreateFile returns when the file cannot be opened: all bits set. Never null.
inline std::FILE* const INVALID_HANDLE_VALUE = reinterpret_cast<std::FILE*>(-1);

/// What a stream's Seek returns when it fails: not negative, as callers carry positions in 32 bits.
inline constexpr long long INVALID_SET_FILE_POINTER = 0xFFFFFFFF;

/// Opens `fileName`, a zero-terminated path. Of the other arguments only `desiredAccess` and `creationDisposition`
/// are read; there is no sharing and there are no attributes or templates.
///
///     desiredAccess                CREATE_ALWAYS  OPEN_EXISTING  OPEN_ALWAYS          any other
///     at least 0xC0000000       => "w+b"          "r+b"          "r+b", then "w+b"    throws
///     below, with GENERIC_WRITE => "wb"           "r+b"          throws               throws
///     without GENERIC_WRITE     => "rb"           "rb"           "rb", then "w+b"     "rb"
///
/// The second mode of `OPEN_ALWAYS` is tried when the first fails, on the read-only path too: opening a missing file
/// with `GENERIC_READ` and `OPEN_ALWAYS` creates it, empty, and returns it open for reading and writing. A folder
/// opens for reading.
///
/// Returns the open stream, to be closed with CloseHandle, or `INVALID_HANDLE_VALUE` with `errno` as `fopen` left it.
/// Throws TolvexException with "Unsupported" before anything is opened or created. Callable from any thread.
FRAMEWORKBASE_EXPORT std::FILE* CreateFile(const char* fileName, unsigned int desiredAccess, unsigned int shareMode,
                                           unsigned int securityAttributes, unsigned int creationDisposition,
                                           unsigned int flagsAndAttributes, unsigned int templateFile);

/// Writes `bytesToWrite` bytes from `buffer` at the position of `file`. `overlapped` is ignored.
///
/// `bytesWritten`, when not null, receives the number of bytes taken, cut to 32 bits. The result is 1 when that number
/// is not 0: a short write counts as success, so callers that need the whole block compare the numbers.
///
///     bytesToWrite 0      => 1, `bytesWritten` untouched, `file` not looked at
///     `file` null         => 0, `bytesWritten` untouched
///     nothing taken       => 0, `bytesWritten` 0; the stream's error state stays
///
/// `INVALID_HANDLE_VALUE` must not be passed.
FRAMEWORKBASE_EXPORT int WriteFile(std::FILE* file, const void* buffer, long long bytesToWrite,
                                   unsigned int* bytesWritten, unsigned int overlapped);

/// Closes `file`. 1 on success; 0 when `fclose` fails, which is when a full disk may first be noticed, and for null and
/// `INVALID_HANDLE_VALUE`.
FRAMEWORKBASE_EXPORT int CloseHandle(std::FILE* file);

/// Hands what `file` has buffered to the system. Always 1: failures are ignored and null is allowed.
/// `INVALID_HANDLE_VALUE` must not be passed.
FRAMEWORKBASE_EXPORT int TolvexFlushFileBuffers(std::FILE* file);

/// @}
