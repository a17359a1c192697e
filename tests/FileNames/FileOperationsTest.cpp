#include <FrameworkBase/FileNames/FileOperations.h>

#include "tests/support/DiskTest.h"

#include <cerrno>
#include <climits>

using namespace Tolvex::FileNames;

namespace fs = std::filesystem;

using CreateDirectoryTest = DiskTest;

TEST_F(CreateDirectoryTest, CreatesOneFolder) {
    EXPECT_TRUE(CreateDirectory(Path("one")));
    EXPECT_EQ(fs::status(Path("one")).permissions(), fs::perms(0755));
    EXPECT_FALSE(CreateDirectory(Path("missing/two")));
    EXPECT_EQ(TreeOf(folder), (Tree{{"one/", ""}}));
}

TEST_F(CreateDirectoryTest, FailsWhereSomethingExists) {
    MakeTree(folder, {{"file", "1"}, {"folder/", ""}});
    EXPECT_FALSE(CreateDirectory(Path("file")));
    EXPECT_FALSE(CreateDirectory(Path("folder")));
}

using CreateDirectoriesTest = DiskTest;

TEST_F(CreateDirectoriesTest, CreatesEveryMissingFolder) {
    EXPECT_TRUE(CreateDirectories(Path("x//y/")));
    EXPECT_TRUE(CreateDirectories(Path("x/y/z")));
    EXPECT_EQ(TreeOf(folder), (Tree{{"x/", ""}, {"x/y/", ""}, {"x/y/z/", ""}}));
}

TEST_F(CreateDirectoriesTest, CountsEveryPathFromTheRoot) {
    EXPECT_TRUE(CreateDirectories(Path("x").substr(1)));
    EXPECT_EQ(TreeOf(folder), (Tree{{"x/", ""}}));
}

TEST_F(CreateDirectoriesTest, FailsBelowAFile) {
    MakeTree(folder, {{"file", "1"}});
    EXPECT_TRUE(CreateDirectories(Path("file")));
    EXPECT_FALSE(CreateDirectories(Path("file/x")));
}

TEST_F(CreateDirectoriesTest, NeitherCreatesNorLooksAtTheFirstComponent) {
    const AsOrdinaryUser ordinary; // who may not create anything at the first level
    for (const char* path : {"/none", "none", "/", ""}) {
        EXPECT_TRUE(CreateDirectories(path)) << path;
    }
    EXPECT_FALSE(CreateDirectories("/none/x"));
}

struct CpCase {
    const char* name;
    Tree before;
    int error; ///< 0 when the copy succeeds
    Tree after;

    friend void PrintTo(const CpCase& tested, std::ostream* out) { *out << tested.name; }
};

class CpTest : public DiskTest, public testing::WithParamInterface<CpCase> {};

TEST_P(CpTest, LeavesTheExpectedTree) {
    const auto& [name, before, error, after] = GetParam();
    MakeTree(folder, before);
    errno = 0;
    EXPECT_EQ(cp(Path("to").c_str(), Path("from").c_str()), error == 0 ? 0 : -1);
    EXPECT_EQ(errno, error);
    EXPECT_EQ(TreeOf(folder), after);
}

INSTANTIATE_TEST_SUITE_P(Cp, CpTest,
                         testing::Values(CpCase{"CopiesAFile", {{"from", "new"}}, 0, {{"from", "new"}, {"to", "new"}}},
                                         CpCase{"KeepsAnExistingFile",
                                                {{"from", "new"}, {"to", "old"}},
                                                EEXIST,
                                                {{"from", "new"}, {"to", "old"}}},
                                         CpCase{"ReportsAMissingSource", {}, ENOENT, {}},
                                         CpCase{"ReportsAFolder", {{"from/", ""}}, EISDIR, {{"from/", ""}, {"to", ""}}},
                                         CpCase{"CountsADanglingLinkAsExisting",
                                                {{"from", "new"}, {"to", "-> none"}},
                                                EEXIST,
                                                {{"from", "new"}, {"to", "-> none"}}}),
                         [](const auto& tested) { return tested.param.name; });

using CpDiskTest = DiskTest;

TEST_F(CpDiskTest, CopiesAllBytesAndNoPermissions) {
    for (const std::size_t size : {4095U, 4096U, 100001U}) {
        std::string bytes(size, 'x');
        bytes.back() = 'y';
        const std::string to = Path("to" + std::to_string(size));
        fs::permissions(MakeFile("from", bytes), fs::perms::owner_all);
        EXPECT_EQ(cp(to.c_str(), Path("from").c_str()), 0);
        EXPECT_TRUE(Content(to) == bytes) << size;
        EXPECT_EQ(fs::status(to).permissions(), fs::perms(0644));
    }
}

struct CopyFileCase {
    const char* name;
    Tree before;
    bool failIfExists;
    int error; ///< 0 when the copy succeeds
    Tree after;

    friend void PrintTo(const CopyFileCase& tested, std::ostream* out) { *out << tested.name; }
};

class CopyFileTest : public DiskTest, public testing::WithParamInterface<CopyFileCase> {};

TEST_P(CopyFileTest, ReportsTheReasonAndLeavesTheExpectedTree) {
    const auto& [name, before, failIfExists, error, after] = GetParam();
    MakeTree(folder, before);
    auto reported = static_cast<CopyFileError>(0); // is not written on success
    EXPECT_EQ(CopyFile(Path("from"), Path("to"), failIfExists, &reported), error == 0);
    EXPECT_EQ(reported, error);
    EXPECT_EQ(TreeOf(folder), after);
}

const Tree bothFiles = {{"from", "new"}, {"to", "old"}};
const Tree copied = {{"from", "new"}, {"to", "new"}};
const Tree destinationOnly = {{"to", "old"}};
const Tree ontoAFolder = {{"from", "new"}, {"to/", ""}};
const Tree danglingLink = {{"from", "new"}, {"to", "-> none"}};

INSTANTIATE_TEST_SUITE_P(
    CopyFile, CopyFileTest,
    testing::Values(CopyFileCase{"Copies", {{"from", "new"}}, true, 0, copied},
                    CopyFileCase{"ReplacesAFile", bothFiles, false, 0, copied},
                    CopyFileCase{"RefusesToReplace", bothFiles, true, DestinationExists, bothFiles},
                    CopyFileCase{"RefusesBeforeItLooksAtTheSource", destinationOnly, true, DestinationExists,
                                 destinationOnly},
                    CopyFileCase{"RemovesTheDestinationOfAMissingSource", destinationOnly, false, SourceNotFound, {}},
                    CopyFileCase{"FailsForAFolder", {{"from/", ""}}, true, CopyFailed, {{"from/", ""}, {"to", ""}}},
                    CopyFileCase{"FailsOntoAFolder", ontoAFolder, false, CopyFailed, ontoAFolder},
                    CopyFileCase{"FailsOntoADanglingLink", danglingLink, false, CopyFailed, danglingLink}),
    [](const auto& tested) { return tested.param.name; });

using CopyFolderTest = DiskTest;

TEST_F(CopyFolderTest, CopiesHiddenFilesAndEmptyFoldersAtEveryLevel) {
    MakeTree(Path("from"), {{"x", "1"}, {"s/.y", "2"}, {"Empty/", ""}});
    CopyFolder(Path("from"), Path("to"));
    EXPECT_EQ(TreeOf(Path("to")), TreeOf(Path("from")));
}

TEST_F(CopyFolderTest, ReplacesFilesAndKeepsOthers) {
    MakeTree(folder, {{"from/x", "new"}, {"to/x", "old"}, {"to/y", "kept"}});
    CopyFolder(Path("from"), Path("to"));
    EXPECT_EQ(TreeOf(Path("to")), (Tree{{"x", "new"}, {"y", "kept"}}));
}

TEST_F(CopyFolderTest, CopiesLinksAsFiles) {
    MakeTree(folder, {{"from/x", "1"}, {"from/file", "-> x"}, {"from/folder", "-> s"}, {"from/s/", ""}});
    CopyFolder(Path("from"), Path("to"));
    EXPECT_EQ(TreeOf(Path("to")), (Tree{{"x", "1"}, {"file", "1"}, {"folder", ""}, {"s/", ""}}));
}

TEST_F(CopyFolderTest, CreatesNoFolderAboveTheDestination) {
    MakeTree(folder, {{"from/x", "1"}});
    CopyFolder(Path("from"), Path("missing/to"));
    EXPECT_EQ(TreeOf(folder), (Tree{{"from/", ""}, {"from/x", "1"}}));
}

struct RenameCase {
    const char* name;
    Tree before;
    const char* from;
    const char* to;
    Tree after;

    friend void PrintTo(const RenameCase& tested, std::ostream* out) { *out << tested.name; }
};

class RenameTest : public DiskTest, public testing::WithParamInterface<RenameCase> {};

TEST_P(RenameTest, LeavesTheExpectedTree) {
    const auto& [name, before, from, to, after] = GetParam();
    MakeTree(folder, before);
    Rename(Path(from), Path(to));
    EXPECT_EQ(TreeOf(folder), after);
}

INSTANTIATE_TEST_SUITE_P(
    Rename, RenameTest,
    testing::Values(RenameCase{"ReplacesAFile", {{"a", "new"}, {"b", "old"}}, "a", "b", {{"b", "new"}}},
                    RenameCase{"MovesAFolder", {{"a/x", "1"}}, "a", "b", {{"b/", ""}, {"b/x", "1"}}},
                    RenameCase{"CopiesIntoAFolderThatIsNotEmpty",
                               {{"a/s/x", "1"}, {"b/y", "2"}},
                               "a",
                               "b",
                               {{"b/", ""}, {"b/s/", ""}, {"b/s/x", "1"}, {"b/y", "2"}}},
                    RenameCase{"LosesAFileThatCannotBeMoved", {{"a", "1"}}, "a", "missing/b", {}},
                    RenameCase{"LosesAFolderThatCannotBeMoved", {{"a/x", "1"}}, "a", "missing/b", {}},
                    RenameCase{"LosesAFileOntoAFolder", {{"a", "1"}, {"b/", ""}}, "a", "b", {{"b/", ""}}},
                    RenameCase{"CopiesBackWhenTheSourceIsMissing", {{"b", "1"}}, "a", "b", {{"a", "1"}, {"b", "1"}}}),
    [](const auto& tested) { return tested.param.name; });

using DeleteFileTest = DiskTest;

TEST_F(DeleteFileTest, RemovesAFileOrLinkAndReturnsTheResult) {
    MakeTree(folder, {{"a", "1"}, {"l", "-> a"}});
    EXPECT_EQ(DeleteFileA(Path("l").c_str()), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"a", "1"}}));
    EXPECT_EQ(DeleteFileA(Path("missing").c_str()), -1);
}

using WorkingDirectoryTest = DiskTest;

TEST_F(WorkingDirectoryTest, IsTheGivenFolder) {
    EXPECT_EQ(TolvexSetCurrentDirectory(folder.c_str()), 0);
    EXPECT_EQ(fs::current_path(), folder);
    EXPECT_EQ(TolvexSetCurrentDirectory("missing"), -1);
}

class RemoveDirContentTest : public DiskTest {
protected:
    /// Creates folders one in the other, from level 0 to `deepest`, each with a file, and returns the path of one.
    std::string Chain(int deepest, int level) const {
        std::string path = folder;
        std::string wanted;
        for (int current = 0; current <= deepest; ++current) {
            path += "/" + std::to_string(current);
            MakeFile(path + "/file");
            if (current == level) {
                wanted = path;
            }
        }
        return wanted;
    }
};

TEST_F(RemoveDirContentTest, RemovesTwentyLevelsBelowTheFolder) {
    Chain(20, 0);
    remove_dir_content(Path("0").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), Tree());
}

TEST_F(RemoveDirContentTest, KeepsFilesBelowLevelTwenty) {
    const std::string level20 = Chain(22, 20);
    remove_dir_content(Path("0").c_str(), 0);
    EXPECT_FALSE(fs::exists(level20 + "/file"));
    EXPECT_TRUE(fs::exists(level20 + "/21/file"));
    EXPECT_TRUE(fs::exists(level20 + "/21/22/file"));
}

TEST_F(RemoveDirContentTest, RemovesAnEmptyFolderAtLevel21) {
    MakeFolder(Chain(20, 20) + "/21");
    remove_dir_content(Path("0").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), Tree());
}

TEST_F(RemoveDirContentTest, CountsTheDepthOfTheCaller) {
    MakeTree(folder, {{"0/1/file", "1"}});
    remove_dir_content(Path("0").c_str(), 20);
    EXPECT_TRUE(fs::exists(Path("0/1/file")));
}

TEST_F(RemoveDirContentTest, FollowsALinkAndKeepsTheFolderItLeadsTo) {
    MakeTree(folder, {{"a/link", "-> ../target"}, {"target/s/x", "1"}});
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"target/", ""}}));
}

TEST_F(RemoveDirContentTest, RemovesALinkToAFileAlone) {
    MakeTree(folder, {{"a/link", "-> ../target"}, {"target", "1"}});
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"target", "1"}}));
}

TEST_F(RemoveDirContentTest, KeepsADanglingLink) {
    MakeTree(folder, {{"a/x", "1"}, {"a/link", "-> none"}});
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"a/", ""}, {"a/link", "-> none"}}));
}

TEST_F(RemoveDirContentTest, KeepsAFile) {
    MakeTree(folder, {{"a", "1"}});
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"a", "1"}}));
}

TEST_F(RemoveDirContentTest, CutsPathsAfter1039Bytes) {
    if (PATH_MAX <= 1050) {
        GTEST_SKIP() << "this system takes no such paths";
    }
    const std::string start = MakeFolder(PathOfLength(folder, 1040));
    const std::string beside = start.substr(0, 1039); // what the path of anything in that folder comes to
    MakeFile(start + "/file");
    MakeFile(beside);
    remove_dir_content(start.c_str(), 0);
    EXPECT_TRUE(fs::exists(start + "/file"));
    EXPECT_FALSE(fs::exists(beside));
}
