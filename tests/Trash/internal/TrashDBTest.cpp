#include "FrameworkBase/Trash/internal/TrashDB.h"

#include "FrameworkBase/Trash/Trash.h"
#include "FrameworkBase/Trash/TrashCleanup.h"
#include "tests/FileNames/PathTables.h"
#include "tests/Trash/TrashDatabase.h"

#include <future>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using namespace std::string_literals;

namespace {

Entries EntriesOf(const TrashDB& database) {
    Entries entries;
    for (const auto& [key, value] : database.files) {
        entries[key] = {value.first.ticks, value.second};
    }
    return entries;
}

const Entries threeEntries = {
    {"/t/a", {1, "/o/a"}}, {"/t/b", {-1, ""}}, {"/t/\xC3\xBC", {0x0123456789ABCDEF, "/o/long name.wav"}}};

} // namespace

class TrashDBTest : public DiskTreeTest {
protected:
    /// What a new database has after loading a file of these bytes.
    Entries Loaded(const std::string& bytes) {
        MakeFile(".trash.db", bytes);
        TrashDB database;
        database.Load(folder);
        return EntriesOf(database);
    }

    /// The bytes that a database with these entries saves over a longer file.
    std::string Saved(const Entries& entries) {
        TrashDB database;
        database.folder = folder;
        for (const auto& [key, value] : entries) {
            database.files[key].first.ticks = value.first;
            database.files[key].second = value.second;
        }
        MakeFile(".trash.db", std::string(1000, 'x'));
        database.Unload();
        EXPECT_TRUE(database.files.empty());
        return Content(Path(".trash.db"));
    }
};

TEST_F(TrashDBTest, IsSavedByteForByte) {
    EXPECT_EQ(Saved({}), "\2\0\0\0\0\0\0\0"s);
    EXPECT_EQ(Saved({{"/t/a", {1, "/o/a"}}}), "\2\0\0\0\1\0\0\0\5\0\0\0/t/a\0\1\0\0\0\0\0\0\0\5\0\0\0/o/a\0"s);
    const Entries zeros = {{"/t\0/a"s, {2, "\0"s}}, {"", {3, "/o\0"s}}};
    EXPECT_EQ(Saved(zeros), DatabaseBytes(zeros));
    EXPECT_EQ(Loaded(Saved(zeros)), (Entries{{"/t", {2, ""}}, {"", {3, "/o"}}})) << "cut at zero bytes when read";
    EXPECT_EQ(Saved(threeEntries), DatabaseBytes(threeEntries));
}

TEST_F(TrashDBTest, DamageCostsNoMoreThanWhatFollowsIt) {
    const std::string whole = DatabaseBytes(threeEntries);
    for (const std::string& bytes : {whole, DatabaseBytes(threeEntries, 1)}) {
        for (std::size_t i = 0; i <= bytes.size(); ++i) {
            EXPECT_EQ(Loaded(bytes.substr(0, i)), EntriesIn(bytes.substr(0, i))) << "cut at " << i;
            for (const char wrong : {'\0', '\x7f', '\xff'}) {
                const std::string damaged = std::string(bytes).replace(i, 1, 1, wrong);
                EXPECT_EQ(Loaded(damaged), EntriesIn(damaged)) << "damaged at " << i;
            }
        }
    }
    EXPECT_EQ(Loaded(whole.substr(0, 34)), (Entries{{"/t/a", {1, "/o/a"}}})) << "the count says three";
    EXPECT_EQ(Loaded(whole.substr(0, 33)), (Entries{{"/t/a", {1, ""}}}));
    EXPECT_EQ(Loaded(whole.substr(0, 24)), Entries());
    for (const auto& [count, loaded] : std::map<int, std::size_t>{{0, 0}, {-1, 0}, {1, 1}, {4, 3}, {2147483647, 3}}) {
        EXPECT_EQ(Loaded(std::string(whole).replace(4, 4, Bytes(count))).size(), loaded) << count;
    }
    EXPECT_EQ(Loaded(DatabaseBytes({{"/t/a", {1, "/o/a"}}}, -1)), (Entries{{"/t/a", {1, ""}}})) << "without origins";
    EXPECT_EQ(Loaded(DatabaseBytes(threeEntries, 77)), threeEntries);
}

TEST_F(TrashDBTest, LoadMergesAndTheFileWins) {
    TrashDB database;
    database.InsertFile("/t/a", "memory");
    database.InsertFile("/t/kept", "memory");
    database.Load(Path("missing"));
    MakeFile(".trash.db", DatabaseBytes(threeEntries));
    for (int time = 0; time < 1000; ++time) {
        database.Load(folder); // no stream may stay open
    }
    Entries merged = threeEntries;
    merged["/t/kept"] = EntriesOf(database)["/t/kept"];
    EXPECT_EQ(EntriesOf(database), merged);
    EXPECT_EQ(List(), ".trash.db") << "a missing file is not made";
}

TEST_F(TrashDBTest, StaysInMemoryWhenItCannotBeSaved) {
    TrashDB database;
    database.Unload();
    EXPECT_EQ(List(workingFolder), database.GetDBFile()) << "no folder was loaded yet";
    for (int i = 0; i < 1000; ++i) {
        database.InsertFile(std::to_string(i), std::string(100, 'o'));
    }
    Make("full/, full/.trash.db -> /dev/full");
    for (const char* unwritable : {"missing", "full"}) {
        database.folder = Path(unwritable);
        database.Unload();
        EXPECT_EQ(database.files.size(), 1000U) << unwritable;
    }
    EXPECT_EQ(List(), "full/, full/.trash.db");
    expectedOpenFiles = 1; // the stream that could not be written
}

TEST_F(TrashDBTest, AnswersFromMemory) {
    TrashDB database;
    TrashDB::DateTime added;
    std::string original = "untouched";
    const long long before = Now();
    database.InsertFile("a", "/o/a");
    database.InsertFile("b", "/o/b");
    database.InsertFile("b", "");
    EXPECT_FALSE(database.GetFileAdded("none", added) || database.GetFileOriginalPath("none", original));
    EXPECT_TRUE(added.ticks == 0 && original == "untouched");
    EXPECT_TRUE(database.GetFileAdded("a", added) && before <= added.ticks && added.ticks <= Now()) << added.ticks;
    EXPECT_TRUE(database.GetFileOriginalPath("a", original) && original == "/o/a") << original;
    EXPECT_FALSE(database.GetFileOriginalPath("b", original) || !original.empty()) << "an empty one is handed out too";
    database.DeleteFile("none");
    database.DeleteFile("a");
    EXPECT_EQ(database.files.size(), 1U);
}

TEST_F(TrashDBTest, LockIsHeldByOneThreadAsOftenAsItLikes) {
    MakeFile(".trash.db", DatabaseBytes(threeEntries));
    TrashDB database;
    std::unique_lock guard(database.lock);
    database.Load(folder);
    auto other = std::async(std::launch::async, [&database] { database.DeleteFile("/t/a"); });
    EXPECT_EQ(other.wait_for(50ms), std::future_status::timeout);
    EXPECT_EQ(database.files.size(), 3U);
    guard.unlock();
    ASSERT_EQ(other.wait_for(20s), std::future_status::ready);
    EXPECT_EQ(database.files.size(), 2U);
}

class LoadedTrash : public DiskTreeTest {};

TEST_F(LoadedTrash, TouchLosesTheOriginAndLooksForSubfoldersInTheWorkingFolder) {
    trashDB.files.clear();
    Make("x.wav, sub/inside, " + workingFolder + "/sub/elsewhere");
    trashDB.files[Path("x.wav")].second = "/o/x.wav";
    trashDB.files[Path("sub/inside")].second = "/o/inside";
    const long long before = Now();
    Tolvex::FileNames::TouchFolder(folder);
    Entries touched = EntriesOf(trashDB);
    for (auto& [key, value] : touched) {
        value.first = value.first >= before ? 1 : value.first;
    }
    const Entries expected = {
        {Path("x.wav"), {1, "x.wav"}}, {Path("sub/inside"), {0, "/o/inside"}}, {"sub/elsewhere", {1, "elsewhere"}}};
    EXPECT_EQ(touched, expected);
}

TEST_F(LoadedTrash, OperationsWorkInMemory) {
    const std::string trash = Tolvex::FileNames::GetTrashFolderPath();
    trashDB.files.clear();
    Make("a, " + trash + "/.trash.db, " + trash + "/sub/");
    Tolvex::FileNames::DeleteFileToRecycleBin(Path("a"), false);
    EXPECT_EQ(trashDB.files.at(trash + "/a").second, Path("a"));
    EXPECT_FALSE(CleanupTrashFolder(trash, false)) << "nothing is due";
    EXPECT_TRUE(CleanupTrashFolder(trash, true));
    EXPECT_FALSE(CleanupTrashFolder(trash, true)) << "nothing is left";
    MakeFile(trash + "/b");
    EXPECT_FALSE(CleanupTrashFolder(trash, true)) << "adopted";
    EXPECT_TRUE(CleanupTrashFolder(trash, true)) << "a file deleted";
    MakeFolder(trash + "/sub");
    EXPECT_TRUE(CleanupTrashFolder(trash, true)) << "a folder deleted";
    EXPECT_EQ(Content(trash + "/.trash.db") + List(trash), trash + "/.trash.db.trash.db") << "not saved";
}

TEST_F(LoadedTrash, CleanupWithoutACallbackSavesTheDatabase) {
    const std::string database = MakeFolder(Tolvex::FileNames::GetTrashFolderPath()) + "/.trash.db";
    CleanupTrashFolder(false, {});
    std::error_code missing;
    for (int time = 0; time < 2000 && std::filesystem::file_size(database, missing) != 8; ++time) {
        std::this_thread::sleep_for(10ms);
    }
    const std::lock_guard guard(trashDB.lock); // held until the thread has done
    EXPECT_EQ(Content(database), DatabaseBytes({}));
    EXPECT_EQ(List(applicationFolder), "Trash/, Trash/.trash.db");
}
