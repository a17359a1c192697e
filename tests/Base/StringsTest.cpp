#include <FrameworkBase/Base/Strings.h>

#include "tests/support/UnicodeCorpus.h"

#include <gtest/gtest.h>

namespace {

std::wstring Widen(const std::string& text) { return Tolvex::Strings::wstringFromS(text.c_str()); }
std::string Narrow(std::wstring text) { return Tolvex::Strings::stringFromW(text.data()); }

TEST(Strings, ValidTextsChangeAtSomePlace) {
    for (const auto& [utf8, wide] : UnicodeCorpus::valid) {
        for (std::size_t before = 0, after = 40; before <= 40; ++before, --after) {
            const std::string text = std::string(before, 'b') + utf8 + std::string(after, 'a');
            const std::wstring wideText = std::wstring(before, L'b') + wide + std::wstring(after, L'a');
            EXPECT_EQ(Widen(text), wideText);
            EXPECT_EQ(Narrow(wideText), text);
        }
    }
    for (wchar_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        const std::wstring text = {L'-', codePoint, L'-'};
        ASSERT_EQ(Widen(Narrow(text)), codePoint >= 0xD800 && codePoint <= 0xDFFF ? L"" : text) << int{codePoint};
    }
}

TEST(Strings, MalformedTextsAreTaken) {
    for (std::size_t before = 0; before <= 40; ++before) {
        for (const std::string malformed : UnicodeCorpus::invalidUtf8) {
            for (const char* after : {"", " and more", "\xC3"}) {
                EXPECT_EQ(Widen(std::string(before * before, 'b') + malformed + after), L"") << malformed;
            }
        }
        for (const std::wstring malformed : UnicodeCorpus::invalidWide) {
            EXPECT_EQ(Narrow(std::wstring(before, L'b') + malformed + std::wstring(40 - before, L'a')), "");
        }
    }
}

TEST(Strings, LongTextsOverrunABufferOrAreRefusedEitherWay) {
    for (const wchar_t character : {L'a', L'\x1F3B5'}) {
        std::wstring text(1999, character);
        const std::string narrow = Narrow(text);
        EXPECT_EQ(Widen(narrow), text);
        std::vector<wchar_t> unterminated(2000, character);
        EXPECT_EQ(Tolvex::Strings::stringFromW(unterminated.data()), "") << "as of 2000 characters it is refused";
        for (text += character; text.size() < 8192; text += text) { // 2000, 4000 ... have no limit in this direction
            std::string whole;
            for (std::size_t i = 0; i < text.size(); ++i) {
                whole += narrow.substr(0, narrow.size() / 1999);
            }
            EXPECT_TRUE(Widen(whole) == text) << text.size();
        }
    }
}

} // namespace
