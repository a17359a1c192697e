#include <FrameworkBase/Trash/internal/TrashDB.h>

#include "tests/FileNames/PathTables.h"
#include "tests/Trash/TrashDatabase.h"
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <chrono>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using namespace std::string_literals;

class TrashDBTest : public DiskTreeTest {
protected:
    TrashDBTest() { trashDB.files.clear(); }

    /// What a database saves after loading these bytes.
    std::string Saved(const std::string& bytes) {
        MakeFile(".trash.db", bytes);
        TrashDB database;
        database.Load(folder);
        database.Unload();
        EXPECT_TRUE(database.files.empty());
        return Content(Path(".trash.db"));
    }

    const Entries entries = {
        {"/t/a", {1, "/o/a"}}, {"/t/b", {-1, ""}}, {"/t/\xC3\xBC", {0x0123456789ABCDEF, "/o/x y.wav"}}};
};

TEST_F(TrashDBTest, IsSavedByteForByte) {
    const std::string one = "\2\0\0\0\1\0\0\0\5\0\0\0/t/a\0\1\0\0\0\0\0\0\0\5\0\0\0/o/a\0"s;
    EXPECT_EQ(Saved(one), one);
    EXPECT_EQ(Saved("not a database"), "\2\0\0\0\0\0\0\0"s);
    TrashDB database;
    database.folder = folder;
    database.files["/t\0/a"s].second = "\0"s;
    database.files[""].first.ticks = 3;
    database.Unload();
    EXPECT_EQ(Content(Path(".trash.db")), DatabaseBytes({{"/t\0/a"s, {0, "\0"s}}, {"", {3, ""}}}));
}

TEST_F(TrashDBTest, DamageCostsNoMoreThanWhatFollowsIt) {
    const std::string whole = DatabaseBytes(entries);
    for (const int version : {2, 1, -1, 77}) {
        const std::string bytes = DatabaseBytes(entries, version);
        for (std::size_t i = 0; i <= bytes.size(); ++i) {
            EXPECT_EQ(Saved(bytes.substr(0, i)), DatabaseBytes(EntriesIn(bytes.substr(0, i)))) << "cut at " << i;
        }
    }
    for (const int count : {0, -1, 1, 4, 2147483647}) {
        const std::string miscounted = std::string(whole).replace(4, 4, Bytes(count));
        EXPECT_EQ(Saved(miscounted), DatabaseBytes(EntriesIn(miscounted))) << count;
    }
    EXPECT_EQ(EntriesIn(whole), entries);
    EXPECT_EQ(EntriesIn(whole.substr(0, 34)), (Entries{{"/t/a", {1, "/o/a"}}})) << "the count says three";
    EXPECT_EQ(EntriesIn(whole.substr(0, 33)), (Entries{{"/t/a", {1, ""}}}));
    EXPECT_EQ(EntriesIn(whole.substr(0, 24)), Entries());
}

TEST_F(TrashDBTest, LoadMergesAndTheFileWins) {
    TrashDB database;
    database.InsertFile("/t/a", "memory");
    database.InsertFile("/t/kept", "memory");
    database.Load(Path("missing"));
    MakeFile(".trash.db", DatabaseBytes(entries));
    for (int time = 0; time < 1000; ++time) {
        database.Load(folder); // no stream may stay open
    }
    EXPECT_EQ(database.files["/t/kept"].second, "memory");
    database.DeleteFile("/t/kept");
    database.Unload();
    EXPECT_EQ(Content(Path(".trash.db")), DatabaseBytes(entries));
    EXPECT_EQ(List(), ".trash.db") << "a missing file is not made";
}

TEST_F(TrashDBTest, StaysInMemoryWhenItCannotBeSaved) {
    TrashDB database;
    database.Unload();
    EXPECT_EQ(List(workingFolder), database.GetDBFile()) << "no folder was loaded yet";
    Make("full/, full/.trash.db -> /dev/full");
    for (const std::size_t size : {100U, 1000U}) { // one piece, which is written last, and several
        while (database.files.size() < size) {
            database.InsertFile(std::to_string(database.files.size()), std::string(100, 'o'));
        }
        for (const char* unwritable : {"missing", "full"}) {
            database.folder = Path(unwritable);
            database.Unload();
            EXPECT_EQ(database.files.size(), size) << unwritable;
        }
    }
    EXPECT_EQ(List(), "full/, full/.trash.db");
    expectedOpenFiles = 2; // the streams that could not be written
}

TEST_F(TrashDBTest, AnswersFromMemory) {
    TrashDB database;
    const std::lock_guard guard(database.lock); // which its holder may take again
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

TEST_F(TrashDBTest, TouchLosesTheOriginAndLooksForSubfoldersInTheWorkingFolder) {
    Make("x.wav, sub/inside, " + workingFolder + "/sub/elsewhere");
    trashDB.files[Path("x.wav")].second = "/o/x.wav";
    trashDB.files[Path("sub/inside")].second = "/o/inside";
    const long long before = Now();
    Tolvex::FileNames::TouchFolder(folder);
    std::map<std::string, std::string> touched;
    for (const auto& [key, value] : trashDB.files) {
        touched[key] = value.second + (value.first.ticks < before ? "" : ", now");
    }
    EXPECT_EQ(touched, (std::map<std::string, std::string>{{Path("x.wav"), "x.wav, now"},
                                                           {Path("sub/inside"), "/o/inside"},
                                                           {"sub/elsewhere", "elsewhere, now"}}));
}

TEST_F(TrashDBTest, OperationsWorkInMemory) {
    const std::string trash = Tolvex::FileNames::GetTrashFolderPath();
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

TEST_F(TrashDBTest, CleanupWithoutACallbackSavesTheDatabase) {
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
