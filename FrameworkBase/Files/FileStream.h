#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/Files/FileHandle.h>

#include <cstdio>
#include <string>

namespace FlapFiles {

/// @addtogroup streams
/// @{

/// A binary stream. Integers move as their bytes in memory: little-endian on every system this library is built for,
/// `int` in 4 bytes, `long long` in 8, without padding. A stream is used by one thread at a time.
///
/// Destructors close nothing: whoever opened a stream closes it.
class FRAMEWORKBASE_EXPORT CFileBase {
public:
    /// Writes `size` bytes and returns `size`, or reports a failure in the implementation's own way.
    virtual long long Write(const void* data, long long size) = 0;

    /// Reads up to `size` bytes and returns how many came. Fewer mean the end of the file or an error.
    virtual long long Read(void* data, long long size) = 0;

    /// Moves to `offset` bytes from the start, the current position or the end (`SEEK_SET`, `SEEK_CUR`, `SEEK_END`)
    /// and returns the new position from the start.
    virtual long long Seek(long long offset, unsigned int origin) = 0;

    virtual ~CFileBase() = default;

    /// The position from the start, by `Seek(0, SEEK_CUR)`.
    virtual long long GetCurrentPosition();

    /// A new object on the same open file, owned by the caller. The position is shared, and closing either closes it
    /// for both.
    virtual CFileBase* Clone() = 0;

    /// The number of bytes from the position to the end, negative behind the end. The position stays.
    virtual long long GetSizeLeft();

    /// Closes the stream. Whether that succeeded.
    virtual bool Close() = 0;

    /// Hands what is buffered to the system.
    virtual bool Flush() = 0;

    /// Reads a value; `T` is `int` or `long long`. Throws TolvexException with "Error reading data" when not all of
    /// its bytes came; those that did are in `value`.
    template <class T>
    void ReadData(T& value);

    /// Writes a value; `T` is `int` or `long long`. Throws TolvexException with "Error writing data" when Write
    /// returns another number than the value's size.
    template <class T>
    void WriteData(const T& value);
};

extern template void CFileBase::ReadData<int>(int& value);
extern template void CFileBase::ReadData<long long>(long long& value);
extern template void CFileBase::WriteData<int>(const int& value);
extern template void CFileBase::WriteData<long long>(const long long& value);

/// A file on disk, opened with DoCreate and closed with Close. An object that is destroyed or opened again while open
/// leaves its stream open.
class FRAMEWORKBASE_EXPORT CFile : public CFileBase {
public:
    /// Opens `fileName` as CreateFile does with the same access and disposition; `shareMode` is ignored. A stream that
    /// is open already is forgotten, not closed. Throws TolvexException with "Error opening file", after which only
    /// Close, DoCreate and Clone may be called, or with "Unsupported", after which the object is as it was.
    void DoCreate(const char* fileName, unsigned int desiredAccess, unsigned int shareMode,
                  unsigned int creationDisposition);

    /// Returns `size`. Throws TolvexException with "Error writing to file" when not all bytes were taken, when the file
    /// is closed, and for sizes of 4 GiB or more, after writing what their low 32 bits say. A `size` of 0 succeeds
    /// whatever the file's state, and writes nothing.
    long long Write(const void* data, long long size) override;

    /// Never throws. The file must be open. Of a `size` of 4 GiB or more only the low 32 bits count.
    long long Read(void* data, long long size) override;

    /// `INVALID_SET_FILE_POINTER`, which is not negative, when the file is closed or the move fails.
    long long Seek(long long offset, unsigned int origin) override;

    CFileBase* Clone() override;

    /// False when the file was not open, and when the system reports a failure, as it may for bytes still buffered.
    /// The object can be opened again either way.
    bool Close() override;

    /// Always true: failures are ignored, and a closed file has nothing to flush.
    bool Flush() override;

    /// The open stream; null when closed, `INVALID_HANDLE_VALUE` after a failed DoCreate.
    std::FILE* handle = nullptr;
};

/// @}

} // namespace FlapFiles

/// @addtogroup streams
/// @{

/// Reads a text at the position of `file`: a length in 4 bytes, signed, then that many bytes, of which those before
/// the first zero byte count.
///
///     04 00 00 00 'a' 'b' 'c' 00 => "abc"
///     02 00 00 00 'a' 'b'        => "ab"      no zero byte: all of them
///     03 00 00 00 'a' 00 'b'     => "a"
///     00 00 00 00                => ""
///     FF FF FF FF                => ""        negative: only the length is consumed
///     0A 00 00 00 'a' 'b' 'c'    => ""        too short: all of it is consumed
///
/// To write `text` so that it is read back up to its first zero byte:
///
///     const int size = static_cast<int>(text.size()) + 1; // with its terminating zero byte
///     file.WriteData(size);
///     file.Write(text.c_str(), size);
///
/// A missing length counts as 0. Every `std::exception` on the way (a length that cannot be allocated) gives the empty
/// string too; TolvexException and others pass.
FRAMEWORKBASE_EXPORT std::string DeSerializeString(FlapFiles::CFileBase& file);

/// @}
