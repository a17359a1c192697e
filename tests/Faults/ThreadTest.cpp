#include "FrameworkBase/Base/Debug.h"
#include "FrameworkBase/FileNames/KnownFolders.h"
#include "FrameworkBase/Trash/Trash.h"
#include "FrameworkBase/Trash/TrashCleanup.h"
#include "FrameworkBase/Trash/internal/TrashDB.h"
#include "tests/support/DiskTest.h"

#include <chrono>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// What callers may do from several threads at once. Worth the most under the thread sanitizer.

namespace {

using namespace std::chrono_literals;

constexpr int threadCount = 8;

/// Runs `work` on eight threads at once, each with its number.
void OnThreads(const std::function<void(int)>& work) {
    std::promise<void> start;
    const std::shared_future<void> started = start.get_future().share();
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&work, started, number] {
            started.wait();
            work(number);
        });
    }
    start.set_value();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

using ThreadTest = DiskTest;

TEST_F(ThreadTest, FirstCallsOfHomeFolderAgree) {
    std::vector<std::string> folders(threadCount);
    OnThreads([&folders](int number) { folders[static_cast<std::size_t>(number)] = GetHomeFolderMac(); });
    EXPECT_EQ(folders, std::vector<std::string>(threadCount, applicationFolder));
}

TEST_F(ThreadTest, SingleDatabaseCallsAreWhole) {
    constexpr int items = 200;
    MakeFolder(folder);
    TrashDB database;
    database.Load(folder);
    OnThreads([&database](int number) {
        std::string original;
        TrashDB::DateTime added;
        for (int item = 0; item < items; ++item) {
            const std::string own = std::to_string(number) + '/' + std::to_string(item);
            database.InsertFile(own, "from " + own);
            database.InsertFile("shared", std::to_string(number));
            EXPECT_TRUE(database.GetFileOriginalPath(own, original));
            EXPECT_EQ(original, "from " + own);
            EXPECT_TRUE(database.GetFileAdded("shared", added));
            if (item % 2 == 0) {
                database.DeleteFile(own);
            }
        }
    });
    EXPECT_EQ(database.files.size(), threadCount * items / 2 + 1U);
    OnThreads([this, &database](int /*number*/) { database.Load(folder); }); // each reads a file that is not there
    EXPECT_EQ(database.files.size(), threadCount * items / 2 + 1U);
}

TEST_F(ThreadTest, LockHolderCallsTheDatabase) {
    trashDB.Load(MakeFolder("held"));
    std::unique_lock<Tolvex::Sync::CCritSec> outer(trashDB.lock);
    std::unique_lock<Tolvex::Sync::CCritSec> inner(trashDB.lock);
    trashDB.InsertFile("a", "b");
    trashDB.Unload();
    trashDB.Load(folder + "/held");
    inner.unlock();
    const auto isFree = [] {
        return std::async(std::launch::async,
                          [] {
                              const std::unique_lock<Tolvex::Sync::CCritSec> lock(trashDB.lock, std::try_to_lock);
                              return lock.owns_lock();
                          })
            .get();
    };
    EXPECT_FALSE(isFree()) << "unlocked as often as the calls locked it";
    outer.unlock();
    EXPECT_TRUE(isFree());
    trashDB.Unload();
    EXPECT_EQ(Tree(), (std::vector<std::string>{"held/", "held/.trash.db"}));
}

TEST_F(ThreadTest, CleanupRunsBesideTraces) {
    Tolvex::FileNames::DeleteFileToRecycleBin(MakeFile("take.wav"), true);
    testing::internal::CaptureStderr();
    std::promise<void> done;
    CleanupTrashFolder(true, [&done] {
        Tolvex::Debug::OutputDebugString("cleaned up");
        done.set_value();
    });
    OnThreads([](int number) { Tolvex::Debug::TraceRelease("trace %d", number); });
    ASSERT_EQ(done.get_future().wait_for(10s), std::future_status::ready);
    const std::string traces = testing::internal::GetCapturedStderr();
    for (int number = 0; number < threadCount; ++number) {
        EXPECT_NE(traces.find("trace " + std::to_string(number)), std::string::npos);
    }
    EXPECT_EQ(Tree(applicationFolder), (std::vector<std::string>{"Trash/", "Trash/.trash.db"}));
}

} // namespace
