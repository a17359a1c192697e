#include <FrameworkBase/Trash/Trash.h>

#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <dlfcn.h>
#include <future>
#include <gmock/gmock.h>
#include <pthread.h>

using namespace Tolvex::FileNames;

namespace {

class TrashTest : public DiskTest {
protected:
    std::string InTrash(const std::string& name) const { return trash + '/' + name; }

    Entries Database() const { return EntriesIn(Content(InTrash(".trash.db"))); }

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

TEST_F(DeleteFileToRecycleBinTest, MovesTheFileAndRecordsOriginAndTime) {
    const long long before = Now();
    Delete({"song/take.wav"});
    EXPECT_EQ(TreeOf(folder), (Tree{{"song/", ""}}));
    EXPECT_EQ(Items(), (Tree{{"take.wav", "song/take.wav"}}));
    const auto [added, origin] = Database().at(InTrash("take.wav"));
    EXPECT_EQ(origin, Path("song/take.wav"));
    EXPECT_GE(added, before);
    EXPECT_LE(added, Now());
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
    EXPECT_EQ(Database().at(InTrash("take1.wav")).second, Path("b/take.wav"));
}

TEST_F(DeleteFileToRecycleBinTest, RecordsAFileThatIsNotThere) {
    DeleteFileToRecycleBin(Path("missing"), true);
    EXPECT_EQ(Database().at(InTrash("missing")).second, Path("missing"));
}

using DeleteFolderTest = TrashTest;

TEST_F(DeleteFolderTest, MovesTheWholeFolderIntoTheTrash) {
    MakeTree(folder, {{"Audio.x/sub/take.wav", "1"}});
    DeleteFolderWithContents(Path("Audio.x").c_str(), true, false);
    EXPECT_EQ(TreeOf(folder), Tree());
    EXPECT_EQ(Items(), (Tree{{"Audio.x/", ""}, {"Audio.x/sub/", ""}, {"Audio.x/sub/take.wav", "1"}}));
    EXPECT_EQ(Database().at(InTrash("Audio.x")).second, Path("Audio.x"));
}

using PutBackTest = TrashTest;

TEST_F(PutBackTest, MovesTheItemToItsOriginAndForgetsIt) {
    Delete({"take.wav"});
    EXPECT_TRUE(CanPutBack(InTrash("take.wav")));
    EXPECT_TRUE(PutBack(InTrash("take.wav")));
    EXPECT_EQ(TreeOf(folder), (Tree{{"take.wav", "take.wav"}}));
    EXPECT_EQ(Items(), Tree());
    EXPECT_EQ(Database(), Entries());
    EXPECT_FALSE(CanPutBack(InTrash("take.wav")));
}

TEST_F(PutBackTest, LosesAnItemWhoseFolderIsGone) {
    Delete({"song/take.wav"});
    std::filesystem::remove(Path("song"));
    EXPECT_TRUE(PutBack(InTrash("take.wav")));
    EXPECT_EQ(TreeOf(folder), Tree());
    EXPECT_EQ(Items(), Tree());
    EXPECT_EQ(Database(), Entries());
}

TEST_F(PutBackTest, FailsWithoutARecordedOriginAndRewritesTheDatabase) {
    const Entries withoutOrigin = {{MakeFile(InTrash("a")), {1, ""}}};
    for (const std::string& path : {InTrash("a"), MakeFile(InTrash("b"))}) {
        for (const auto function : {CanPutBack, PutBack}) {
            MakeFile(InTrash(".trash.db"), DatabaseBytes(withoutOrigin, 1));
            EXPECT_FALSE(function(path)) << path;
            EXPECT_EQ(Content(InTrash(".trash.db")), DatabaseBytes(withoutOrigin));
        }
    }
    EXPECT_EQ(Items(), (Tree{{"a", ""}, {"b", ""}}));
}

class CleanupTest : public TrashTest {
protected:
    /// Runs the cleanup of a trash with this database to its end.
    void CleanUp(bool all, const Entries& database) {
        MakeFile(InTrash(".trash.db"), DatabaseBytes(database));
        const auto saved = std::make_shared<std::promise<Entries>>();
        CleanupTrashFolder(all, [saved, this] { saved->set_value(Database()); });
        const Entries atCallback = saved->get_future().get();
        EXPECT_EQ(atCallback, Database()) << "it is saved before the callback";
    }

    const std::pair<long long, std::string> due = {Now() - 31 * day, "/o"};
    const std::pair<long long, std::string> fresh = {Now(), "/o"};
};

TEST_F(CleanupTest, DeletesItemsOlderThanThirtyDays) {
    const std::pair<const char*, long long> times[] = {
        {"29 days", Now() - 29 * day},
        {"almost 30 days", Now() - 30 * day + day / 1440},
        {"30 days", Now() - 30 * day},
        {"31 days", Now() - 31 * day},
        {"in the future", Now() + 100 * day},
        {"1601", 0},
        {"before 1601", -1},
    };
    Entries database;
    for (const auto& [name, added] : times) {
        database[MakeFile(InTrash(name))].first = added;
    }
    CleanUp(false, database);
    const Tree kept = {{"29 days", ""}, {"almost 30 days", ""}, {"in the future", ""}, {"before 1601", ""}};
    EXPECT_EQ(Items(), kept);
    EXPECT_EQ(Database().size(), kept.size());
}

TEST_F(CleanupTest, RecordsStrayFilesButTheDatabase) {
    const long long before = Now();
    const Tree items = {
        {"stray", ""}, {"kept/", ""}, {"kept/sub/", ""}, {"kept/sub/stray", ""}, {"kept/.trash.db", ""}};
    MakeTree(trash, items);
    CleanUp(false, {});
    EXPECT_EQ(Items(), items);
    EXPECT_EQ(Database().size(), 2U);
    for (const char* name : {"stray", "kept/sub/stray"}) {
        const auto [added, origin] = Database().at(InTrash(name));
        EXPECT_GE(added, before) << name;
        EXPECT_EQ(origin, "") << name;
    }
}

TEST_F(CleanupTest, OfAllDeletesEveryRecordedFileAndEveryFolder) {
    MakeTree(trash, {{"stray", ""}, {"fresh", ""}, {"folder/sub/stray", ""}});
    CleanUp(true, {{InTrash("fresh"), fresh}});
    EXPECT_EQ(Items(), (Tree{{"stray", ""}}));
    EXPECT_EQ(Database().count(InTrash("stray")), 1U);
}

TEST_F(CleanupTest, DeletesTheWholeFolderWithADueFile) {
    MakeTree(trash, {{"folder/sub/due", ""}, {"folder/fresh", ""}, {"other/fresh", ""}, {"empty/empty/", ""}});
    CleanUp(false,
            {{InTrash("folder/sub/due"), due}, {InTrash("folder/fresh"), fresh}, {InTrash("other/fresh"), fresh}});
    EXPECT_EQ(Items(), (Tree{{"other/", ""}, {"other/fresh", ""}}));
    EXPECT_EQ(Database().count(InTrash("folder/sub/due")), 0U);
    EXPECT_EQ(Database().count(InTrash("folder/fresh")), 1U) << "it is not forgotten with its folder";
}

using EmptyFoldersTest = DiskTest;

TEST_F(EmptyFoldersTest, AreDeletedUnlessAFileOrLinkIsInside) {
    MakeTree(folder, {{"a/empty/d/d/", ""}, {"a/file", ""}, {"a/s/file", ""}, {"a/l/link", "-> none"}});
    CheckDeleteEmptyFolders(Path("a"));
    EXPECT_EQ(TreeOf(Path("a")), (Tree{{"file", ""}, {"l/", ""}, {"l/link", "-> none"}, {"s/", ""}, {"s/file", ""}}));
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
