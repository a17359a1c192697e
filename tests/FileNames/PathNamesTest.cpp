#include <FrameworkBase/FileNames/PathNames.h>

#include "tests/FileNames/PathTables.h"

#include <clocale>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

TEST(PathNames, Tables) {
    EXPECT_TRUE(Maps(path_rimuovifilename, "/a/b.wav => /a/ | /a/ => /a/ | b.wav =>  | a\\b =>  | /b => /"));
    EXPECT_TRUE(Maps(GetFolderPathFromFilename,
                     "/a/b.wav => /a | /b.wav =>  | a/b/ => a/b | b.wav => b.wav | a\\b => a | /a\\b => /a"));
    EXPECT_TRUE(Maps(CheckFolderHasSeparator, " =>  | /a => /a/ | /a/ => /a/ | a\\ => a\\/ | / => /"));
    EXPECT_TRUE(Maps(ConvertPathToLocalSystem,
                     "C:\\Songs\\x.sng => /Songs/x.sng | C:/x => C:/x | C: => C: | \\:\\x => /x | "
                     "\\\\srv\\x => //srv/x | ab:\\x => ab:/x"));
    EXPECT_TRUE(Maps(IsPathBelow, "/a/b/c, /a/b => true | /a/b/c, /a/b/ => true | /a/b, /a/b => false | "
                                  "/a/b/, /a/b => true | /a/bc, /a/b => false | /A/b/c, /a/b => false | "
                                  "/x/a/b/c, a/b => false | x,  => true | ,  => true"));
}

TEST(PathNames, PartsOfEveryCorpusPathMakeItUpAgain) {
    for (std::string path : pathCorpus) {
        SCOPED_TRACE(path);
        const std::string name = GetFilenameWithoutPath(path);
        EXPECT_EQ(GetPathWithoutFilename(path) + name, path.c_str()) << "up to the first zero byte";
        EXPECT_EQ(GetFilenameWithoutPath(std::wstring(path.begin(), path.end())),
                  std::wstring(name.begin(), name.end()));
        EXPECT_EQ(path_rimuovifilename(path), path.substr(0, path.rfind('/') + 1));
        EXPECT_EQ(GetFolderPathFromFilename(path), path.substr(0, path.find_last_of("/\\")));
        EXPECT_EQ(GetPathRoot(path) + NormalizePathCase(path), path + path);
        EXPECT_EQ(ConvertPathToLocalSystem(path).find('\\'), std::string::npos);
        const std::vector<char> shell = GetShellString(path);
        EXPECT_EQ(std::string(shell.begin(), shell.end()), path + "\0\0"s);
        const std::string separated = CheckFolderHasSeparator(path);
        EXPECT_EQ(CheckFolderHasSeparator(separated), separated);
        for (const std::string& other : pathCorpus) {
            EXPECT_EQ(CompareNormalizedPaths(path, other), path == other) << other;
            EXPECT_EQ(IsPathBelow(other, path), other.substr(0, separated.size()) == separated) << other;
        }
    }
}

TEST(PathNames, ShellStringIsWidenedByteByByte) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (const char* path : {"a\xC3", "a\x9F"}) { // what is no character by itself repeats the one before it
        EXPECT_EQ(GetShellWString(path), (std::vector<wchar_t>{L'a', L'a', 0, 0}));
    }
    std::setlocale(LC_CTYPE, "C");
}

class NormalizePathOnDisk : public DiskTreeTest {};

TEST_F(NormalizePathOnDisk, ResolvesWhatExistsAndReturnsTheRestUnchanged) {
    Make("real/take.wav, link -> real, dangling -> none");
    EXPECT_EQ(NormalizePath(Path("link//./../link/take.wav")), Path("real/take.wav"));
    EXPECT_EQ(NormalizePath("../test/link/"), Path("real"));
    for (const std::string& path : {Path("none/../real/"), Path("dangling"), Path("real/take.wav/"), ""s, "/"s}) {
        EXPECT_EQ(NormalizePath(path), path);
    }
    EXPECT_EQ(List(), "dangling, link, real/, real/take.wav");
}
