#pragma once

#include <FrameworkBase/Files/FileStream.h>

#include <array>
#include <cstddef>
#include <string>

/// Reads or writes another stream in large pieces, so that many small fields cost one call on it per piece. Made for
/// one direction at a time, from front to back: Seek and Clone throw TolvexException with "Unsupported". What the other
/// stream throws passes through.
///
/// The buffer is part of the object, which lives on the stack: given back to the heap behind the many small texts of a
/// database it would make the heap join all of those first.
class BufferedFile final : public FlapFiles::CFileBase {
public:
    explicit BufferedFile(FlapFiles::CFileBase& stream);

    /// Returns `size`. The bytes may wait here until Flush.
    long long Write(const void* data, long long size) override;
    long long Read(void* data, long long size) override;

    /// DeSerializeString of this, without a copy on the way when the whole text is here.
    std::string ReadString();

    long long Seek(long long offset, unsigned int origin) override;
    CFileBase* Clone() override;
    /// Hands the waiting bytes on, then closes the other stream.
    bool Close() override;
    bool Flush() override;

private:
    void WritePending();

    /// Reads the next piece. False when nothing came, and once after each short piece: a field that reaches beyond the
    /// end or a fault of `target` comes short, as it would without a buffer, and the next field tries again.
    bool ReadPiece();

    FlapFiles::CFileBase& target;
    std::array<char, std::size_t{64} * 1024> buffer;
    std::size_t pending = 0; ///< bytes written here that `target` has yet to take
    std::size_t next = 0;    ///< where the next byte is read from
    std::size_t end = 0;     ///< where the bytes that `target` gave end
    bool pieceWasShort = false;
};
