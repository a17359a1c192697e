#include <FrameworkBase/FileNames/FileOperations.h>

#include "tests/support/DiskTest.h"

#include <cerrno>
#include <climits>
#include <cstring>

using namespace Tolvex::FileNames;

namespace fs = std::filesystem;

using FileOperations = DiskTest;

TEST_F(FileOperations, FoldersAreNotMadeOrForTheirOwnerAlone) {
    EXPECT_TRUE(Does(CreateDirectory, "; one => true; one/ | one/; one => false; one/ | file; file => false; file | "
                                      "; missing/two => false; "));
    EXPECT_EQ(CreateDirectory(Path("one")) ? fs::status("one").permissions() : fs::perms::none, fs::perms(0755));
    const auto createAll = [this](const std::string& name) { return CreateDirectories(Path(name).substr(1)); };
    EXPECT_TRUE(Does(createAll, // every path counts from the root
                     "; x//y/ => true; x/, x/y/ | x/y/; x/y => true; x/, x/y/ | file; file => true; file | "
                     "file; file/x => false; file | x; x/y/z => false; x"));
    const AsOrdinaryUser ordinary; // who may not make anything at the first level, which is neither made nor looked at
    EXPECT_TRUE(Maps(CreateDirectories, "/none => true | none => true | / => true |  => true | /none/x => false"));
}

TEST_F(FileOperations, CopyIsNotWholeOrOverAnother) {
    const auto copy = [](const std::string& destination, const std::string& source) {
        return cp(destination.c_str(), source.c_str()) == 0 ? "copied" : std::strerror(errno);
    };
    EXPECT_TRUE(Does(copy, "a; b, a => copied; a, b=a | a, b; b, a => File exists; a, b | "
                           "; b, a => No such file or directory;  | a; x/b, a => No such file or directory; a | "
                           "a/; b, a => Is a directory; a/, b= | a, b -> c; b, a => File exists; a, b"));
    for (const std::size_t size : {4095U, 4096U, 100001U}) {
        fs::permissions(MakeFile("source", std::string(size, 'x')), fs::perms::owner_all);
        fs::remove("b");
        EXPECT_STREQ(copy("b", "source"), "copied");
        EXPECT_TRUE(Content("b") == Content("source"));
        EXPECT_EQ(fs::status("b").permissions(), fs::perms(0644)) << "not the source's";
    }
}

TEST_F(FileOperations, AnotherReasonIsTold) {
    for (const bool failIfExists : {false, true}) {
        const auto copy = [failIfExists](const std::string& source, const std::string& destination) {
            auto error = static_cast<CopyFileError>(77);
            const bool copied = CopyFile(source, destination, failIfExists, &error);
            return (copied ? "copied " : "failed ") + std::to_string(error);
        };
        EXPECT_TRUE(Does(copy, "a; a, b => copied 77; a, b=a | ; a, b => failed 1;  | a; a, x/b => failed 3; a | "
                               "a/; a, b => failed 3; a/, b= | a, b -> c; a, b => failed 3; a, b"));
        EXPECT_TRUE(Does(copy, failIfExists ? "a, b; a, b => failed 2; a, b | b; a, b => failed 2; b"
                                            : "a, b; a, b => copied 77; a, b=a | b; a, b => failed 1;  | "
                                              "a, b/; a, b => failed 3; a, b/"));
        EXPECT_FALSE(CopyFile("none", "none", failIfExists, nullptr));
    }
}

TEST_F(FileOperations, LinksOrFoldersAreCopiedOtherwise) {
    const auto copy = [](const std::string& source, const std::string& destination) {
        CopyFolder(source, destination);
        return fs::is_symlink("b/l") ? "a link" : "";
    };
    EXPECT_TRUE(
        Does(copy, "a/x, a/s/.y, a/e/; a, b => ; a/, a/e/, a/s/, a/s/.y, a/x, b/, b/e/, b/s/, b/s/.y=a/s/.y, b/x=a/x | "
                   "a/x, b/x, b/y; a, b => ; a/, a/x, b/, b/x=a/x, b/y | a/x; a, c/b => ; a/, a/x | ; a, b => ; b/ | "
                   "a/x, a/l -> x; a, b => ; a/, a/l=a/x, a/x, b/, b/l=a/x, b/x=a/x | "
                   "a/x/y, a/l -> x; a, b => ; a/, a/l, a/x/, a/x/y, b/, b/l=, b/x/, b/x/y=a/x/y | a/, a/l -> x; a, b "
                   "=> ; a/, a/l, b/"));
}

TEST_F(FileOperations, RenameThatFailsCopiesInAnotherDirection) {
    const auto rename = [](const std::string& from, const std::string& to) { return Rename(from, to), ""; };
    EXPECT_TRUE(Does(rename, "a, b; a, b => ; b=a | a/x; a, b => ; b/, b/x=a/x | a/x, a/s/y, b/k; a, b => ; "
                             "b/, b/k, b/s/, b/s/y=a/s/y, b/x=a/x | a/x; a, c/b => ;  | a; a, c/b => ;  | "
                             "a, b/; a, b => ; b/ | b; a, b => ; a=b, b | ; a, b => ; "));
}

TEST_F(FileOperations, ResultsOfTheSystemAreLost) {
    const auto remove = [](const std::string& path) { return DeleteFileA(path.c_str()); };
    EXPECT_TRUE(Does(remove, "a; a => 0;  | ; a => -1;  | a, l -> a; l => 0; a"));
    EXPECT_EQ(TolvexSetCurrentDirectory(folder.c_str()), 0);
    EXPECT_EQ(fs::current_path(), folder);
    EXPECT_EQ(TolvexSetCurrentDirectory("a"), -1);
}

TEST_F(FileOperations, RemovalGoesDeeperThanLevelTwentyOrLess) {
    fs::current_path(folder);
    const auto leftOfChain = [this](const std::string& start, int levels, int levelsWithFiles) {
        std::string path;
        for (int level = 0; level <= levels; ++level) {
            path += std::to_string(level) + '/';
            Make(level < levelsWithFiles ? path + "file" : path);
        }
        remove_dir_content(start.c_str(), 0);
        const std::vector<std::string> left = Cells(List());
        fs::remove_all("0");
        return left.size();
    };
    for (const std::string& start : {Path("0"), std::string("0")}) {
        EXPECT_EQ(leftOfChain(start, 20, 21), 1U) << "nothing";
        EXPECT_EQ(leftOfChain(start, 21, 21) == 1U, start != "0") << "a relative start leaves level 21";
        EXPECT_EQ(leftOfChain(start, 25, 26), 26U + 5U) << "all folders, and the files from level 21 on";
    }
    Make("0/1/file");
    remove_dir_content("0", 20);
    EXPECT_EQ(List(), "0/, 0/1/, 0/1/file") << "a caller's depth counts";
}

TEST_F(FileOperations, RemovalTakesALinkForAFile) {
    const auto remove = [](const std::string& path) { return remove_dir_content(path.c_str(), 0), ""; };
    EXPECT_TRUE(Does(remove,
                     "a/x, a/.y, a/s/z; a => ;  | a/, t/s/x, a/l -> ../t; a => ; t/ | a/, t, a/l -> ../t; a => ; t | "
                     "a/s/x, a/s/l -> none; a => ; a/, a/s/, a/s/l | a; a => ; a | a; b => ; a | "
                     // the path of the inner one, seen from the outer one, is that of the innermost
                     "a/a/a/; a => ; a/, a/a/"));
}

TEST_F(FileOperations, LongPathsAreNotCut) {
    if (PATH_MAX <= 1050) {
        GTEST_SKIP() << "this system takes no such paths";
    }
    const std::string start = MakeFolder(PathOfLength(folder, 1040));
    const std::string beside = start.substr(0, 1039); // what the path of anything in that folder comes to
    MakeFile(start + "/file");
    for (const bool isFolder : {false, true}) {
        isFolder ? MakeFolder(beside) : MakeFile(beside);
        remove_dir_content(start.c_str(), 0);
        EXPECT_TRUE(fs::exists(start + "/file") && !fs::exists(beside)) << isFolder;
    }
}
