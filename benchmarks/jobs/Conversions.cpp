#include "benchmarks/Jobs.h"
#include <FrameworkBase/Base/Strings.h>
#include <cwchar>

static bool IsAsciiBlock(const unsigned char* text) {
    std::array<std::uint64_t, 2> words;
    std::memcpy(words.data(), text, sizeof words);
    return ((words[0] | words[1]) & 0x8080808080808080U) == 0;
}
static bool IsAsciiBlock(const wchar_t* text) {
    wchar_t all = 0;
    std::for_each(text, text + 8, [&all](wchar_t character) { all |= character; });
    return (all & ~0x7F) == 0;
}
template <std::ptrdiff_t size, class From, class To>
static void CopyAsciiBlocks(const From*& next, const From* end, To*& out) {
    for (; end - next >= size && IsAsciiBlock(next); next += size) {
        out = std::transform(next, next + size, out, [](From character) { return static_cast<To>(character); });
    }
}
/// Decodes the sequence at `next`, which moves past it. False when it is none. A terminating zero ends the text.
static bool Decode(const unsigned char*& next, wchar_t& out) {
    const int lead = *next++;
    const auto more = [&next, &out] {
        const int byte = *next++;
        out = out << 6 | (byte & 0x3F);
        return (byte & 0xC0) == 0x80;
    };
    if (lead < 0xE0) {
        out = lead & 0x1F;
        return more() && lead >= 0xC2;
    }
    if (lead < 0xF0) {
        out = lead & 0x0F;
        return more() && more() && out >= 0x800 && (out & 0x1FF800) != 0xD800;
    }
    out = lead & 0x07;
    return more() && more() && more() && lead <= 0xF4 && out >= 0x10000 && out <= 0x10FFFF;
}
static std::wstring WideByHand(const char* text) {
    const std::size_t length = std::strlen(text);
    const auto* next = reinterpret_cast<const unsigned char*>(text);
    const auto* const end = next + length;
    std::array<wchar_t, 2000> onStack;
    const std::unique_ptr<wchar_t[]> onHeap(length > onStack.size() ? new wchar_t[length] : nullptr);
    wchar_t* const wide = onHeap != nullptr ? onHeap.get() : onStack.data();
    wchar_t* out = wide;
    while (next < end) {
        CopyAsciiBlocks<16>(next, end, out);
        while (next < end && *next < 0x80) {
            *out++ = *next++;
        }
        while (*next >= 0x80) {
            wchar_t character = 0;
            if (!Decode(next, character)) {
                return {};
            }
            *out++ = character;
        }
    }
    return {wide, out};
}
static std::string Utf8ByHand(const wchar_t* text) {
    const std::size_t length = wcsnlen(text, 2000); // and more are refused
    const wchar_t* const end = text + length;
    std::array<char, 8000> encoded;
    char* out = encoded.data();
    const auto put = [&out](wchar_t bits, int mark) { *out++ = static_cast<char>(bits | mark); };
    while (text < end && length < 2000) {
        CopyAsciiBlocks<8>(text, end, out);
        for (; text < end && (*text & ~0x7F) == 0; ++text) {
            put(*text, 0);
        }
        for (; text < end && (*text & ~0x7F) != 0; ++text) {
            const wchar_t c = *text;
            if (c < 0 || c > 0x10FFFF || (c & 0x1FF800) == 0xD800) {
                return {};
            }
            if (c < 0x800) {
                put(c >> 6, 0xC0);
            } else if (c < 0x10000) {
                put(c >> 12, 0xE0);
                put(c >> 6 & 0x3F, 0x80);
            } else {
                put(c >> 18, 0xF0);
                put(c >> 12 & 0x3F, 0x80);
                put(c >> 6 & 0x3F, 0x80);
            }
            put(c & 0x3F, 0x80);
        }
    }
    return {encoded.data(), out};
}

const Registration conversions([] {
    OnTexts(library, Tolvex::Strings::wstringFromS, Tolvex::Strings::stringFromW);
    OnTexts(plainest, WideByHand, Utf8ByHand);
});
