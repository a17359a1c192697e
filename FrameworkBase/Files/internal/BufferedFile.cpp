#include "FrameworkBase/Files/internal/BufferedFile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t capacity = std::size_t{64} * 1024;

} // namespace

BufferedFile::BufferedFile(FlapFiles::CFileBase& stream) : target(stream), buffer(new char[capacity]) {}

long long BufferedFile::Write(const void* data, long long size) {
    const auto* from = static_cast<const char*>(data);
    for (auto left = static_cast<std::size_t>(size); left > 0;) {
        if (pending == capacity) {
            WritePending();
        }
        const std::size_t count = std::min(left, capacity - pending);
        std::memcpy(buffer.get() + pending, from, count);
        pending += count;
        from += count;
        left -= count;
    }
    return size;
}

long long BufferedFile::Read(void* data, long long size) {
    auto* to = static_cast<char*>(data);
    auto left = static_cast<std::size_t>(size);
    while (left > 0) {
        if (next == end && !ReadPiece()) {
            break;
        }
        const std::size_t count = std::min(left, end - next);
        std::memcpy(to, buffer.get() + next, count);
        next += count;
        to += count;
        left -= count;
    }
    return size - static_cast<long long>(left);
}

long long BufferedFile::Seek(long long /*offset*/, unsigned int /*origin*/) { throw TolvexException("Unsupported"); }

FlapFiles::CFileBase* BufferedFile::Clone() { throw TolvexException("Unsupported"); }

bool BufferedFile::Close() {
    WritePending();
    return target.Close();
}

bool BufferedFile::Flush() {
    WritePending();
    return target.Flush();
}

bool BufferedFile::ReadPiece() {
    if (std::exchange(pieceWasShort, false)) {
        return false;
    }
    next = 0;
    end = static_cast<std::size_t>(target.Read(buffer.get(), capacity));
    pieceWasShort = end > 0 && end < capacity;
    return end > 0;
}

void BufferedFile::WritePending() {
    target.Write(buffer.get(), static_cast<long long>(pending));
    pending = 0;
}
