#include <FrameworkBase/Trash/Trash.h>

#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <dlfcn.h>
#include <future>
#include <pthread.h>

using namespace Tolvex::FileNames;

namespace {

class TrashTest : public DiskTest {
protected:
    std::string InTrash(const std::string& name) const { return trash + '/' + name; }

    /// What is in the trash beside the database.
    Tree Items() const {
        Tree items = TreeOf(trash);
        EXPECT_EQ(items.erase(".trash.db"), 1U) << "no database";
        return items;
    }

    /// Moves these files from `folder` into the trash.
    void Delete(const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            DeleteFileToRecycleBin(MakeFile(name, name), true);
        }
    }

    const std::string trash = applicationFolder + "/Trash";
};

using DeleteFileToRecycleBinTest = TrashTest;

TEST_F(DeleteFileToRecycleBinTest, MovesTheFileIntoTheTrashAndRecordsIt) {
    Delete({"song/take.wav"});
    EXPECT_EQ(TreeOf(folder), (Tree{{"song/", ""}}));
    EXPECT_EQ(Items(), (Tree{{"take.wav", "song/take.wav"}}));
    EXPECT_TRUE(CanPutBack(InTrash("take.wav")));
}

TEST_F(DeleteFileToRecycleBinTest, NumbersItemsOfOneName) {
    Delete({"a/take.wav", "b/take.wav", "c/take.wav", "a/x.tar.gz", "b/x.tar.gz", "a/README", "b/README", ".hidden"});
    EXPECT_EQ(Items(), (Tree{{"1", ".hidden"},
                             {"take.wav", "a/take.wav"},
                             {"take1.wav", "b/take.wav"},
                             {"take2.wav", "c/take.wav"},
                             {"x.tar.gz", "a/x.tar.gz"},
                             {"x.tar1.gz", "b/x.tar.gz"},
                             {"README", "a/README"},
                             {"README1", "b/README"}}));
    EXPECT_TRUE(PutBack(InTrash("take1.wav")));
    EXPECT_EQ(Content(Path("b/take.wav")), "b/take.wav");
}

TEST_F(DeleteFileToRecycleBinTest, RecordsAFileThatCouldNotBeMoved) {
    DeleteFileToRecycleBin(Path("missing"), true);
    EXPECT_TRUE(CanPutBack(InTrash("missing")));
}

using PutBackTest = TrashTest;

TEST_F(PutBackTest, MovesTheItemToItsOriginAndForgetsIt) {
    Delete({"take.wav"});
    EXPECT_TRUE(PutBack(InTrash("take.wav")));
    EXPECT_EQ(TreeOf(folder), (Tree{{"take.wav", "take.wav"}}));
    EXPECT_EQ(Items(), Tree());
    EXPECT_FALSE(CanPutBack(InTrash("take.wav")));
}

TEST_F(PutBackTest, LosesAndForgetsAnItemWhoseFolderIsGone) {
    Delete({"song/take.wav"});
    std::filesystem::remove(Path("song"));
    EXPECT_TRUE(PutBack(InTrash("take.wav")));
    EXPECT_EQ(TreeOf(folder), Tree());
    EXPECT_EQ(Items(), Tree());
    EXPECT_FALSE(CanPutBack(InTrash("take.wav")));
}

class CleanupTest : public TrashTest {
protected:
    /// Runs the cleanup to its end.
    static void CleanUp(bool all) {
        const auto done = std::make_shared<std::promise<void>>();
        CleanupTrashFolder(all, [done] { done->set_value(); });
        done->get_future().wait();
    }

    /// Records these files of the trash as added a number of days ago.
    void Record(const std::map<std::string, double>& days) const {
        Entries entries;
        for (const auto& [name, age] : days) {
            entries[InTrash(name)] = {Now() - static_cast<long long>(age * static_cast<double>(day)), "/o"};
        }
        MakeFile(InTrash(".trash.db"), DatabaseBytes(entries));
    }
};

TEST_F(CleanupTest, DeletesItemsOlderThanThirtyDays) {
    MakeTree(trash, {{"29", ""}, {"29.99", ""}, {"30", ""}, {"in the future", ""}});
    Record({{"29", 29}, {"29.99", 29.99}, {"30", 30}, {"in the future", -100}});
    CleanUp(false);
    EXPECT_EQ(Items(), (Tree{{"29", ""}, {"29.99", ""}, {"in the future", ""}}));
}

TEST_F(CleanupTest, KeepsItemsWithATimeBefore1601) {
    MakeTree(trash, {{"1601", ""}, {"before", ""}});
    MakeFile(InTrash(".trash.db"), DatabaseBytes({{InTrash("1601"), {0, ""}}, {InTrash("before"), {-1, ""}}}));
    CleanUp(false);
    EXPECT_EQ(Items(), (Tree{{"before", ""}}));
}

TEST_F(CleanupTest, RecordsStrayFilesSoThatTheNextOneDeletesThem) {
    const Tree items = {{"stray", ""}, {"folder/", ""}, {"folder/stray", ""}};
    MakeTree(trash, items);
    CleanUp(false);
    EXPECT_EQ(Items(), items);
    CleanUp(true);
    EXPECT_EQ(Items(), Tree());
}

TEST_F(CleanupTest, OfAllKeepsFilesThatAreNotRecorded) {
    MakeTree(trash, {{"stray", ""}, {"fresh", ""}, {"folder/stray", ""}});
    Record({{"fresh", 0}});
    CleanUp(true);
    EXPECT_EQ(Items(), (Tree{{"stray", ""}}));
}

TEST_F(CleanupTest, NeverDeletesAFileOfTheDatabasesName) {
    MakeTree(trash, {{"folder/.trash.db", ""}});
    Record({{".trash.db", 31}, {"folder/.trash.db", 31}});
    CleanUp(false);
    EXPECT_EQ(Items(), (Tree{{"folder/", ""}, {"folder/.trash.db", ""}}));
}

TEST_F(CleanupTest, DeletesTheWholeFolderWithADueFile) {
    MakeTree(trash, {{"folder/sub/due", ""}, {"folder/fresh", ""}, {"other/fresh", ""}, {"empty/empty/", ""}});
    Record({{"folder/sub/due", 31}, {"folder/fresh", 0}, {"other/fresh", 0}});
    CleanUp(false);
    EXPECT_EQ(Items(), (Tree{{"other/", ""}, {"other/fresh", ""}}));
}

TEST(HasFilesTest, CountsAFolderBelowLevelFiftyAsFull) {
    EXPECT_FALSE(HasFiles("/none", 50));
    EXPECT_TRUE(HasFiles("/none", 51));
}

using SmallStackTest = TrashTest;

/// Each step of a host's thread on the trash, with folders at every depth that is emptied.
void* WorkOnTheTrash(void* file) {
    const std::string trash = GetTrashFolderPath();
    DeleteFileToRecycleBin(static_cast<const char*>(file), true);
    PutBack(trash + "/take.wav");
    TouchFolder(trash);
    DeleteFolderWithContents((trash + "/shallow").c_str(), false, false);
    CheckDeleteEmptyFolders(trash);
    CleanupTrashFolder(trash, true);
    return nullptr;
}

TEST_F(SmallStackTest, Of32KiBIsEnough) {
    if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr) {
        GTEST_SKIP() << "sanitizers need more of the stack";
    }
    std::size_t size = std::size_t{64} * 1024;
#ifdef __OPTIMIZE__
    size /= 2;
#endif
    std::string deep = trash;
    for (int level = 0; level <= 20; ++level) {
        deep += "/level";
    }
    MakeFile(deep + "/file");
    MakeFile(InTrash("shallow/file"));
    std::string file = MakeFile("take.wav", "a take");
    pthread_attr_t attributes{};
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, WorkOnTheTrash, file.data()), 0);
    pthread_join(thread, nullptr);
    EXPECT_EQ(Content(Path("take.wav")), "a take");
    EXPECT_EQ(Items(), Tree());
}

} // namespace
