#include <FrameworkBase/FileNames/UniqueNames.h>

#include "tests/support/DiskTest.h"

using namespace Tolvex::FileNames;

namespace {

struct UniqueNames : DiskTest {
    /// What both forms of a function give.
    template <class InAny, class InFolder>
    auto Either(InAny inAny, InFolder inFolder) const {
        return [=](const std::string& stem, const std::string& ext) {
            const std::string found = inAny(stem, ext);
            EXPECT_EQ(inFolder("", stem, ext), found);
            EXPECT_EQ(inFolder(folder, stem, ext), Path(found));
            EXPECT_EQ(inFolder(folder + "/", stem, ext), Path(found));
            return found;
        };
    }
};

TEST_F(UniqueNames, NumbersAreSkippedOrTakenTwice) {
    using Two = std::string (*)(std::string, std::string);
    using Three = std::string (*)(std::string, std::string, std::string);
    const auto file = Either(Two{ComposeNewFilenameAndCheckExists}, Three{ComposeNewFilenameAndCheckExists});
    EXPECT_TRUE(Does(file, "; a, .x => a.x;  | a.x; a, .x => a1.x; a.x | a, a1, a3; a,  => a2; a, a1, a3 | "
                           "a/; a,  => a1; a/ | a -> none; a,  => a; a | a; a, .x => a.x; a"));
    const auto subfolder = Either(Two{ComposeNewFolderAndCheckExists}, Three{ComposeNewFolderAndCheckExists});
    EXPECT_TRUE(Does(subfolder, "a.x/; a, .x => a 1.x; a.x/ | a/, a 1/, a 3/; a,  => a 2; a 1/, a 3/, a/ | "
                                "a; a,  => a 1; a | a -> none; a,  => a; a"));
    std::filesystem::permissions(MakeFile("secret"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary; // who may not read it
    EXPECT_EQ(file("secret", ""), "secret");
    EXPECT_EQ(subfolder("secret", ""), "secret 1");
}

} // namespace
