#include <FrameworkBase/FileNames/UniqueNames.h>

#include "tests/support/DiskTest.h"

using namespace Tolvex::FileNames;

using UniqueNames = DiskTest;

TEST_F(UniqueNames, NumbersAreSkippedOrTakenTwice) {
    const auto file = [this](const std::string& stem, const std::string& ext) {
        const std::string found = ComposeNewFilenameAndCheckExists(stem, ext);
        EXPECT_EQ(ComposeNewFilenameAndCheckExists(folder, stem, ext), Path(found));
        return found;
    };
    const auto subfolder = [this](const std::string& stem, const std::string& suffix) {
        const std::string found = ComposeNewFolderAndCheckExists(stem, suffix);
        EXPECT_EQ(ComposeNewFolderAndCheckExists(folder, stem, suffix), Path(found));
        return found;
    };
    EXPECT_TRUE(Does(file, "; a, .x => a.x;  | a.x; a, .x => a1.x; a.x | a, a1, a3; a,  => a2; a, a1, a3 | "
                           "a/; a,  => a1; a/ | a -> none; a,  => a; a | a; a, .x => a.x; a"));
    EXPECT_TRUE(Does(subfolder, "a.x/; a, .x => a 1.x; a.x/ | a/, a 1/, a 3/; a,  => a 2; a 1/, a 3/, a/ | "
                                "a; a,  => a 1; a | a -> none; a,  => a; a"));
    std::filesystem::permissions(MakeFile("secret"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary; // who may not read it
    EXPECT_EQ(file("secret", ""), "secret");
    EXPECT_EQ(subfolder("secret", ""), "secret 1");
}
