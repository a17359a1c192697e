#include <FrameworkBase/Base/Strings.h>

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

std::wstring Widen(const std::string& string) { return Tolvex::Strings::wstringFromS(string.c_str()); }
std::string Narrow(std::wstring string) { return Tolvex::Strings::stringFromW(string.data()); }

TEST(StringsTest, EveryCharacterButASurrogateConvertsBothWays) {
    for (wchar_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        const std::wstring string = {L'-', codePoint, L'-'};
        const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
        ASSERT_EQ(Widen(Narrow(string)), isSurrogate ? L"" : string) << long{codePoint};
    }
}

TEST(StringsTest, CharactersConvertAtEveryPlace) {
    const std::string utf8 = "\xEF\xBB\xBF\xC2\x80\xE2\x82\xAC\xF0\x9F\x8E\xB5 e\xCC\x81";
    const std::wstring wide = L"\xFEFF\x80\x20AC\x1F3B5 e\x301";
    for (std::size_t before = 0, after = 40; before <= 40; ++before, --after) {
        const std::string string = std::string(before, 'b') + utf8 + std::string(after, 'a');
        const std::wstring wideString = std::wstring(before, L'b') + wide + std::wstring(after, L'a');
        EXPECT_EQ(Widen(string), wideString);
        EXPECT_EQ(Narrow(wideString), string);
    }
}

TEST(StringsTest, MalformedUtf8GivesTheEmptyString) {
    const std::string malformed[] = {"\x80", "\xBF", "\xFE", "\xFF", "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80",
                                     // longer than need be
                                     "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
                                     // surrogates, and above U+10FFFF
                                     "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80",
                                     // cut short
                                     "\xC3", "\xE2\x82", "\xF0\x9F\x8E", "\xE2\xE2\x82\xAC"};
    for (const std::string& bytes : malformed) {
        for (std::size_t before = 0; before <= 40; ++before) {
            const std::string string = std::string(before, 'b') + bytes;
            EXPECT_EQ(Widen(string), L"") << string;
            EXPECT_EQ(Widen(string + " and more"), L"") << string;
        }
    }
}

TEST(StringsTest, WideStringWithNoCharacterGivesTheEmptyString) {
    for (const wchar_t malformed : L"\xD800\xDBFF\xDC00\xDFFF\x110000\x7FFFFFFF\x80000000\xFFFFFFFF"s) {
        EXPECT_EQ(Narrow(L"before "s + malformed + L" and more"), "") << long{malformed};
    }
}

TEST(StringsTest, WideStringOf2000CharactersGivesTheEmptyString) {
    EXPECT_EQ(Narrow(std::wstring(1999, L'\x1F3B5')).size(), 4 * 1999U);
    EXPECT_EQ(Narrow(std::wstring(2000, L'a')), "");
    EXPECT_EQ(Widen(std::string(2000, 'a')), std::wstring(2000, L'a'));
}

} // namespace
