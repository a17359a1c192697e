#include <FrameworkBase/FileNames/FolderListing.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/UniqueNames.h>

using namespace Tolvex::FileNames;

using FolderListing = DiskTest;

TEST_F(FolderListing, LinksAndHiddenFilesAreMissedOrTakenForFolders) {
    const auto list = [](const std::string& path) {
        std::vector<std::string> files = GetFolderFiles(path);
        std::vector<std::string> folders = GetFolderSubfolders(path);
        std::sort(files.begin(), files.end());
        std::sort(folders.begin(), folders.end());
        return Joined(files) + " / " + Joined(folders);
    };
    EXPECT_TRUE(
        Does(list, "a/x, a/.h, a/s/, a/.../, a/l -> s, a/d -> none; a => .h, d, l, x / ..., s; a/, a/.../, a/.h, a/d, "
                   "a/l, a/s/, a/x | a/; a/ =>  / ; a/ | a; a =>  / ; a | ; a =>  / ; "));
}

TEST_F(FolderListing, EnumeratorOverrunsItsBufferOrMissesAName) {
    Make("a, .hidden, sub/, ...");
    for (const std::size_t size : {0U, 1U, 3U, 4U, 7U, 20U}) {
        std::string path = Path(size == 0 ? "missing" : "");
        std::vector<std::string> names = GetFolderFiles(path);
        void* listing = nullptr;
        EXPECT_EQ(GetFolderFiles(path.data(), nullptr, 0, &listing), names.size());
        for (; !names.empty(); names.pop_back()) {
            std::string buffer(20, '#');
            EXPECT_EQ(GetFolderFiles(nullptr, buffer.data(), static_cast<int>(size), &listing), names.size() - 1);
            const std::string copied = (names.back() + '\0').substr(0, size);
            EXPECT_EQ(buffer, copied + std::string(20 - copied.size(), '#')) << "ended only where the end fits";
        }
        EXPECT_EQ(GetFolderFiles(nullptr, path.data(), 1, &listing), -1);
    }
}

TEST_F(FolderListing, FolderWithHiddenFilesCountsAsEmpty) {
    EXPECT_TRUE(Does(IsFolderEmpty, "a/; a => true; a/ | ; a => true;  | a; a => true; a | a -> none; a => true; a | "
                                    "a/x; a => false; a/, a/x | a/.h; a => false; a/, a/.h"));
    expectedOpenFiles = 2; // one for each folder that is not empty
}

TEST_F(FolderListing, QueriesAnswerForTheLinkItself) {
    const auto kind = [](const std::string& name) {
        bool isFolder = false;
        bool isFolderToo = true; // both are untouched when nothing is there
        EXPECT_EQ(CheckPathIsDirectory(name, isFolder), CheckPathIsDirectory(name, isFolderToo));
        EXPECT_EQ(CheckFileExistsEvenIfNotAccessible(name), isFolder == isFolderToo);
        EXPECT_FALSE(IsSymlink(name) || IsSpecialFile(name, isFolder) || FormatDirectory(name) != name);
        return isFolder != isFolderToo ? "nothing" : isFolder ? "folder" : "file";
    };
    EXPECT_TRUE(Does(kind,
                     "a/; a => folder; a/ | a; a => file; a | ; a => nothing;  | b/, a -> b; a => folder; a, b/ | "
                     "b, a -> b; a => file; a=b, b | a -> none; a => nothing; a"));
    std::filesystem::permissions(MakeFile("secret"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_STREQ(kind("secret"), "file");
}

TEST_F(FolderListing, NumberOfANewNameIsSkippedOrTakenTwice) {
    const auto file = [this](const std::string& stem, const std::string& ext) {
        const std::string found = ComposeNewFilenameAndCheckExists(stem, ext);
        EXPECT_EQ(ComposeNewFilenameAndCheckExists(folder, stem, ext), Path(found));
        return found;
    };
    const auto subfolder = [this](const std::string& stem, const std::string& suffix) {
        const std::string found = ComposeNewFolderAndCheckExists(stem, suffix);
        EXPECT_EQ(ComposeNewFolderAndCheckExists(folder, stem, suffix), Path(found));
        return found;
    };
    EXPECT_TRUE(Does(file, "; a, .x => a.x;  | a.x; a, .x => a1.x; a.x | a, a1, a3; a,  => a2; a, a1, a3 | "
                           "a/; a,  => a1; a/ | a -> none; a,  => a; a | a; a, .x => a.x; a"));
    EXPECT_TRUE(Does(subfolder, "a.x/; a, .x => a 1.x; a.x/ | a/, a 1/, a 3/; a,  => a 2; a 1/, a 3/, a/ | "
                                "a; a,  => a 1; a | a -> none; a,  => a; a"));
    std::filesystem::permissions(MakeFile("secret"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary; // who may not read it
    EXPECT_EQ(file("secret", ""), "secret");
    EXPECT_EQ(subfolder("secret", ""), "secret 1");
}
