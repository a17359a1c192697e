#include <FrameworkBase/Files/internal/BufferedFile.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>

BufferedFile::BufferedFile(FlapFiles::CFileBase& stream) : target(stream) {}

long long BufferedFile::Write(const void* data, long long size) {
    const auto* from = static_cast<const char*>(data);
    for (auto left = static_cast<std::size_t>(size); left > 0;) {
        if (pending == buffer.size()) {
            WritePending();
        }
        const std::size_t count = std::min(left, buffer.size() - pending);
        std::memcpy(buffer.data() + pending, from, count);
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
        std::memcpy(to, buffer.data() + next, count);
        next += count;
        to += count;
        left -= count;
    }
    return size - static_cast<long long>(left);
}

std::string BufferedFile::ReadString() {
    int length = 0;
    if (end - next < sizeof length) {
        return DeSerializeString(*this);
    }
    std::memcpy(&length, buffer.data() + next, sizeof length);
    const std::size_t textInBuffer = end - next - sizeof length;
    if (static_cast<std::size_t>(length) > textInBuffer) { // a length below zero is more, too
        return DeSerializeString(*this);
    }
    const char* const text = buffer.data() + next + sizeof length;
    next += sizeof length + static_cast<std::size_t>(length);
    try {
        return {text, strnlen(text, static_cast<std::size_t>(length))};
    } catch (const std::exception&) {
        return {}; // what DeSerializeString makes of a text that cannot be allocated
    }
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
    end = static_cast<std::size_t>(target.Read(buffer.data(), static_cast<long long>(buffer.size())));
    pieceWasShort = end > 0 && end < buffer.size();
    return end > 0;
}

void BufferedFile::WritePending() {
    target.Write(buffer.data(), static_cast<long long>(pending));
    pending = 0;
}
