#include <FrameworkBase/Base/Strings.h>

#include "tests/support/Tables.h"

namespace {

/// Pairs of forms: bounds of one to four bytes and of the surrogates; no characters; byte-order marks; combining marks.
const std::vector<std::pair<std::string, std::wstring>> valid = {
    {"", L""},
    {"\x7F\xC2\x80\xDF\xBF", L"\x7F\x80\x7FF"},
    {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD", L"\x800\xD7FF\xE000\xFFFD"},
    {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\x10000\x10FFFF"},
    {"\xEF\xB7\x90\xEF\xBF\xBE\xEF\xBF\xBF\xF0\x9F\xBF\xBF", L"\xFDD0\xFFFE\xFFFF\x1FFFF"},
    {"\xEF\xBB\xBF\xEF\xBB\xBFz\xEF\xBB\xBF", L"\xFEFF\xFEFFz\xFEFF"},
    {"\xCC\x81x e\xCC\x81 \xC3\xA9", L"\x301x e\x301 \xE9"}};

/// Bytes that start no character, forms longer than need be, surrogates, above U+10FFFF, cut short, beside a mark.
const std::string invalidUtf8 =
    "\x80 \xBF a\xFE a\xFFz \xF5\x80\x80\x80 \xF8\x88\x80\x80\x80 \xFC\x84\x80\x80\x80\x80 \xC0\x80 \xC1\xBF "
    "\xE0\x80\x80 "
    "\xE0\x9F\xBF \xF0\x80\x80\x80 \xF0\x8F\xBF\xBF \xED\xA0\x80 \xED\xBF\xBF \xED\xA0\xBD\xED\xB8\x80 "
    "\xF4\x90\x80\x80 "
    "\xC3 \xE2\x82 \xF0\x9F\x8E \xC3z \xE2\x82z \xF0\x9F\x8Ez \xE2\xE2\x82\xAC \xEF\xBB\xBF\xFF \xFF\xFE";

/// Characters that make the whole result empty: surrogates, and what is above U+10FFFF.
const std::wstring invalidWide = L"\xD800\xDBFF\xDC00\xDFFF\x110000\x7FFFFFFF\x80000000\xFFFFFFFF\xFFFE0000";

std::wstring Widen(const std::string& text) { return Tolvex::Strings::wstringFromS(text.c_str()); }
std::string Narrow(std::wstring text) { return Tolvex::Strings::stringFromW(text.data()); }

TEST(Strings, ValidTextsChangeAtSomePlace) {
    for (const auto& [utf8, wide] : valid) {
        for (std::size_t before = 0, after = 40; before <= 40; ++before, --after) {
            const std::string text = std::string(before, 'b') + utf8 + std::string(after, 'a');
            const std::wstring wideText = std::wstring(before, L'b') + wide + std::wstring(after, L'a');
            EXPECT_EQ(Widen(text), wideText);
            EXPECT_EQ(Narrow(wideText), text);
        }
    }
    for (wchar_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        const std::wstring text = {L'-', codePoint, L'-'};
        ASSERT_EQ(Widen(Narrow(text)), codePoint >= 0xD800 && codePoint <= 0xDFFF ? L"" : text) << long{codePoint};
    }
}

TEST(Strings, MalformedTextsAreTaken) {
    for (std::size_t before = 0; before <= 40; ++before) {
        for (const std::string& malformed : Cells(invalidUtf8, " ")) {
            for (const char* after : {"", " and more", "\xC3"}) {
                EXPECT_EQ(Widen(std::string(before * before, 'b') + malformed + after), L"") << malformed;
            }
        }
        for (const wchar_t malformed : invalidWide) {
            EXPECT_EQ(Narrow(std::wstring(before, L'b') + malformed + std::wstring(40 - before, L'a')), "");
        }
    }
}

TEST(Strings, LongTextsOverrunABufferOrAreRefusedEitherWay) {
    for (const auto& [utf8, wide] : {std::pair("a", L'a'), std::pair("\xF0\x9F\x8E\xB5", L'\x1F3B5')}) {
        for (const std::size_t length : {1999U, 2000U, 2500U, 4000U}) {
            std::string text;
            for (std::size_t i = 0; i < length; ++i) {
                text += utf8;
            }
            EXPECT_TRUE(Widen(text) == std::wstring(length, wide)) << length;
            EXPECT_TRUE(Narrow(std::wstring(length, wide)) == (length < 2000 ? text : "")) << length;
        }
        std::vector<wchar_t> unterminated(2000, wide);
        EXPECT_EQ(Tolvex::Strings::stringFromW(unterminated.data()), "");
    }
}

} // namespace
