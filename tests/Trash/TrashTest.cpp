#include <FrameworkBase/Trash/Trash.h>

#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <dlfcn.h>
#include <future>
#include <pthread.h>

using namespace Tolvex::FileNames;

struct TrashTest : DiskTest {
    std::string InTrash(const std::string& name) const { return trash + '/' + name; }

    Entries Database() const { return EntriesIn(Content(InTrash(".trash.db"))); }

    /// The recorded items and where they came from. None may have been recorded before `since`.
    std::string Origins(long long since) const {
        std::vector<std::string> origins;
        for (const auto& [key, value] : Database()) {
            EXPECT_TRUE(since <= value.first && value.first <= Now()) << key;
            const std::string origin = value.second.substr(value.second.empty() ? 0 : folder.size() + 1);
            origins.push_back(key.substr(trash.size() + 1) + ": " + origin);
        }
        return Joined(origins);
    }

    /// What a cleanup leaves in the trash, which has this database.
    std::string LeftByCleanup(bool all, const Entries& database) {
        MakeFile(InTrash(".trash.db"), DatabaseBytes(database));
        const auto saved = std::make_shared<std::promise<Entries>>();
        CleanupTrashFolder(all, [saved, this] { saved->set_value(Database()); });
        const Entries atCallback = saved->get_future().get();
        EXPECT_EQ(atCallback, Database()) << "saved before the callback";
        return List(trash);
    }

    const std::string trash = applicationFolder + "/Trash";
};

TEST_F(TrashTest, ItemTakesTheNameOfAnother) {
    const long long before = Now();
    EXPECT_EQ(GetTrashFolderPath(), trash);
    Make("p/q/file");
    DeleteFolderWithContents(Path("p").c_str(), true, true); // for good
    EXPECT_FALSE(std::filesystem::exists(trash) || std::filesystem::exists(Path("p")));
    const std::string names = "a/song.wav, b/song.wav, c/song.wav, a/README, b/README, a/.hidden, b/.hidden, a.b/c, "
                              "x.tar.gz, b/x.tar.gz, b/dot.";
    Make("d/folder.x/file, " + names);
    DeleteFolderWithContents(Path("d/folder.x").c_str(), true, false);
    for (const std::string& name : Cells(names + ", missing")) { // that is recorded though nothing is moved
        DeleteFileToRecycleBin(Path(name), true);
    }
    EXPECT_EQ(Origins(before),
              "1: a/.hidden, 2: b/.hidden, README: a/README, README1: b/README, c: a.b/c, dot.: b/dot., "
              "folder.x: d/folder.x, missing: missing, song.wav: a/song.wav, song1.wav: b/song.wav, "
              "song2.wav: c/song.wav, x.tar.gz: x.tar.gz, x.tar1.gz: b/x.tar.gz");
    MakeFile(InTrash(".trash.db"), ".trash.db");
    EXPECT_EQ(
        List(trash, true),
        ".trash.db, 1=a/.hidden, 2=b/.hidden, README1=b/README, README=a/README, c=a.b/c, dot.=b/dot., folder.x/, "
        "folder.x/file=d/folder.x/file, song.wav=a/song.wav, song1.wav=b/song.wav, song2.wav=c/song.wav, x.tar.gz, "
        "x.tar1.gz=b/x.tar.gz");
    EXPECT_EQ(List(), "a.b/, a/, b/, c/, d/");
}

TEST_F(TrashTest, ItemComesBackTwiceOrElsewhere) {
    const std::vector<std::string> names = {"gone", "folder/homeless", "replaced", "vanished"};
    for (const std::string& name : names) {
        DeleteFileToRecycleBin(MakeFile(name, name), true);
    }
    MakeFile("replaced", "new");
    std::filesystem::remove(InTrash("vanished"));
    std::filesystem::remove(Path("folder"));
    for (const char* name : {"gone", "homeless", "replaced", "vanished"}) {
        for (const bool isThere : {true, false}) {
            EXPECT_EQ(CanPutBack(InTrash(name)), isThere) << name;
            EXPECT_EQ(PutBack(InTrash(name)), isThere) << name;
        }
    }
    EXPECT_EQ(List(folder, true), "gone, replaced") << "no folder is made again";
    EXPECT_EQ(List(applicationFolder), "Trash/, Trash/.trash.db") << "what could not be moved is lost";
    const Entries withoutOrigin = {{MakeFile(InTrash("a")), {1, ""}}};
    for (const auto function : {CanPutBack, PutBack}) {
        for (const std::string& path : {InTrash("a"), MakeFile(InTrash("b"))}) {
            MakeFile(InTrash(".trash.db"), DatabaseBytes(withoutOrigin, 1));
            EXPECT_FALSE(function(path)) << path;
            EXPECT_EQ(Content(InTrash(".trash.db")), DatabaseBytes(withoutOrigin)) << "rewritten all the same";
        }
    }
    EXPECT_EQ(List(trash), ".trash.db, a, b");
}

TEST_F(TrashTest, FilesExpireEarlyOrNever) {
    Entries database;
    for (const auto& [name, added] :
         {std::pair("29 days", Now() - 29 * day), std::pair("30 days", Now() - 30 * day),
          std::pair("not quite", Now() - 30 * day + day / 1440), std::pair("31 days", Now() - 31 * day),
          std::pair("future", Now() + 100 * day), std::pair("1601", 0LL), std::pair("before 1601", -1LL)}) {
        database[MakeFile(InTrash(name))].first = added;
    }
    EXPECT_EQ(LeftByCleanup(false, database), ".trash.db, 29 days, before 1601, future, not quite");
    EXPECT_EQ(Database().size(), 4U);
}

TEST_F(TrashTest, CleanupTakesWhatIsNotRecordedOrADatabase) {
    const long long before = Now();
    for (const bool all : {false, true}) {
        for (const char* name : {"stray", "due", "kept/sub/stray", "kept/.trash.db"}) {
            MakeFile(InTrash(name));
        }
        EXPECT_EQ(LeftByCleanup(all, {{InTrash("due"), {1, "/o"}}}),
                  all ? ".trash.db, stray" : ".trash.db, kept/, kept/.trash.db, kept/sub/, kept/sub/stray, stray");
        EXPECT_EQ(Origins(before), all ? "stray: " : "kept/sub/stray: , stray: ");
    }
}

TEST_F(TrashTest, CleanupAdoptsAFileThatHasTheDatabasesNameInCapitals) {
    MakeFile(InTrash(".TRASH.DB"));
    if (std::filesystem::exists(InTrash(".trash.db"))) {
        GTEST_SKIP() << "the volume of the temporary folder ignores letter case";
    }
    EXPECT_EQ(LeftByCleanup(false, {{InTrash("due"), {1, "/o"}}}), ".TRASH.DB, .trash.db");
    EXPECT_EQ(Database().count(InTrash(".TRASH.DB")), 1U);
}

TEST_F(TrashTest, FolderStaysWhenAFileInItIsDue) {
    for (const char* name : {"folder/sub/due", "folder/fresh", "folder/stray", "other/fresh"}) {
        MakeFile(InTrash(name));
    }
    MakeFolder(InTrash("empty/empty"));
    Entries database = {{InTrash("folder/fresh"), {Now(), "/o"}}, {InTrash("other/fresh"), {Now(), "/o"}}};
    Entries withDue = database;
    withDue[InTrash("folder/sub/due")] = {Now() - 31 * day, "/o"};
    EXPECT_EQ(LeftByCleanup(false, withDue), ".trash.db, other/, other/fresh");
    database[InTrash("folder/stray")] = Database()[InTrash("folder/stray")]; // adopted before its folder went
    EXPECT_EQ(Database(), database) << "the entries of the files that went with the folder stay";
}

TEST_F(TrashTest, FilesAreMissedOrLookedForBelowLevelFifty) {
    std::string chain;
    for (int level = 0; level < 50; ++level) {
        chain += "/d";
    }
    Make("a/with" + chain + "/");
    EXPECT_FALSE(HasFiles(Path("a/with"), 0) || HasFiles(Path("missing"), 50));
    EXPECT_TRUE(HasFiles(Path("a/with"), 1) && HasFiles(Path("missing"), 51)) << "level 51 counts as a file";
    Make("a/with" + chain + "/file, a/deep" + chain + "/d/, a/empty/d/d/, a/file, a/link/, a/link/dangling -> none");
    EXPECT_TRUE(HasFiles(Path("a/with"), 0));
    CheckDeleteEmptyFolders(Path("a"));
    EXPECT_FALSE(std::filesystem::exists(Path("a/empty")));
    EXPECT_EQ(Cells(List(Path("a"))).size(), 1U + 52U + 52U + 2U);
}

TEST_F(TrashTest, SmallStackIsOverrun) {
    if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr) {
        GTEST_SKIP() << "sanitizers need more of the stack";
    }
    std::size_t size = std::size_t{64} * 1024;
#ifdef __OPTIMIZE__
    size /= 2;
#endif
    std::string deep = InTrash("shallow/file, ") + trash;
    for (int level = 0; level <= 20; ++level) {
        deep += "/level";
    }
    Make("a, " + deep + "/file");
    const auto work = [](void* file) -> void* { // each step of a host's thread on the trash
        const std::string place = GetTrashFolderPath();
        DeleteFileToRecycleBin(static_cast<const char*>(file), true);
        PutBack(place + "/a");
        TouchFolder(place);
        DeleteFolderWithContents((place + "/shallow").c_str(), false, false);
        CheckDeleteEmptyFolders(place);
        return CleanupTrashFolder(place, true), nullptr; // folders at every depth that is emptied
    };
    pthread_attr_t attributes{};
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
    pthread_t thread{};
    std::string file = Path("a");
    ASSERT_EQ(pthread_create(&thread, &attributes, work, file.data()), 0);
    pthread_join(thread, nullptr);
    EXPECT_EQ(Content(Path("a")), "a");
    EXPECT_EQ(List(applicationFolder), "Trash/, Trash/.trash.db");
}
