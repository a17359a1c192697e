#include "FrameworkBase/FileNames/RelativePaths.h"

#include "FrameworkBase/FileNames/PathNames.h"
#include "tests/FileNames/PathTables.h"

#include <strings.h>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

namespace {

/// The relative path, behind "apart: " when no component is shared.
std::string RelativePath(const std::string& target, const std::string& base) {
    bool apart = false;
    bool again = true;
    const std::string path = GetRelativePath(target, base, apart);
    GetRelativePath(target, base, again);
    EXPECT_EQ(apart, again) << "set whatever it was before";
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

TEST(RelativePaths, Tables) {
    EXPECT_TRUE(
        Maps(RelativePath,
             "/s/a/Audio/, /s/a/ => Audio/ | /s/b/, /s/a/ => ../b/ | /s/a/, /s/a/ =>  | /s/a, s/a/ =>  | "
             "/x/y/, /s/a/ => apart: ../../x/y/ | /S/A/b/, /s/a/ => b/ | /s/a//b/, /s/ => a/ | //s/, //t/ => ../s/ | "
             "/s//x/, /s/y//z/ => ../ | s\\b, /s/c\\d => ../../b/ | , /s/ => apart: ../ | /s/,  => apart: s/ | "
             ", / => apart:  | /\xC3\x84/, /\xC3\xA4/ => apart: ../\xC3\x84/"));
    EXPECT_EQ(RelativePath("/s\0x/b/"s, "/s\0y/"s), "b/");
    EXPECT_TRUE(
        Maps(GetAbsoluteFromRelativePath,
             "/s/a, ../b/c.wav => /s/b/c.wav | /s/a, ../../../c => /c | /s/a, ./c => /s/a/./c | s/a, c => /s/a/c | "
             "/s/a, b/../c => /s/a/b/../c | /s/a, /../b\\c => /s/b/c | /s/a, //../b => /s/a//../b | "
             "/s/a/,  => /s/a | /s/a//, .. => /s/a | /s//a, b//c/ => /s//a/b//c | /, .. =>  | ,  => "));
    EXPECT_TRUE(Maps(FromSong, // a relative file is taken from the song file itself
                     "/none/a/take.wav => take.wav | /none/a/Audio/take.wav => Audio/take.wav | /NONE/A/x => x | "
                     "/none/b/take.wav => ../b/take.wav | /Volumes/d/take.wav => none | /take.wav => none |  => none | "
                     "take.wav => song.sng/take.wav"));
}

TEST(RelativePaths, RelativePathLeadsBackToTheTarget) {
    const auto has = [](const std::vector<std::string>& components, const char* component) {
        return std::find(components.begin(), components.end(), component) != components.end();
    };
    int count = 0;
    for (const std::string& target : pathCorpus) {
        for (const std::string& base : pathCorpus) {
            const std::vector<std::string> to = Components(target);
            if (has(to, "") || has(to, "..") || has(Components(base), "") ||
                (target + base).find('\0') != target.npos) {
                continue; // it need not lead back there
            }
            ++count;
            bool apart = false;
            const std::string back = GetAbsoluteFromRelativePath(base, GetRelativePath(target, base, apart));
            const std::string expected = to.empty() ? "" : '/' + Joined(to, "/");
            EXPECT_EQ(strcasecmp(back.c_str(), expected.c_str()), 0) << target << ", " << base;
        }
    }
    EXPECT_GT(count, 1000);
}

class RelativePathsOnDisk : public DiskTreeTest {};

TEST_F(RelativePathsOnDisk, AbsolutePathIsNormalisedWhereItExists) {
    Make("real/take.wav, link -> real");
    const auto absolute = [this](const std::string& base, const std::string& path) {
        const std::string result = GetAbsolutePath(path, base.empty() ? nullptr : base.c_str());
        return result.find(folder) == 0 ? result.substr(folder.size()) : result; // less what differs from run to run
    };
    std::filesystem::current_path(folder);
    EXPECT_TRUE(Maps(absolute, ",  =>  | /none,  =>  | /none, " + Path("link/../link//take.wav") +
                                   " => /real/take.wav | " + folder + ", link/take.wav => /real/take.wav | " + folder +
                                   ", link/./x => /link/./x | "
                                   ", ../test/link => /real | , none//x => /none//x | /none, C:\\x => /none/C:/x"));
    EXPECT_EQ(GetAbsolutePath("none", ""), "none");
    std::string file = Path("link/take.wav");
    EXPECT_TRUE(GetPathRelativeToOtherFile(file, Path("song.sng"), file));
    EXPECT_EQ(file, "real/take.wav") << "the output may be an input";
    std::string reference = "/none/a/song.sng";
    EXPECT_TRUE(GetPathRelativeToOtherFile(reference, reference, "/none/b/take.wav"));
    EXPECT_EQ(reference, "../b/take.wav");
    for (const std::size_t length : {1039U, 1040U}) {
        const std::string deep = MakeFolder(PathOfLength(folder, length));
        std::filesystem::current_path(deep);
        EXPECT_EQ(GetAbsolutePath("none", nullptr), length < 1040 ? deep + "/none" : "none") << length;
        EXPECT_EQ(NormalizePath("."), length < 1040 ? deep : ".") << length;
        std::filesystem::remove_all(Path(std::string(100, 'd')));
    }
    EXPECT_EQ(List(), "link, real/, real/take.wav");
}
