#include "benchmarks/Inputs.h"
#include <FrameworkBase/Base/Strings.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <functional>
#include <numeric>

namespace {

/// Copies eight characters. Whether none of the 64-bit words at `text` has a bit of `otherBits`.
template <std::uint64_t otherBits, class From, class To>
bool CopyAscii(const From* text, To* out) {
    std::array<From, 8> block;
    std::array<std::uint64_t, sizeof(From)> words;
    std::memcpy(block.data(), text, sizeof block);
    std::memcpy(words.data(), text, sizeof block);
    std::transform(block.begin(), block.end(), out, [](From character) { return static_cast<To>(character); });
    return (std::accumulate(words.begin(), words.end(), std::uint64_t{0}, std::bit_or()) & otherBits) == 0;
}

/// Decodes the sequence at `next`, which moves past it. False when it is none. A terminating zero ends the text.
bool DecodeByHand(const unsigned char*& next, wchar_t& out) {
    const unsigned char* const bytes = next;
    const auto continues = [bytes](int i) { return (bytes[i] & 0xC0) == 0x80; };
    const auto bits = [bytes](int i) { return bytes[i] & 0x3F; };
    const int lead = bytes[0];
    next += lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (lead < 0xE0) {
        out = (lead & 0x1F) << 6 | bits(1);
        return lead >= 0xC2 && continues(1);
    }
    if (!continues(1) || !continues(2)) {
        return false;
    }
    if (lead < 0xF0) {
        out = (lead & 0x0F) << 12 | bits(1) << 6 | bits(2);
        return out >= 0x800 && (out & 0x1FF800) != 0xD800;
    }
    out = (lead & 0x07) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
    return continues(3) && lead <= 0xF4 && out >= 0x10000 && out <= 0x10FFFF;
}

/// For texts of at most 8,000 bytes.
[[gnu::noinline]] std::wstring WideByHand(const char* text) {
    const auto* next = reinterpret_cast<const unsigned char*>(text);
    const auto* const end = next + std::strlen(text);
    std::array<wchar_t, 8008> decoded;
    wchar_t* out = decoded.data();
    while (next < end) {
        for (; end - next >= 8 && CopyAscii<0x8080808080808080U>(next, out); next += 8) {
            out += 8;
        }
        while (next < end && *next < 0x80) {
            *out++ = *next++;
        }
        while (*next >= 0x80) {
            if (!DecodeByHand(next, *out++)) {
                return {};
            }
        }
    }
    return {decoded.data(), out};
}

/// For texts of fewer than 2,000 characters.
[[gnu::noinline]] std::string Utf8ByHand(const wchar_t* text) {
    const wchar_t* const end = text + std::wcslen(text);
    std::array<char, 8008> encoded;
    char* out = encoded.data();
    const auto isAscii = [](wchar_t c) { return c >= 0 && c < 0x80; };
    const auto put = [&out](wchar_t bits, int mark) { *out++ = static_cast<char>(bits | mark); };
    while (text < end) {
        for (; end - text >= 8 && CopyAscii<0xFFFFFF80FFFFFF80U>(text, out); text += 8) {
            out += 8;
        }
        for (; text < end && isAscii(*text); ++text) {
            put(*text, 0);
        }
        for (; text < end && !isAscii(*text); ++text) {
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
    OnTexts(limit, WideByHand, Utf8ByHand);
});

} // namespace
