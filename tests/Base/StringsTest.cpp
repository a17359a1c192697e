#include <FrameworkBase/Base/Strings.h>

#include "tests/support/UnicodeCorpus.h"

#include <gtest/gtest.h>

namespace {

std::wstring Widen(const std::string& text) { return Tolvex::Strings::wstringFromS(text.c_str()); }
std::string Narrow(std::wstring text) { return Tolvex::Strings::stringFromW(text.data()); }

TEST(Strings, ValidTextsConvertBothWaysAtEveryPlace) {
    for (const auto& [utf8, wide] : UnicodeCorpus::valid) {
        for (std::size_t before = 0, after = 40; before <= 40; ++before, --after) {
            const std::string text = std::string(before, 'b') + utf8 + std::string(after, 'a');
            const std::wstring wideText = std::wstring(before, L'b') + wide + std::wstring(after, L'a');
            EXPECT_EQ(Widen(text), wideText);
            EXPECT_EQ(Narrow(wideText), text);
        }
    }
}

TEST(Strings, MalformedTextsGiveNothing) {
    for (const std::string malformed : UnicodeCorpus::invalidUtf8) {
        EXPECT_EQ(Widen(std::string(600, 'b') + malformed), L"") << malformed;
        for (std::size_t before = 0; before <= 40; ++before) {
            for (const char* after : {"", " and more", "\xC3"}) {
                EXPECT_EQ(Widen(std::string(before, 'b') + malformed + after), L"") << malformed;
            }
        }
    }
    for (const std::wstring malformed : UnicodeCorpus::invalidWide) {
        for (std::size_t before = 0; before <= 40; ++before) {
            EXPECT_EQ(Narrow(std::wstring(before, L'b') + malformed + std::wstring(40 - before, L'a')), "");
        }
    }
}

TEST(Strings, EveryCodePointComesBack) {
    for (wchar_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        const std::wstring text = {L'-', codePoint, L'-'};
        ASSERT_EQ(Widen(Narrow(text)), codePoint >= 0xD800 && codePoint <= 0xDFFF ? L"" : text) << long{codePoint};
    }
}

TEST(Strings, WideTextsOf2000CharactersAreRefused) {
    for (const wchar_t character : {L'a', L'\x1F3B5'}) {
        const std::wstring text(1999, character);
        EXPECT_EQ(Widen(Narrow(text)), text);
        EXPECT_EQ(Narrow(text + character), "");
        EXPECT_EQ(Widen(Narrow(text) + Narrow(text)), text + text) << "no limit in this direction";
        std::vector<wchar_t> unterminated(2000, character);
        EXPECT_EQ(Tolvex::Strings::stringFromW(unterminated.data()), "");
    }
}

} // namespace
