#include <FrameworkBase/Base/internal/Split.h>

#include <gtest/gtest.h>

TEST(Split, PiecesBetweenSeparatorsWithoutEmptyOnes) {
    const std::pair<std::wstring, std::vector<std::wstring>> cases[] = {{L"", {}},
                                                                        {L"/", {}},
                                                                        {L"///", {}},
                                                                        {L"a", {L"a"}},
                                                                        {L"/a", {L"a"}},
                                                                        {L"a/", {L"a"}},
                                                                        {L"/a//b/", {L"a", L"b"}},
                                                                        {L"a\\b/..", {L"a\\b", L".."}}};
    for (auto [text, pieces] : cases) {
        EXPECT_EQ(Tolvex::Strings::Split(text, L'/'), pieces);
    }
}
