#include "FrameworkBase/Base/Strings.h"

#include <gtest/gtest.h>
#include <vector>

using Tolvex::Strings::stringFromW;
using Tolvex::Strings::wstringFromS;

namespace {

struct Pair {
    std::string utf8;
    std::wstring wide;
};

/// The smallest and the largest code point of every length and beside every gap, and what else is easy to get wrong.
const std::vector<Pair> validTexts = {
    {"", L""},
    {"a", L"a"},
    {"\x01\x7F", L"\x01\x7F"},
    {"\xC2\x80", L"\x80"},
    {"\xC3\xA9", L"\xE9"},
    {"\xDF\xBF", L"\x7FF"},
    {"\xE0\xA0\x80", L"\x800"},
    {"\xE2\x82\xAC", L"\x20AC"},
    {"\xED\x9F\xBF", L"\xD7FF"},
    {"\xEE\x80\x80", L"\xE000"},
    {"\xEF\xBF\xBD", L"\xFFFD"},
    {"\xEF\xBF\xBE", L"\xFFFE"},
    {"\xEF\xBF\xBF", L"\xFFFF"},
    {"\xF0\x90\x80\x80", L"\x10000"},
    {"\xF0\x9F\x8E\xB5", L"\x1F3B5"},
    {"\xF4\x8F\xBF\xBF", L"\x10FFFF"},
    {"\xEF\xBB\xBF", L"\xFEFF"}, // a byte-order mark alone,
    {"\xEF\xBB\xBF"
     "a\xEF\xBB\xBF",
     L"\xFEFF"
     L"a\xFEFF"},             // first and last
    {"e\xCC\x81", L"e\x301"}, // not composed
};

/// What no text may contain, wherever it stands.
const std::vector<std::string> malformedSequences = {
    "\x80",
    "\xBF", // continuation without a lead
    "\xC3",
    "\xE2",
    "\xE2\x82",
    "\xF0",
    "\xF0\x9F",
    "\xF0\x9F\x8E", // truncated
    "\xC3\xC3\xA9",
    "\xE2\x82\xC3\xA9", // truncated before another sequence
    "\xC0\x80",
    "\xC1\xBF",
    "\xE0\x80\x80",
    "\xE0\x9F\xBF",
    "\xF0\x80\x80\x80",
    "\xF0\x8F\xBF\xBF", // overlong
    "\xED\xA0\x80",
    "\xED\xBF\xBF",
    "\xED\xA0\xBC\xED\xBE\xB5", // surrogates, alone and as a pair
    "\xF4\x90\x80\x80",
    "\xF5\x80\x80\x80",
    "\xF7\xBF\xBF\xBF", // above U+10FFFF
    "\xF8\x88\x80\x80\x80",
    "\xFC\x84\x80\x80\x80\x80",
    "\xFE",
    "\xFF",
};

std::string Narrow(std::wstring text) { return stringFromW(text.data()); }

TEST(Strings, ValidTextsConvertBothWaysAtEveryPlace) {
    for (const auto& [utf8, wide] : validTexts) {
        for (std::size_t before = 0; before <= 20; ++before) {
            for (const std::size_t after : {0, 1, 7, 8, 20}) {
                const std::string text = std::string(before, 'b') + utf8 + std::string(after, 'a');
                const std::wstring wideText = std::wstring(before, L'b') + wide + std::wstring(after, L'a');
                EXPECT_EQ(wstringFromS(text.c_str()), wideText);
                EXPECT_EQ(Narrow(wideText), text);
            }
        }
    }
}

TEST(Strings, MalformedTextsGiveNothing) {
    for (const std::string& malformed : malformedSequences) {
        for (std::size_t before = 0; before <= 20; ++before) {
            for (const char* after : {"", "a", "\xC3\xA9", "12345678"}) {
                const std::string text = std::string(before, 'b') + malformed + after;
                EXPECT_EQ(wstringFromS(text.c_str()), L"") << testing::PrintToString(text);
            }
        }
    }
    for (const long codePoint : {0xD800L, 0xDBFFL, 0xDC00L, 0xDFFFL, 0x110000L, 0x7FFFFFFFL, -1L}) {
        const std::wstring malformed(1, static_cast<wchar_t>(codePoint));
        EXPECT_EQ(Narrow(malformed), "");
        EXPECT_EQ(Narrow(L"ab" + malformed + L"c\xE9"), "");
    }
}

TEST(Strings, EveryCodePointComesBack) {
    for (wchar_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
        const std::wstring text = {L'-', codePoint, L'-'};
        const std::string utf8 = Narrow(text);
        ASSERT_EQ(wstringFromS(utf8.c_str()), isSurrogate ? L"" : text) << std::hex << static_cast<long>(codePoint);
    }
}

TEST(Strings, TextsEndAtTheirFirstZero) {
    EXPECT_EQ(wstringFromS("ab\0\xFF"), L"ab");
    EXPECT_EQ(wstringFromS("\xC3\0\xA9"), L"");
    EXPECT_EQ(Narrow(std::wstring(L"ab\0c", 4)), "ab");
}

TEST(Strings, WideTextsOf2000CharactersAreRefused) {
    for (const auto& [utf8, wide] : {Pair{"a", L"a"}, Pair{"\xF0\x9F\x8E\xB5", L"\x1F3B5"}}) {
        std::string expected;
        std::wstring text;
        for (int i = 0; i < 1999; ++i) {
            expected += utf8;
            text += wide;
        }
        EXPECT_EQ(Narrow(text), expected);
        EXPECT_EQ(wstringFromS((expected + utf8).c_str()), text + wide) << "there is no limit in this direction";
        EXPECT_EQ(Narrow(text + wide), "");
        std::vector<wchar_t> unterminated(2000, wide[0]);
        EXPECT_EQ(stringFromW(unterminated.data()), "");
    }
}

} // namespace
