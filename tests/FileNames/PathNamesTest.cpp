#include <FrameworkBase/FileNames/PathNames.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

#include <climits>
#include <clocale>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

// The rows in the headers are tested by RowsTest, and what holds for all paths by PathsFuzz.

TEST(ExtensionsTest, ComparesFortyEightCharactersOfAnExtension) {
    const std::string known(48, 'e');
    EXPECT_EQ(CheckAppendExtension("long name." + known, '.' + known + "tail"), "long name." + known);
    EXPECT_EQ(CheckAppendExtension("x." + known, '.' + known + "tail"), "x." + known + '.' + known + "tail");
}

TEST(ExtensionsTest, TakesOnlyADotForTheStartOfAnExtension) {
    EXPECT_EQ(ForceExtension("xwav", ".wav"), "xwav.wav");
    EXPECT_EQ(ForceExtension("wav", ".wav"), "wav.wav");
    EXPECT_EQ(ForceExtension("a.gz", ".tar.gz"), "a.gz");
}

TEST(PathNamesTest, WidensAByteThatIsNoCharacterAsTheOneBefore) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (const char* path : {"a\xC3", "a\x9F"}) {
        EXPECT_EQ(GetShellWString(path), (std::vector<wchar_t>{L'a', L'a', 0, 0}));
    }
    std::setlocale(LC_CTYPE, "C");
}

struct RelativeCase {
    const char* base;
    const char* relative;
    const char* absolute;
};

TEST(RelativePathsTest, ResolvesParentsInFrontAndCopiesTheRest) {
    const RelativeCase cases[] = {
        {"/s/a", "b/../c", "/s/a/b/../c"}, {"/s/a", "/../b\\c", "/s/b/c"},   {"/s/a", "//../b", "/s/a//../b"},
        {"/s/a//", "..", "/s/a"},          {"/s//a", "b//c/", "/s//a/b//c"}, {"", "", ""},
    };
    for (const auto& [base, relative, absolute] : cases) {
        EXPECT_EQ(GetAbsoluteFromRelativePath(base, relative), absolute) << base << " and " << relative;
    }
}

TEST(RelativePathsTest, TakesARelativeFileFromTheReferenceFileItself) {
    std::string file = "take.wav";
    EXPECT_TRUE(GetPathRelativeToOtherFile(file, "/none/a/song.sng", file));
    EXPECT_EQ(file, "song.sng/take.wav");
}

TEST(RelativePathsTest, LeavesTheOutputWhenNothingIsInCommon) {
    std::string file = "before";
    EXPECT_FALSE(GetPathRelativeToOtherFile(file, "/none/a/song.sng", "/take.wav"));
    EXPECT_FALSE(GetPathRelativeToOtherFile(file, "/none/a/song.sng", ""));
    EXPECT_EQ(file, "before");
}

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

TEST_F(PathsOnDiskTest, AbsolutePathWithoutABaseStartsAtTheWorkingDirectory) {
    EXPECT_EQ(GetAbsolutePath("../test/link", nullptr), Path("real"));
}

TEST_F(PathsOnDiskTest, RelativePathLeadsToTheResolvedFile) {
    std::string file = Path("link/take.wav");
    EXPECT_TRUE(GetPathRelativeToOtherFile(file, Path("song.sng"), file));
    EXPECT_EQ(file, "real/take.wav");
}

TEST_F(PathsOnDiskTest, PathsOf1040BytesAreNotResolved) {
    if (PATH_MAX <= 1040) {
        GTEST_SKIP() << "this system takes no such paths";
    }
    const std::string resolved = MakeFolder(PathOfLength(folder, 1039));
    std::filesystem::current_path(resolved);
    EXPECT_EQ(NormalizePath("."), resolved);
    EXPECT_EQ(GetAbsolutePath("none", nullptr), resolved + "/none");
    std::filesystem::current_path(MakeFolder(PathOfLength(folder, 1040)));
    EXPECT_EQ(NormalizePath("."), ".");
    EXPECT_EQ(GetAbsolutePath("none", nullptr), "none");
}

TEST(SongFileTest, HasOneOfSevenExtensions) {
    for (const std::string extension : {"sng", "sgw", "sngw", "txt", "edl", "aaf", "omf"}) {
        EXPECT_TRUE(IsSongFile('.' + extension)) << extension;
        EXPECT_FALSE(IsSongFile(extension)) << extension;
        EXPECT_FALSE(IsSongFile("a." + extension + '/')) << extension;
    }
    EXPECT_FALSE(IsSongFile("a.tspl"));
}

TEST(SongFileTest, PathEndsAtItsFirstZeroByte) {
    EXPECT_TRUE(IsSongFile("a.sng\0.wav"s));
    EXPECT_FALSE(IsSongFile("a.wav\0.sng"s));
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

TEST_F(SongFolderTest, IsNeverTheEmptyString) {
    std::filesystem::current_path(folder);
    MakeTree(folder, {{"Tolvex.db", ""}});
    EXPECT_TRUE(IsSongFolder("."));
    EXPECT_FALSE(IsSongFolder(""));
}
