#include "FrameworkBase/Base/internal/HostPlatform.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <ios>
#include <sys/stat.h>
#include <unistd.h>

// std::cerr by its linker name: <iostream> would construct an object of its own when the library is loaded.
extern std::ostream standardErrorStream __asm__("_ZSt4cerr");

namespace Tolvex::HostPlatform {

int GetExecutablePath(char* buffer, std::uint32_t size) {
    std::array<char, PATH_MAX> path;
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length < 0 || static_cast<std::size_t>(length) >= std::min<std::size_t>(size, path.size())) {
        return -1;
    }
    std::memcpy(buffer, path.data(), static_cast<std::size_t>(length));
    buffer[length] = '\0';
    return 0;
}

std::string GetTemporaryFolder() {
    if (const char* folder = std::getenv("TMPDIR"); folder != nullptr && *folder != '\0') {
        std::string result = folder;
        if (result.back() != '/') {
            result += '/';
        }
        return result;
    }
    // Everyone may write to /tmp, so the folder there is used only when nobody else can have prepared it.
    const uid_t user = getuid();
    const std::string folder = "/tmp/tolvex-" + std::to_string(user);
    mkdir(folder.c_str(), 0700);
    struct stat status {};
    if (lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == user &&
        (status.st_mode & 0077) == 0) {
        return folder + '/';
    }
    return "/tmp/";
}

CalendarTime ReadCalendarClock() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return {now.tv_sec, now.tv_nsec};
}

std::ostream& ErrorStream() {
    static const std::ios_base::Init streamsAreReady;
    return standardErrorStream;
}

namespace {

constexpr char32_t lastCodePoint = 0x10FFFF;
constexpr char32_t malformed = lastCodePoint + 1;

constexpr bool IsSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

/// The number of bytes at `text`, `length` of them, that are not continuation bytes.
std::size_t CountSequences(const unsigned char* text, std::size_t length) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < length; ++i) {
        count += (text[i] & 0xC0) != 0x80 ? 1 : 0;
    }
    return count;
}

/// The code point of the sequence of two to four bytes at `next`, which moves past it; `malformed` if it is none. The
/// text's terminator is not a continuation byte, so the reading never passes it.
char32_t DecodeSequence(const unsigned char*& next) {
    const unsigned char lead = *next++;
    int continuationBytes = 0;
    char32_t codePoint = 0;
    char32_t smallest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        continuationBytes = 1;
        codePoint = lead & 0x1F;
        smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        continuationBytes = 2;
        codePoint = lead & 0x0F;
        smallest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        continuationBytes = 3;
        codePoint = lead & 0x07;
        smallest = 0x10000;
    } else {
        return malformed;
    }
    for (; continuationBytes > 0; --continuationBytes) {
        if ((*next & 0xC0) != 0x80) {
            return malformed;
        }
        codePoint = codePoint << 6 | (*next++ & 0x3F);
    }
    return codePoint < smallest || codePoint > lastCodePoint || IsSurrogate(codePoint) ? malformed : codePoint;
}

/// Whether the eight bytes at `text` are all ASCII.
bool IsAsciiBlock(const unsigned char* text) {
    std::uint64_t block = 0;
    std::memcpy(&block, text, sizeof block);
    return (block & 0x8080808080808080U) == 0;
}

/// The number of bytes that `codePoint` takes in UTF-8; 0 if it is none.
std::size_t SequenceLength(char32_t codePoint) {
    if (codePoint < 0x80) {
        return 1;
    }
    if (codePoint < 0x800) {
        return 2;
    }
    if (codePoint < 0x10000) {
        return IsSurrogate(codePoint) ? 0 : 3;
    }
    return codePoint <= lastCodePoint ? 4 : 0;
}

/// Writes the UTF-8 form of a valid `codePoint` and returns the place behind it.
char* EncodeSequence(char32_t codePoint, char* out) {
    const auto continuation = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (codePoint < 0x80) {
        *out++ = static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        *out++ = static_cast<char>(0xC0 | codePoint >> 6);
        *out++ = continuation(codePoint);
    } else if (codePoint < 0x10000) {
        *out++ = static_cast<char>(0xE0 | codePoint >> 12);
        *out++ = continuation(codePoint >> 6);
        *out++ = continuation(codePoint);
    } else {
        *out++ = static_cast<char>(0xF0 | codePoint >> 18);
        *out++ = continuation(codePoint >> 12);
        *out++ = continuation(codePoint >> 6);
        *out++ = continuation(codePoint);
    }
    return out;
}

} // namespace

std::wstring WideFromUtf8(const char* text) {
    const std::size_t length = std::strlen(text);
    const auto* next = reinterpret_cast<const unsigned char*>(text);
    const auto* const end = next + length;
    std::wstring wide(CountSequences(next, length), L'\0');
    wchar_t* out = wide.data();
    while (next != end) {
        constexpr std::ptrdiff_t block = 8;
        while (end - next >= block && IsAsciiBlock(next)) {
            out = std::copy_n(next, block, out);
            next += block;
        }
        while (next != end && *next < 0x80) {
            *out++ = static_cast<wchar_t>(*next++);
        }
        while (*next >= 0x80) {
            const char32_t codePoint = DecodeSequence(next);
            if (codePoint == malformed) {
                return {};
            }
            *out++ = static_cast<wchar_t>(codePoint);
        }
    }
    return wide;
}

std::string Utf8FromWide(const wchar_t* text, std::size_t length) {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const std::size_t sequence = SequenceLength(static_cast<char32_t>(text[i]));
        if (sequence == 0) {
            return {};
        }
        bytes += sequence;
    }
    std::string utf8(bytes, '\0');
    char* out = utf8.data();
    for (std::size_t i = 0; i < length; ++i) {
        out = EncodeSequence(static_cast<char32_t>(text[i]), out);
    }
    return utf8;
}

} // namespace Tolvex::HostPlatform
