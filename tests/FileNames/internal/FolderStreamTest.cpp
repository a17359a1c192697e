#include <FrameworkBase/FileNames/internal/FolderStream.h>

#include <algorithm>
#include <gtest/gtest.h>

using namespace Tolvex::FileNames;

TEST(FolderStream, ListIsLostWhenTheFolderDoesNotOpen) {
    std::vector<std::string> names = {"before"};
    EXPECT_FALSE(DoGetFolderFiles<false>("/none", names) || DoGetFolderFiles<true>("/none", names));
    EXPECT_EQ(names, std::vector<std::string>{"before"});
    EXPECT_TRUE(DoGetFolderFiles<false>("/", names) && std::count(names.begin(), names.end(), "before") == 0);
}
