#include <FrameworkBase/FileNames/RelativePaths.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/PathNames.h>

#include <climits>

using namespace Tolvex::FileNames;

namespace {

/// The relative path, behind "apart: " when no component is shared.
std::string RelativePath(const std::string& target, const std::string& base) {
    bool apart = false;
    const std::string path = GetRelativePath(target, base, apart);
    return (apart ? "apart: " : "") + path;
}

/// A path relative to a song file in "/none/a"; "none" when there is no such path.
std::string FromSong(const std::string& file) {
    std::string out = "none";
    const bool isSet = GetPathRelativeToOtherFile(out, "/none/a/song.sng", file);
    EXPECT_EQ(isSet, out != "none") << file;
    return out;
}

} // namespace

TEST(RelativePaths, ComponentsAreLostOrCountedTwice) {
    EXPECT_TRUE(Maps(
        RelativePath,
        "/s/a/Audio/, /s/a/ => Audio/ | /s/b/, /s/a/ => ../b/ | /s/a/, /s/a/ =>  | /s/a, s/a/ =>  | "
        "/x/y/, /s/a/ => apart: ../../x/y/ | /S/A/b/, /s/a/ => b/ | /s/a//b/, /s/ => a/ | s\\b, /s/c\\d => ../../b/ | "
        "/s/,  => apart: s/ | /\xC3\x84/, /\xC3\xA4/ => apart: ../\xC3\x84/"));
    EXPECT_TRUE(
        Maps(GetAbsoluteFromRelativePath,
             "/s/a, ../b/c.wav => /s/b/c.wav | /s/a, ../../../c => /c | /s/a, ./c => /s/a/./c | s/a, c => /s/a/c | "
             "/s/a, b/../c => /s/a/b/../c | /s/a, /../b\\c => /s/b/c | /s/a, //../b => /s/a//../b | "
             "/s/a//, .. => /s/a | /s//a, b//c/ => /s//a/b//c | /, .. =>  | ,  => "));
    EXPECT_TRUE(Maps(FromSong, // a relative file is taken from the song file itself
                     "/none/a/take.wav => take.wav | /none/a/Audio/take.wav => Audio/take.wav | /NONE/A/x => x | "
                     "/none/b/take.wav => ../b/take.wav | /Volumes/d/take.wav => none | /take.wav => none |  => none | "
                     "take.wav => song.sng/take.wav"));
}

using RelativePathsOnDisk = DiskTest;

TEST_F(RelativePathsOnDisk, AbsolutePathIsNotTheOneOnTheDisk) {
    Make("real/take.wav, link -> real");
    EXPECT_EQ(GetAbsolutePath("", "/none"), "");
    EXPECT_EQ(GetAbsolutePath(Path("link/../link//take.wav"), "/none"), Path("real/take.wav"));
    EXPECT_EQ(GetAbsolutePath("link/take.wav", folder.c_str()), Path("real/take.wav"));
    EXPECT_EQ(GetAbsolutePath("link/./none", folder.c_str()), Path("link/./none"));
    EXPECT_EQ(GetAbsolutePath("../test/link", nullptr), Path("real"));
    EXPECT_EQ(GetAbsolutePath("none", "") + GetAbsolutePath("C:\\x", "/none"), "none/none/C:/x");
    std::string file = Path("link/take.wav");
    EXPECT_TRUE(GetPathRelativeToOtherFile(file, Path("song.sng"), file));
    EXPECT_EQ(file, "real/take.wav") << "the output may be an input";
    std::string reference = "/none/a/song.sng";
    EXPECT_TRUE(GetPathRelativeToOtherFile(reference, reference, "/none/b/take.wav"));
    EXPECT_EQ(reference, "../b/take.wav");
    for (const std::size_t length : {1039U, 1040U}) {
        if (length >= PATH_MAX) {
            break; // no such folder can be made there
        }
        const std::string deep = MakeFolder(PathOfLength(folder, length));
        std::filesystem::current_path(deep);
        EXPECT_EQ(GetAbsolutePath("none", nullptr), length < 1040 ? deep + "/none" : "none") << length;
        EXPECT_EQ(NormalizePath("."), length < 1040 ? deep : ".") << length;
    }
}
