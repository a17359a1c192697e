#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/Files/FileHandle.h>

#include <cstdio>
#include <string>

namespace FlapFiles {

/// @addtogroup streams
/// @{

/// A binary stream. Integers are stored as they are in memory: little-endian on every system for which the library is
/// built, `int` in 4 bytes, `long long` in 8, without padding. A stream is used by one thread at a time.
///
/// DESTRUCTORS CLOSE NOTHING: the code that opened a stream closes it.
class FRAMEWORKBASE_EXPORT CFileBase {
public:
    /// Writes `size` bytes and returns `size`. How a failure is reported depends on the implementation.
    virtual long long Write(const void* data, long long size) = 0;

    /// Reads up to `size` bytes and returns their number. A smaller number means the end of the file, or an error.
    virtual long long Read(void* data, long long size) = 0;

    /// Moves to `offset` bytes from the start, the current position or the end (`SEEK_SET`, `SEEK_CUR`, `SEEK_END`)
    /// and returns the new position from the start.
    virtual long long Seek(long long offset, unsigned int origin) = 0;

    virtual ~CFileBase() = default;

    /// Returns the position from the start, that is, `Seek(0, SEEK_CUR)`.
    virtual long long GetCurrentPosition();

    /// Returns a new object on the same open file; the caller deletes it. Both share one position, and closing one
    /// closes the file for both. A copy of a stream behaves in the same way.
    virtual CFileBase* Clone() = 0;

    /// Returns the number of bytes from the position to the end, which is negative behind the end. The position is left
    /// unchanged.
    virtual long long GetSizeLeft();

    /// Closes the stream. Returns true on success.
    virtual bool Close() = 0;

    /// Passes what is buffered to the system.
    virtual bool Flush() = 0;

    /// Reads a value, of type `int` or `long long`. Throws TolvexException with "Error reading data" if not all of its
    /// bytes could be read; those that could are in `value`.
    template <class T>
    void ReadData(T& value);

    /// Writes a value, of type `int` or `long long`. Other types, such as `std::int64_t` on Linux, `unsigned int` and
    /// `std::size_t`, compile and fail to link: convert them. Throws TolvexException with "Error writing data" if Write
    /// returns another number than the size of the value.
    template <class T>
    void WriteData(const T& value);
};

extern template void CFileBase::ReadData<int>(int& value);
extern template void CFileBase::ReadData<long long>(long long& value);
extern template void CFileBase::WriteData<int>(const int& value);
extern template void CFileBase::WriteData<long long>(const long long& value);

/// A file on the disk, opened by DoCreate and closed by Close. If an object is destroyed, or opened again while it is
/// open, its stream remains open.
class FRAMEWORKBASE_EXPORT CFile : public CFileBase {
public:
    /// Opens `fileName` as CreateFile does with the same access and disposition; `shareMode` is ignored. A stream that
    /// is open is forgotten, not closed. Throws TolvexException with "Error opening file", with the `errno` of `fopen`;
    /// only Close, DoCreate and Clone may be called then. Throws it with "Unsupported" and leaves the object unchanged
    /// if CreateFile does not support the arguments.
    void DoCreate(const char* fileName, unsigned int desiredAccess, unsigned int shareMode,
                  unsigned int creationDisposition);

    /// Returns `size`. Throws TolvexException with "Error writing to file" if not all bytes were written or the file is
    /// closed; also for a size of 4 GiB or more, or a negative one, after writing `size` modulo 2^32 bytes. A size of 0
    /// succeeds whatever the state of the file.
    long long Write(const void* data, long long size) override;

    /// Never throws. The file must be open. Of a size of 4 GiB or more, or a negative one, only the low 32 bits count.
    long long Read(void* data, long long size) override;

    /// Returns `INVALID_SET_FILE_POINTER` if the file is closed or the move fails. `Seek(0xFFFFFFFF, SEEK_SET)`
    /// succeeds and returns the same value.
    long long Seek(long long offset, unsigned int origin) override;

    CFileBase* Clone() override;

    /// Returns false if the file was not open, or if the system reports a failure: A FULL DISK MAY BE NOTICED ONLY
    /// HERE. The object can be opened again in either case.
    bool Close() override;

    /// Returns true; failures are ignored, and a closed file has nothing to flush.
    bool Flush() override;

    /// The open stream; null when closed, `INVALID_HANDLE_VALUE` after a failed DoCreate.
    std::FILE* handle = nullptr;
};

/// @}

} // namespace FlapFiles

/// @addtogroup streams
/// @{

/// Reads a string at the position of `file`: a length in 4 bytes, signed, then as many bytes, of which those before the
/// first zero byte count.
///
///     04 00 00 00 'a' 'b' 'c' 00 => "abc"
///     02 00 00 00 'a' 'b'        => "ab"      no zero byte: all of them
///     03 00 00 00 'a' 00 'b'     => "a"
///     00 00 00 00                => ""
///     FF FF FF FF                => ""        negative: only the length is consumed
///     0A 00 00 00 'a' 'b' 'c'    => ""        too short: all of it is consumed
///
/// To write a string so that it is read back up to its first zero byte:
///
///     const int size = static_cast<int>(string.size()) + 1; // with its terminating zero byte
///     file.WriteData(size);
///     file.Write(string.c_str(), size);
///
/// A missing length counts as 0. A `std::exception` while reading, such as that of a length for which there is no
/// memory, is caught, and the result is the empty string. TolvexException and other exceptions are not caught.
FRAMEWORKBASE_EXPORT std::string DeSerializeString(FlapFiles::CFileBase& file);

/// @}
