#include <FrameworkBase/FileNames/FolderListing.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/UniqueNames.h>

#include <gmock/gmock.h>

using namespace Tolvex::FileNames;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using FolderListingTest = DiskTest;

TEST_F(FolderListingTest, CountsHiddenFilesAndLinksAsFiles) {
    MakeTree(folder, {{"x", ""}, {".h", ""}, {"s/y", ""}, {".../", ""}, {"l", "-> s"}, {"d", "-> none"}});
    EXPECT_THAT(GetFolderFiles(folder), UnorderedElementsAre(".h", "d", "l", "x"));
    EXPECT_THAT(GetFolderSubfolders(folder), UnorderedElementsAre("...", "s"));
}

TEST_F(FolderListingTest, IsEmptyForAFileAndForNothing) {
    MakeTree(folder, {{"file", ""}});
    for (const std::string& path : {Path("file"), Path("missing")}) {
        EXPECT_THAT(GetFolderFiles(path), IsEmpty()) << path;
        EXPECT_THAT(GetFolderSubfolders(path), IsEmpty()) << path;
    }
}

TEST_F(FolderListingTest, EnumeratorReturnsTheFilesFromTheLast) {
    MakeTree(folder, {{"a", ""}, {".hidden", ""}, {"sub/", ""}});
    std::string path = folder;
    void* listing = nullptr;
    EXPECT_EQ(GetFolderFiles(path.data(), nullptr, 0, &listing), 2);
    char first[20] = {};
    char second[20] = {};
    EXPECT_EQ(GetFolderFiles(nullptr, first, 20, &listing), 1);
    EXPECT_EQ(GetFolderFiles(nullptr, second, 20, &listing), 0);
    EXPECT_EQ(GetFolderFiles(nullptr, first, 20, &listing), -1);
    EXPECT_THAT((std::vector<std::string>{first, second}), UnorderedElementsAre("a", ".hidden"));
}

TEST_F(FolderListingTest, EnumeratorCutsANameToTheBuffer) {
    MakeTree(folder, {{"name", ""}});
    for (const std::size_t size : {0U, 1U, 3U, 4U, 5U}) {
        std::string path = folder;
        void* listing = nullptr;
        EXPECT_EQ(GetFolderFiles(path.data(), nullptr, 0, &listing), 1);
        std::string buffer(6, '#');
        EXPECT_EQ(GetFolderFiles(nullptr, buffer.data(), static_cast<int>(size), &listing), 0);
        const std::string copied = std::string("name", 5).substr(0, size); // ends in a zero byte where that fits
        EXPECT_EQ(buffer, copied + std::string(6 - size, '#'));
        EXPECT_EQ(GetFolderFiles(nullptr, buffer.data(), 1, &listing), -1);
    }
}

TEST_F(FolderListingTest, FolderWithAHiddenFileIsNotEmpty) {
    MakeTree(folder, {{"empty/", ""}, {"file", ""}, {"dangling", "-> none"}, {"full/.h", ""}});
    EXPECT_TRUE(IsFolderEmpty(Path("empty")));
    EXPECT_TRUE(IsFolderEmpty(Path("file")));
    EXPECT_TRUE(IsFolderEmpty(Path("dangling")));
    EXPECT_TRUE(IsFolderEmpty(Path("missing")));
    EXPECT_FALSE(IsFolderEmpty(Path("full")));
    expectedOpenFiles = 1; // of the folder that is not empty
}

using PathQueryTest = DiskTest;

TEST_F(PathQueryTest, FindsFoldersAndFilesThroughLinks) {
    MakeTree(folder, {{"d/", ""}, {"f", ""}, {"to folder", "-> d"}, {"to file", "-> f"}});
    for (const char* name : {"d", "to folder"}) {
        bool isFolder = false;
        EXPECT_TRUE(CheckFileExistsEvenIfNotAccessible(Path(name))) << name;
        EXPECT_TRUE(CheckPathIsDirectory(Path(name), isFolder)) << name;
        EXPECT_TRUE(isFolder) << name;
    }
    for (const char* name : {"f", "to file"}) {
        bool isFolder = true;
        EXPECT_TRUE(CheckFileExistsEvenIfNotAccessible(Path(name))) << name;
        EXPECT_TRUE(CheckPathIsDirectory(Path(name), isFolder)) << name;
        EXPECT_FALSE(isFolder) << name;
    }
}

TEST_F(PathQueryTest, FindsNothingAtAMissingPathOrDanglingLink) {
    MakeTree(folder, {{"dangling", "-> none"}});
    for (const char* name : {"missing", "dangling"}) {
        bool isFolder = false;
        bool isFile = true; // both stay as they were
        EXPECT_FALSE(CheckPathIsDirectory(Path(name), isFolder)) << name;
        EXPECT_FALSE(CheckPathIsDirectory(Path(name), isFile)) << name;
        EXPECT_FALSE(isFolder) << name;
        EXPECT_TRUE(isFile) << name;
        EXPECT_FALSE(CheckFileExistsEvenIfNotAccessible(Path(name))) << name;
    }
}

TEST_F(PathQueryTest, FindsAFileThatMayNotBeRead) {
    std::filesystem::permissions(MakeFile("secret"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_TRUE(CheckFileExistsEvenIfNotAccessible(Path("secret")));
}

struct NewNameCase {
    const char* name;
    Tree before;
    const char* stem;
    const char* extension;
    const char* found;

    friend void PrintTo(const NewNameCase& tested, std::ostream* out) { *out << tested.name; }
};

class NewFileNameTest : public DiskTest, public testing::WithParamInterface<NewNameCase> {};

TEST_P(NewFileNameTest, IsTheFirstFreeOne) {
    const auto& [name, before, stem, extension, found] = GetParam();
    MakeTree(folder, before);
    EXPECT_EQ(ComposeNewFilenameAndCheckExists(Path(stem), extension), Path(found));
    EXPECT_EQ(ComposeNewFilenameAndCheckExists(folder, stem, extension), Path(found));
}

INSTANTIATE_TEST_SUITE_P(
    NewFileName, NewFileNameTest,
    testing::Values(NewNameCase{"HasNoNumberAtFirst", {}, "a", ".x", "a.x"},
                    NewNameCase{"HasTheNumberBeforeTheExtension", {{"a.x", ""}}, "a", ".x", "a1.x"},
                    NewNameCase{"HasTheLowestFreeNumber", {{"a", ""}, {"a1", ""}, {"a3", ""}}, "a", "", "a2"},
                    NewNameCase{"IsNotThatOfAFolder", {{"a/", ""}}, "a", "", "a1"},
                    NewNameCase{"MayBeThatOfADanglingLink", {{"a", "-> none"}}, "a", "", "a"}),
    [](const auto& tested) { return tested.param.name; });

class NewFolderNameTest : public DiskTest, public testing::WithParamInterface<NewNameCase> {};

TEST_P(NewFolderNameTest, IsTheFirstFreeOne) {
    const auto& [name, before, stem, suffix, found] = GetParam();
    MakeTree(folder, before);
    EXPECT_EQ(ComposeNewFolderAndCheckExists(Path(stem), suffix), Path(found));
    EXPECT_EQ(ComposeNewFolderAndCheckExists(folder, stem, suffix), Path(found));
}

INSTANTIATE_TEST_SUITE_P(
    NewFolderName, NewFolderNameTest,
    testing::Values(NewNameCase{"HasTheNumberBeforeTheSuffix", {{"a.x/", ""}}, "a", ".x", "a 1.x"},
                    NewNameCase{"HasTheLowestFreeNumber", {{"a/", ""}, {"a 1/", ""}, {"a 3/", ""}}, "a", "", "a 2"},
                    NewNameCase{"IsNotThatOfAFile", {{"a", ""}}, "a", "", "a 1"},
                    NewNameCase{"MayBeThatOfADanglingLink", {{"a", "-> none"}}, "a", "", "a"}),
    [](const auto& tested) { return tested.param.name; });

using UnreadableNameTest = DiskTest;

TEST_F(UnreadableNameTest, IsFreeForAFileAndTakenForAFolder) {
    std::filesystem::permissions(MakeFile("secret"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary; // who may not read it
    EXPECT_EQ(ComposeNewFilenameAndCheckExists(Path("secret"), ""), Path("secret"));
    EXPECT_EQ(ComposeNewFolderAndCheckExists(Path("secret"), ""), Path("secret 1"));
}
