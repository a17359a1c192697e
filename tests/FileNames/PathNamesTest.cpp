#include <FrameworkBase/FileNames/PathNames.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

// The rows in the headers are tested by RowsTest, and what holds for all paths by PathsFuzz.

class PathsOnDiskTest : public DiskTest {
protected:
    void SetUp() override {
        DiskTest::SetUp();
        MakeTree(folder, {{"real/take.wav", ""}, {"link", "-> real"}, {"dangling", "-> none"}});
    }
};

TEST_F(PathsOnDiskTest, NormalizedPathHasNoLinks) {
    EXPECT_EQ(NormalizePath(Path("link//./../link/take.wav")), Path("real/take.wav"));
}

TEST_F(PathsOnDiskTest, PathThatCannotBeResolvedStaysAsItIs) {
    for (const std::string& path : {Path("none/../real/"), Path("dangling"), Path("real/take.wav/"), ""s, "/"s}) {
        EXPECT_EQ(NormalizePath(path), path);
        EXPECT_EQ(GetAbsolutePath(path, "/none"), path);
    }
}

TEST_F(PathsOnDiskTest, AbsolutePathStartsAtTheBaseFolder) {
    EXPECT_EQ(GetAbsolutePath("link/take.wav", folder.c_str()), Path("real/take.wav"));
    EXPECT_EQ(GetAbsolutePath("link/./none", folder.c_str()), Path("link/./none"));
    EXPECT_EQ(GetAbsolutePath("C:\\x", "/none"), "/none/C:/x");
    EXPECT_EQ(GetAbsolutePath("none", ""), "none");
}

using SongFolderTest = DiskTest;

TEST_F(SongFolderTest, HoldsAReadableDatabase) {
    MakeTree(folder, {{"song/Tolvex.db", ""}, {"other/", ""}});
    EXPECT_TRUE(IsSongFolder(Path("song")));
    EXPECT_TRUE(IsSongFolder(Path("song/")));
    EXPECT_FALSE(IsSongFolder(Path("other")));
    std::filesystem::permissions(Path("song/Tolvex.db"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_FALSE(IsSongFolder(Path("song")));
}
