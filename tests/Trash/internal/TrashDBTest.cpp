#include <FrameworkBase/Trash/internal/TrashDB.h>

#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/Base/Debug.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <functional>
#include <future>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using namespace std::string_literals;

// What is made of damaged files is checked by DatabaseFuzz, whose inputs the tests replay.

class TrashDBTest : public DiskTest {
protected:
    TrashDBTest() { trashDB.files.clear(); }

    /// Runs `work` on eight threads at once, each with its number.
    static std::vector<std::future<void>> OnThreads(const std::function<void(int)>& work) {
        std::vector<std::future<void>> threads;
        for (int number = 0; number < 8; ++number) {
            threads.push_back(std::async(std::launch::async, work, number));
        }
        return threads;
    }

    const Entries entries = {
        {"/t/a", {1, "/o/a"}}, {"/t/b", {-1, ""}}, {"/t/\xC3\xBC", {0x0123456789ABCDEF, "/o/x y.wav"}}};
};

TEST_F(TrashDBTest, AnotherByteIsSaved) {
    MakeFile(".trash.db", "\2\0\0\0\1\0\0\0\5\0\0\0/t/a\0\1\0\0\0\0\0\0\0\5\0\0\0/o/a\0"s);
    TrashDB database;
    database.Load(folder);
    database.files["/t\0/a"s].second = "\0"s;
    database.files[""].first.ticks = 3;
    database.Unload();
    EXPECT_TRUE(database.files.empty());
    EXPECT_EQ(Content(Path(".trash.db")), "\2\0\0\0\3\0\0\0\1\0\0\0\0\3\0\0\0\0\0\0\0\1\0\0\0\0"
                                          "\6\0\0\0/t\0/a\0\0\0\0\0\0\0\0\0\2\0\0\0\0\0"
                                          "\5\0\0\0/t/a\0\1\0\0\0\0\0\0\0\5\0\0\0/o/a\0"s);
}

TEST_F(TrashDBTest, LoadDropsWhatIsInMemoryOrWhatIsInTheFile) {
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

TEST_F(TrashDBTest, EntriesAreLostWhenTheyCannotBeSaved) {
    TrashDB database;
    database.Unload();
    EXPECT_EQ(List(workingFolder), database.GetDBFile()) << "no folder was loaded yet";
    std::filesystem::remove(database.GetDBFile());
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
    expectedOpenFiles = 2; // the streams that could not be written
}

TEST_F(TrashDBTest, WrongEntryAnswersOrAnswersChangeWhatTheyShouldNot) {
    TrashDB database;
    TrashDB::DateTime added;
    std::string original = "untouched";
    const long long before = Now();
    database.InsertFile("a", "/o/a");
    database.InsertFile("b", "/o/b");
    database.InsertFile("b", "");
    EXPECT_FALSE(database.GetFileAdded("none", added) || database.GetFileOriginalPath("none", original));
    EXPECT_EQ(added.ticks, 0);
    EXPECT_EQ(original, "untouched");
    EXPECT_TRUE(database.GetFileAdded("a", added) && before <= added.ticks && added.ticks <= Now()) << added.ticks;
    EXPECT_TRUE(database.GetFileOriginalPath("a", original));
    EXPECT_EQ(original, "/o/a");
    EXPECT_FALSE(database.GetFileOriginalPath("b", original));
    EXPECT_EQ(original, "") << "an empty one is handed out too";
    database.DeleteFile("none");
    database.DeleteFile("a");
    EXPECT_EQ(database.files.size(), 1U);
}

TEST_F(TrashDBTest, CallsDoNotTakeTheLock) {
    TrashDB database;
    MakeFile(".trash.db", DatabaseBytes(entries));
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
        EXPECT_EQ(other.wait_for(20ms), std::future_status::timeout) << &call - calls;
        EXPECT_FALSE(std::async(std::launch::async, [&] { return database.lock.try_lock(); }).get());
        database.lock.unlock();
        EXPECT_EQ(other.wait_for(20ms), std::future_status::timeout) << &call - calls;
        database.lock.unlock();
        other.get();
    }
    EXPECT_TRUE(std::async(std::launch::async, [&] { return database.lock.try_lock(); }).get());
}

TEST_F(TrashDBTest, CallsAtOnceTearTheMapOrATrace) { // most of it shows under the thread sanitizer
    TrashDB database;
    testing::internal::CaptureStderr();
    OnThreads([&](int number) {
        EXPECT_EQ(GetHomeFolderMac(), applicationFolder);
        for (int item = 0; item < 1000; ++item) {
            const std::string own = std::to_string(number) + '/' + std::to_string(item);
            std::string original;
            database.InsertFile(own, own);
            database.InsertFile("shared", own);
            EXPECT_TRUE(database.GetFileOriginalPath(own, original) && original == own) << original;
            item % 2 == 0 ? database.DeleteFile(own) : void();
        }
        Tolvex::Debug::TraceRelease("trace %d", number);
    });
    EXPECT_EQ(database.files.size(), 8 * 500 + 1U);
    const std::string traces = testing::internal::GetCapturedStderr();
    for (int number = 0; number < 8; ++number) {
        EXPECT_NE(traces.find("trace " + std::to_string(number)), std::string::npos);
    }
}

TEST_F(TrashDBTest, TouchKeepsTheOriginOrLooksForSubfoldersElsewhere) {
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
    EXPECT_EQ(List(trash), ".trash.db");
    EXPECT_EQ(Content(trash + "/.trash.db"), trash + "/.trash.db") << "not saved";
}

TEST_F(TrashDBTest, CleanupMakesItsCallerWaitOrNeedsACallback) {
    const std::string database = MakeFolder(Tolvex::FileNames::GetTrashFolderPath()) + "/.trash.db";
    {
        const std::lock_guard held(trashDB.lock); // which the cleanup needs to end
        auto call = std::async(std::launch::async, [] { CleanupTrashFolder(false, {}); });
        EXPECT_EQ(call.wait_for(10s), std::future_status::ready);
    }
    std::error_code missing;
    for (int time = 0; time < 2000 && std::filesystem::file_size(database, missing) != 8; ++time) {
        std::this_thread::sleep_for(10ms);
    }
    const std::lock_guard guard(trashDB.lock); // held until the thread has done
    EXPECT_EQ(Content(database), DatabaseBytes({}));
    EXPECT_EQ(List(applicationFolder), "Trash/, Trash/.trash.db");
}
