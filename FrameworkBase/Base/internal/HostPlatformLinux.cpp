#include <FrameworkBase/Base/internal/HostPlatform.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

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
    // Everyone may write to /tmp, so the folder there is used only if no other user can have prepared it.
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

namespace {

constexpr char32_t lastCodePoint = 0x10FFFF;

constexpr bool IsSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

/// Decodes the sequence of two to four bytes at `next`, and advances `next`. Returns false if it is malformed. The zero
/// byte at the end of the string is no continuation byte, so no byte behind it is read.
bool DecodeSequence(const unsigned char*& next, char32_t& codePoint) {
    const char32_t lead = *next++;
    const auto takeContinuations = [&next, &codePoint](int count) {
        for (; count > 0 && (*next & 0xC0) == 0x80; --count) {
            codePoint = codePoint << 6 | (*next++ & 0x3FU);
        }
        return count == 0;
    };
    if (lead < 0xE0) {
        codePoint = lead & 0x1F;
        return takeContinuations(1) && lead >= 0xC2;
    }
    if (lead < 0xF0) {
        codePoint = lead & 0x0F;
        return takeContinuations(2) && codePoint >= 0x800 && !IsSurrogate(codePoint);
    }
    codePoint = lead & 0x07;
    return takeContinuations(3) && lead <= 0xF4 && codePoint >= 0x10000 && codePoint <= lastCodePoint;
}

template <class Character>
constexpr bool IsAscii(Character character) {
    return static_cast<char32_t>(character) < 0x80;
}

/// The number of characters that are converted at a time if all are ASCII, as most are.
template <class Character>
constexpr std::ptrdiff_t blockSize = sizeof(Character) == 1 ? 16 : 8;

bool IsAsciiBlock(const unsigned char* text) {
    std::array<std::uint64_t, 2> bytes;
    std::memcpy(bytes.data(), text, sizeof bytes);
    return ((bytes[0] | bytes[1]) & 0x8080808080808080U) == 0;
}

bool IsAsciiBlock(const wchar_t* text) {
    char32_t all = 0;
    for (std::ptrdiff_t i = 0; i < blockSize<wchar_t>; ++i) {
        all |= static_cast<char32_t>(text[i]);
    }
    return IsAscii(all);
}

/// Converts whole blocks of ASCII from `next` to `out`, and advances both.
template <class From, class To>
void ConvertAsciiBlocks(const From*& next, const From* end, To*& out) {
    constexpr std::ptrdiff_t size = blockSize<From>;
    for (; end - next >= size && IsAsciiBlock(next); next += size) {
        out = std::transform(next, next + size, out, [](From character) { return static_cast<To>(character); });
    }
}

/// Writes the UTF-8 form of a valid `codePoint` and returns the position behind it.
char* EncodeSequence(char32_t codePoint, char* out) {
    const auto continuation = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (codePoint < 0x800) {
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

/// Writes the characters of the string to `wide` and returns the position behind them, or `wide` if the string is
/// malformed. Blocks of ASCII are looked for where there were many ASCII characters: among others they are rare.
wchar_t* Decode(const unsigned char* next, const unsigned char* end, wchar_t* const wide) {
    wchar_t* out = wide;
    std::ptrdiff_t asciiInARow = blockSize<unsigned char>;
    while (next != end) {
        if (asciiInARow == blockSize<unsigned char>) {
            ConvertAsciiBlocks(next, end, out);
            asciiInARow = 0;
        } else if (IsAscii(*next)) {
            *out++ = static_cast<wchar_t>(*next++);
            ++asciiInARow;
        } else {
            char32_t codePoint = 0;
            if (!DecodeSequence(next, codePoint)) {
                return wide;
            }
            *out++ = static_cast<wchar_t>(codePoint);
            asciiInARow = 0;
        }
    }
    return out;
}

/// Uninitialised room for `count` characters, on the stack unless there are more than `few`. The results are copied out
/// of it, so that they allocate no more than they need.
template <class Character, std::size_t few>
class Room {
public:
    explicit Room(std::size_t count) : onHeap(count > few ? new Character[count] : nullptr) {}
    Character* Data() { return onHeap != nullptr ? onHeap.get() : onStack.data(); }

private:
    std::array<Character, few> onStack;
    std::unique_ptr<Character[]> onHeap;
};

} // namespace

std::wstring WideFromUtf8(const char* text) {
    const std::size_t length = std::strlen(text);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text);
    Room<wchar_t, 2000> room(length);
    wchar_t* const wide = room.Data();
    return {wide, Decode(bytes, bytes + length, wide)};
}

std::string Utf8FromWide(const wchar_t* text, std::size_t length) {
    constexpr std::size_t longestSequence = 4;
    Room<char, 8000> room(length * longestSequence);
    char* const utf8 = room.Data();
    char* out = utf8;
    const wchar_t* const end = text + length;
    while (text != end) {
        ConvertAsciiBlocks(text, end, out);
        while (text != end && IsAscii(*text)) {
            *out++ = static_cast<char>(*text++);
        }
        for (; text != end && !IsAscii(*text); ++text) {
            const auto codePoint = static_cast<char32_t>(*text);
            if (codePoint > lastCodePoint || IsSurrogate(codePoint)) {
                return {};
            }
            out = EncodeSequence(codePoint, out);
        }
    }
    return {utf8, out};
}

} // namespace Tolvex::HostPlatform
