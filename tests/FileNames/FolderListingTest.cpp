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

TEST_F(FolderListingTest, FolderWithAHiddenFileIsNotEmpty) {
    MakeTree(folder, {{"empty/", ""}, {"full/.h", ""}});
    EXPECT_TRUE(IsFolderEmpty(Path("empty")));
    EXPECT_TRUE(IsFolderEmpty(Path("missing")));
    EXPECT_FALSE(IsFolderEmpty(Path("full")));
    expectedOpenFiles = 1; // of the folder that is not empty
}

TEST_F(FolderListingTest, AvailableSpaceOfAMissingPathIsTheLargestNumber) {
    EXPECT_EQ(GetAvailableSpace(Path("missing")), ~0ULL);
    EXPECT_LT(GetAvailableSpace(folder), ~0ULL);
}

using PathQueryTest = DiskTest;

TEST_F(PathQueryTest, TellsFoldersFromFilesThroughLinks) {
    MakeTree(folder, {{"d/", ""}, {"f", ""}, {"to folder", "-> d"}, {"to file", "-> f"}});
    for (const char* name : {"d", "to folder", "f", "to file"}) {
        bool isFolder = false;
        EXPECT_TRUE(CheckFileExistsEvenIfNotAccessible(Path(name))) << name;
        EXPECT_TRUE(CheckPathIsDirectory(Path(name), isFolder)) << name;
        EXPECT_EQ(isFolder, std::filesystem::is_directory(Path(name))) << name;
    }
}

TEST_F(PathQueryTest, FindsNothingAtAMissingPathOrDanglingLink) {
    MakeTree(folder, {{"dangling", "-> none"}});
    for (const char* name : {"missing", "dangling"}) {
        bool isFolder = true;
        EXPECT_FALSE(CheckPathIsDirectory(Path(name), isFolder)) << name;
        EXPECT_TRUE(isFolder) << name << " changed it";
        EXPECT_FALSE(CheckFileExistsEvenIfNotAccessible(Path(name))) << name;
    }
}

using NewNameTest = DiskTest;

TEST_F(NewNameTest, OfAFileHasTheLowestFreeNumberBeforeTheExtension) {
    EXPECT_EQ(ComposeNewFilenameAndCheckExists(Path("a"), ".x"), Path("a.x"));
    MakeTree(folder, {{"a.x", ""}, {"a2.x/", ""}});
    EXPECT_EQ(ComposeNewFilenameAndCheckExists(Path("a"), ".x"), Path("a1.x"));
    MakeFile("a1.x");
    EXPECT_EQ(ComposeNewFilenameAndCheckExists(folder, "a", ".x"), Path("a3.x"));
}

TEST_F(NewNameTest, OfAFolderHasTheLowestFreeNumberBeforeTheSuffix) {
    EXPECT_EQ(ComposeNewFolderAndCheckExists(Path("a"), ".x"), Path("a.x"));
    MakeTree(folder, {{"a.x/", ""}, {"a 2.x", ""}});
    EXPECT_EQ(ComposeNewFolderAndCheckExists(Path("a"), ".x"), Path("a 1.x"));
    MakeFolder("a 1.x");
    EXPECT_EQ(ComposeNewFolderAndCheckExists(folder, "a", ".x"), Path("a 3.x"));
}
