#include <FrameworkBase/Base/Strings.h>

#include "tests/support/Tables.h"
#include "tests/support/UnicodeCorpus.h"

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
        for (const std::string& malformed : Cells(UnicodeCorpus::invalidUtf8, " ")) {
            for (const char* after : {"", " and more", "\xC3"}) {
                EXPECT_EQ(Widen(std::string(before * before, 'b') + malformed + after), L"") << malformed;
            }
        }
        for (const wchar_t malformed : UnicodeCorpus::invalidWide) {
            EXPECT_EQ(Narrow(std::wstring(before, L'b') + malformed + std::wstring(40 - before, L'a')), "");
        }
    }
}

TEST(Strings, LongTextsOverrunABufferOrAreRefusedEitherWay) {
    for (const auto& [utf8, wide] : {std::pair("a", L'a'), std::pair("\xF0\x9F\x8E\xB5", L'\x1F3B5')}) {
        std::string text;
        for (std::size_t length = 1; length <= 4000; ++length) {
            text += utf8;
            const bool isOfInterest = length == 1999 || length == 2000 || length == 2500 || length == 4000;
            EXPECT_TRUE(!isOfInterest || Widen(text) == std::wstring(length, wide)) << length;
            EXPECT_TRUE(!isOfInterest || Narrow(std::wstring(length, wide)) == (length < 2000 ? text : "")) << length;
        }
        std::vector<wchar_t> unterminated(2000, wide);
        EXPECT_EQ(Tolvex::Strings::stringFromW(unterminated.data()), "");
    }
}

} // namespace
