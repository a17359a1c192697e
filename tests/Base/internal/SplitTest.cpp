#include "FrameworkBase/Base/internal/Split.h"

#include <gtest/gtest.h>

using Tolvex::Strings::Split;

namespace {

TEST(Split, PiecesBetweenSeparatorsWithoutEmptyOnes) {
    const struct {
        std::string text;
        std::vector<std::string> pieces;
    } cases[] = {
        {"", {}},
        {"/", {}},
        {"///", {}},
        {"a", {"a"}},
        {"/a", {"a"}},
        {"a/", {"a"}},
        {"/a//b/", {"a", "b"}},
        {"a\\b/..", {"a\\b", ".."}},
        {std::string("a\0/\0", 4), {std::string("a\0", 2), std::string("\0", 1)}},
    };
    for (auto [text, pieces] : cases) {
        const std::string before = text;
        EXPECT_EQ(Split(text, '/'), pieces) << text;
        EXPECT_EQ(text, before);
    }
    std::wstring wide = L"|take|1||";
    EXPECT_EQ(Split(wide, L'|'), (std::vector<std::wstring>{L"take", L"1"}));
}

} // namespace
