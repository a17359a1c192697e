#include <FrameworkBase/FileNames/PathNames.h>

#include "tests/support/DiskTest.h"

#include <clocale>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

// What must hold for all paths is checked by PathsFuzz, whose inputs the tests replay.

TEST(PathNames, BackslashesSeparateInAnotherFunction) {
    EXPECT_TRUE(Maps(path_rimuovifilename, "/a/b.wav => /a/ | b.wav =>  | a\\b => "));
    EXPECT_TRUE(Maps(GetFolderPathFromFilename, "/a/b.wav => /a | b.wav => b.wav | a\\b => a | /a\\b => /a"));
    EXPECT_TRUE(Maps(CheckFolderHasSeparator, " =>  | /a => /a/ | a\\ => a\\/ | / => /"));
    EXPECT_TRUE(Maps(ConvertPathToLocalSystem, "C:\\Songs\\x.sng => /Songs/x.sng | C:/x => C:/x | \\\\s\\x => //s/x"));
    EXPECT_TRUE(Maps(IsPathBelow, "/a/b/c, /a/b => true | /a/b, /a/b => false | /a/b/, /a/b/ => true | x,  => true"));
}

TEST(PathNames, CharactersOfSeveralBytesAreWidenedAsOne) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (const char* path : {"a\xC3", "a\x9F"}) { // what is no character by itself repeats the one before it
        EXPECT_EQ(GetShellWString(path), (std::vector<wchar_t>{L'a', L'a', 0, 0}));
    }
    std::setlocale(LC_CTYPE, "C");
}

using NormalizePathOnDisk = DiskTest;

TEST_F(NormalizePathOnDisk, WhatDoesNotExistIsChanged) {
    Make("real/take.wav, link -> real, dangling -> none");
    EXPECT_EQ(NormalizePath(Path("link//./../link/take.wav")), Path("real/take.wav"));
    EXPECT_EQ(NormalizePath("../test/link/"), Path("real"));
    for (const std::string& path : {Path("none/../real/"), Path("dangling"), Path("real/take.wav/"), ""s, "/"s}) {
        EXPECT_EQ(NormalizePath(path), path);
    }
}
