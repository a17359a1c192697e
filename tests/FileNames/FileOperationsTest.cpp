#include <FrameworkBase/FileNames/FileOperations.h>

#include "tests/support/DiskTest.h"

#include <cerrno>

using namespace Tolvex::FileNames;

namespace fs = std::filesystem;

using CreateDirectoriesTest = DiskTest;

TEST_F(CreateDirectoriesTest, CreatesEveryMissingFolder) {
    EXPECT_TRUE(CreateDirectories(Path("x//y/")));
    EXPECT_TRUE(CreateDirectories(Path("x/y/z")));
    EXPECT_EQ(TreeOf(folder), (Tree{{"x/", ""}, {"x/y/", ""}, {"x/y/z/", ""}}));
}

TEST_F(CreateDirectoriesTest, NeitherCreatesNorLooksAtTheFirstComponent) {
    const AsOrdinaryUser ordinary; // who may not create anything at the first level
    for (const char* path : {"/none", "none", "/", ""}) {
        EXPECT_TRUE(CreateDirectories(path)) << path;
    }
    EXPECT_FALSE(CreateDirectories("/none/x"));
}

using CpTest = DiskTest;

TEST_F(CpTest, CopiesAllBytesAndNoPermissions) {
    fs::permissions(MakeFile("from", std::string(100001, 'x')), fs::perms::owner_all);
    EXPECT_EQ(cp(Path("to").c_str(), Path("from").c_str()), 0);
    EXPECT_EQ(Content(Path("to")), std::string(100001, 'x'));
    EXPECT_EQ(fs::status(Path("to")).permissions(), fs::perms(0644));
}

TEST_F(CpTest, ReportsInErrnoWhyItFailed) {
    MakeTree(folder, {{"file", "kept"}, {"folder/", ""}});
    const auto errorOf = [this](const char* destination, const char* source) {
        EXPECT_EQ(cp(Path(destination).c_str(), Path(source).c_str()), -1);
        return errno;
    };
    EXPECT_EQ(errorOf("a", "missing"), ENOENT);
    EXPECT_EQ(errorOf("b", "folder"), EISDIR);
    EXPECT_EQ(errorOf("file", "file"), EEXIST);
    EXPECT_EQ(Content(Path("file")), "kept");
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
const Tree folderOnly = {{"from/", ""}};

INSTANTIATE_TEST_SUITE_P(
    CopyFile, CopyFileTest,
    testing::Values(CopyFileCase{"Copies", {{"from", "new"}}, true, 0, copied},
                    CopyFileCase{"ReplacesAFile", bothFiles, false, 0, copied},
                    CopyFileCase{"RefusesToReplace", bothFiles, true, DestinationExists, bothFiles},
                    CopyFileCase{"RemovesTheDestinationOfAMissingSource", {{"to", "old"}}, false, SourceNotFound, {}},
                    CopyFileCase{"FailsForAFolder", folderOnly, true, CopyFailed, {{"from/", ""}, {"to", ""}}}),
    [](const auto& tested) { return tested.param.name; });

using CopyFolderTest = DiskTest;

TEST_F(CopyFolderTest, CopiesHiddenFilesAndEmptyFoldersAtEveryLevel) {
    MakeTree(Path("from"), {{"x", "1"}, {"s/.y", "2"}, {"Empty/", ""}});
    CopyFolder(Path("from"), Path("to"));
    EXPECT_EQ(TreeOf(Path("to")), TreeOf(Path("from")));
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
                    RenameCase{"LosesAFileOntoAFolder", {{"a", "1"}, {"b/", ""}}, "a", "b", {{"b/", ""}}},
                    RenameCase{"CopiesBackWhenTheSourceIsMissing", {{"b", "1"}}, "a", "b", {{"a", "1"}, {"b", "1"}}}),
    [](const auto& tested) { return tested.param.name; });

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

TEST_F(RemoveDirContentTest, FollowsALinkAndKeepsTheFolderItLeadsTo) {
    MakeTree(folder, {{"a/link", "-> ../target"}, {"target/s/x", "1"}});
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"target/", ""}}));
}
