#include <FrameworkBase/FileNames/PathNames.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

#include <climits>
#include <clocale>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

// What must hold for all paths is checked by PathsFuzz, whose inputs the tests replay.

TEST(Extensions, DotsAndSlashesAreMistaken) {
    EXPECT_TRUE(Maps(GetExtensionWithoutDot,
                     ".wav => wav | a.tar.gz => gz | a. => . | . => . | wav =>  |  =>  | /a.b/c => b/c"));
    EXPECT_TRUE(Maps(ForceExtension,
                     "Take.WAV, .wav => Take.WAV | take.aif, .wav => take.wav | take, .wav => take.wav | "
                     "wav, .wav => wav.wav | .wav, .wav => .wav | xwav, .wav => xwav.wav | a., wav => a. | "
                     "a.b, wav => awav | a.gz, .tar.gz => a.gz | ,  => "));
    EXPECT_TRUE(Maps(CheckAppendExtension, "a.wav, .wav => a.wav | a.WAV, .wav => a.WAV | a, .wav => a.wav | "
                                           "a.mp3, .wav => a.mp3.wav | a.mp3, wav => a.mp3wav | b, .a => b.a"));
    EXPECT_TRUE(Maps(AppendStringBeforeFilename,
                     "/a/take.wav, old  => /a/old take.wav | take.wav, old  => old take.wav | /a/, old  => /a/old "));
    const std::string known(48, 'e'); // no more than that is compared
    EXPECT_EQ(CheckAppendExtension("long name." + known, '.' + known + "tail"), "long name." + known);
    EXPECT_EQ(CheckAppendExtension("x." + known, '.' + known + "tail"), "x." + known + '.' + known + "tail");
}

TEST(PathNames, CharactersOfSeveralBytesAreWidenedAsOne) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (const char* path : {"a\xC3", "a\x9F"}) { // what is no character by itself repeats the one before it
        EXPECT_EQ(GetShellWString(path), (std::vector<wchar_t>{L'a', L'a', 0, 0}));
    }
    std::setlocale(LC_CTYPE, "C");
}

TEST(RelativePaths, ComponentsAreLostOrCountedTwice) {
    EXPECT_TRUE(
        Maps(GetAbsoluteFromRelativePath,
             "/s/a, ../b/c.wav => /s/b/c.wav | /s/a, ../../../c => /c | /s/a, ./c => /s/a/./c | s/a, c => /s/a/c | "
             "/s/a, b/../c => /s/a/b/../c | /s/a, /../b\\c => /s/b/c | /s/a, //../b => /s/a//../b | "
             "/s/a//, .. => /s/a | /s//a, b//c/ => /s//a/b//c | /, .. =>  | ,  => "));
    const auto fromSong = [](const std::string& file) {
        std::string out = "none";
        return GetPathRelativeToOtherFile(out, "/none/a/song.sng", file) ? "to " + out : out;
    };
    EXPECT_TRUE(Maps(fromSong, // a relative file is taken from the song file itself
                     "/none/a/take.wav => to take.wav | /NONE/A/Audio/x => to Audio/x | /none/b/x => to ../b/x | "
                     "/Volumes/d/take.wav => none | /take.wav => none |  => none | take.wav => to song.sng/take.wav"));
}

using PathsOnDisk = DiskTest;

TEST_F(PathsOnDisk, PathIsNotTheOneOnTheDisk) {
    Make("real/take.wav, link -> real, dangling -> none");
    EXPECT_EQ(NormalizePath(Path("link//./../link/take.wav")), Path("real/take.wav"));
    for (const std::string& path : {Path("none/../real/"), Path("dangling"), Path("real/take.wav/"), ""s, "/"s}) {
        EXPECT_EQ(NormalizePath(path), path);
        EXPECT_EQ(GetAbsolutePath(path, "/none"), path);
    }
    EXPECT_EQ(GetAbsolutePath("link/take.wav", folder.c_str()), Path("real/take.wav"));
    EXPECT_EQ(GetAbsolutePath("link/./none", folder.c_str()), Path("link/./none"));
    EXPECT_EQ(GetAbsolutePath("../test/link", nullptr), Path("real"));
    EXPECT_EQ(GetAbsolutePath("none", "") + GetAbsolutePath("C:\\x", "/none"), "none/none/C:/x");
    std::string file = Path("link/take.wav");
    EXPECT_TRUE(GetPathRelativeToOtherFile(file, Path("song.sng"), file));
    EXPECT_EQ(file, "real/take.wav") << "the output may be an input";
    for (std::size_t length = 1039; length <= 1040 && length < PATH_MAX; ++length) {
        const std::string deep = MakeFolder(PathOfLength(folder, length));
        std::filesystem::current_path(deep);
        EXPECT_EQ(GetAbsolutePath("none", nullptr), length < 1040 ? deep + "/none" : "none") << length;
        EXPECT_EQ(NormalizePath("."), length < 1040 ? deep : ".") << length;
    }
}

TEST_F(PathsOnDisk, OtherFilesAreTakenForSongs) {
    for (const std::string& extension : Cells("sng sgw sngw txt edl aaf omf", " ")) {
        EXPECT_TRUE(IsSongFile('.' + extension)) << extension;
        EXPECT_FALSE(IsSongFile(extension) || IsSongFile("a." + extension + '/')) << extension;
    }
    EXPECT_TRUE(Maps(IsSongFile, "Mix.SNG => true | asng => false | take.wav => false | a.tspl => false |  => false"));
    EXPECT_TRUE(IsSongFile("a.sng\0.wav"s) && !IsSongFile("a.wav\0.sng"s));
    EXPECT_TRUE(Does(IsSongFolder, "s/Tolvex.db; s/ => true; s/, s/Tolvex.db | s/; s => false; s/ | "
                                   "Tolvex.db;  => false; Tolvex.db | Tolvex.db; . => true; Tolvex.db"));
    std::filesystem::permissions(Path("Tolvex.db"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_FALSE(IsSongFolder(folder));
}
