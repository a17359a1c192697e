#include <FrameworkBase/Trash/internal/TrashDB.h>

#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/internal/FolderStream.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <functional>
#include <future>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using namespace std::string_literals;

// What is made of damaged files is checked by DatabaseFuzz, whose inputs the tests replay.

struct TrashDBTest : DiskTest {
    TrashDBTest() { trashDB.files.clear(); }

    TrashDB database;
};

TEST_F(TrashDBTest, AnotherByteIsSavedOrAnEntryDropped) {
    MakeFile(".trash.db", "\2\0\0\0\1\0\0\0\5\0\0\0/t/a\0\1\0\0\0\0\0\0\0\5\0\0\0/o/a\0"s);
    database.Load(folder);
    database.files["/t\0/a"s].second = "\0"s;
    database.files[""].first.ticks = 3;
    database.Unload();
    EXPECT_TRUE(database.files.empty());
    EXPECT_EQ(Content(Path(".trash.db")), "\2\0\0\0\3\0\0\0\1\0\0\0\0\3\0\0\0\0\0\0\0\1\0\0\0\0"
                                          "\6\0\0\0/t\0/a\0\0\0\0\0\0\0\0\0\2\0\0\0\0\0"
                                          "\5\0\0\0/t/a\0\1\0\0\0\0\0\0\0\5\0\0\0/o/a\0"s);
    Entries entries; // at whose bounds those of the blocks that are read fall at every place
    for (std::size_t size = 1; size <= 400; ++size) {
        entries[std::string(size, 'k')] = {static_cast<long long>(size), std::string((size * size) % 5000, 'o')};
    }
    MakeFile(".trash.db", DatabaseBytes(entries));
    database.InsertFile("k", "gives way to the file's");
    database.InsertFile("l", "stays");
    database.Load(Path("missing"));
    database.Load(folder);
    entries["l"] = {database.files["l"].first.ticks, "stays"};
    database.Unload();
    EXPECT_TRUE(Content(Path(".trash.db")) == DatabaseBytes(entries));
    EXPECT_EQ(List(), ".trash.db");
}

TEST_F(TrashDBTest, EntriesAreLostWhenTheyCannotBeSaved) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "this system has no device that is always full";
    }
    database.Unload();
    EXPECT_EQ(List(workingFolder), database.GetDBFile()) << "no folder was loaded yet";
    MakeEmpty(workingFolder);
    Make("full/, full/.trash.db -> /dev/full");
    for (const std::size_t size : {100U, 100000U}) { // written when the file is closed, and before
        database.InsertFile("a", std::string(size, 'o'));
        for (const char* unwritable : {"missing", "full"}) {
            database.folder = Path(unwritable);
            database.Unload();
            EXPECT_EQ(database.files.empty(), size == 100U && database.folder == Path("full"));
        }
    }
    expectedOpenFiles = 1; // the stream that could not be written
}

TEST_F(TrashDBTest, WrongEntryAnswersOrAnswersChangeWhatTheyShouldNot) {
    TrashDB::DateTime added{7};
    std::string original = "untouched";
    database.InsertFile("a", "/o/a");
    database.InsertFile("b", "/o/b");
    database.InsertFile("b", "");
    EXPECT_FALSE(database.GetFileAdded("none", added) || database.GetFileOriginalPath("none", original));
    EXPECT_EQ(original + std::to_string(added.ticks), "untouched7");
    EXPECT_TRUE(database.GetFileAdded("a", added) && std::abs(added.ticks - Now()) < day / 99) << added.ticks;
    EXPECT_TRUE(database.GetFileOriginalPath("a", original) && original == "/o/a") << original;
    EXPECT_FALSE(database.GetFileOriginalPath("b", original) || !original.empty()) << "it is handed out too";
    database.DeleteFile("none");
    database.DeleteFile("a");
    EXPECT_EQ(database.files.size(), 1U);
}

TEST_F(TrashDBTest, CallsDoNotTakeTheLock) {
    MakeFile(".trash.db", DatabaseBytes({{"a", {1, "b"}}}));
    database.folder = folder;
    TrashDB::DateTime added;
    std::string original;
    const std::function<void()> calls[] = {[&] { database.Load(folder); },
                                           [&] { database.Unload(); },
                                           [&] { database.InsertFile("a", "b"); },
                                           [&] { database.GetFileOriginalPath("a", original); },
                                           [&] { database.GetFileAdded("a", added); },
                                           [&] { database.DeleteFile("a"); }};
    for (const auto& call : calls) {
        database.lock.lock();
        database.lock.lock();
        call(); // its holder may take it again
        auto other = std::async(std::launch::async, call);
        for (int held = 2; held > 0; --held) {
            EXPECT_EQ(other.wait_for(20ms), std::future_status::timeout) << &call - calls;
            EXPECT_FALSE(std::async(std::launch::async, [&] { return database.lock.try_lock(); }).get());
            database.lock.unlock();
        }
        other.get();
    }
    std::async(std::launch::async, calls[0]).get(); // the last one has let go
}

TEST_F(TrashDBTest, TouchKeepsTheOriginOrLooksForSubfoldersElsewhere) {
    Make("x.wav, sub/inside, " + workingFolder + "/sub/elsewhere");
    trashDB.files[Path("x.wav")].second = "/o/x.wav";
    trashDB.files[Path("sub/inside")].second = "/o/inside";
    std::vector<std::string> names = {"before"};
    EXPECT_FALSE(Tolvex::FileNames::DoGetFolderFiles<true>("/none", names));
    EXPECT_EQ(Joined(names), "before") << "the list stays when a folder does not open";
    EXPECT_TRUE(Tolvex::FileNames::DoGetFolderFiles<true>(folder, names) && Joined(names) == "sub");
    const long long before = Now();
    Tolvex::FileNames::TouchFolder(folder);
    std::vector<std::string> touched;
    for (const auto& [key, value] : trashDB.files) {
        touched.push_back(key + (value.first.ticks < before ? ": " : " now: ") + value.second);
    }
    EXPECT_EQ(Joined(touched),
              Path("sub/inside: /o/inside, ") + Path("x.wav now: x.wav, sub/elsewhere now: elsewhere"));
    MakeEmpty(workingFolder);
}

TEST_F(TrashDBTest, OperationsSaveUnasked) {
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
    EXPECT_EQ(List(trash, true), ".trash.db=" + trash + "/.trash.db");
}

TEST_F(TrashDBTest, CleanupMakesItsCallerWaitOrNeedsACallback) {
    const std::string path = MakeFolder(Tolvex::FileNames::GetTrashFolderPath()) + "/.trash.db";
    std::unique_lock held(trashDB.lock); // which the cleanup needs to end
    auto call = std::async(std::launch::async, [] { CleanupTrashFolder(false, {}); });
    EXPECT_EQ(call.wait_for(10s), std::future_status::ready);
    do {
        held.unlock();
        std::this_thread::sleep_for(10ms);
        held.lock(); // held until the thread has done
    } while (!std::filesystem::exists(path) || Content(path).empty());
    EXPECT_EQ(Content(path), DatabaseBytes({}));
}
