#include "tests/support/DiskTest.h"
#include <FrameworkBase/Base/Debug.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <thread>

// What callers may do from several threads at once. Worth the most under the thread sanitizer.

namespace {

constexpr int threadCount = 8;

/// Runs `work` on eight threads at once, each with its number.
void OnThreads(const std::function<void(int)>& work) {
    std::promise<void> start;
    const std::shared_future<void> started = start.get_future().share();
    std::vector<std::future<void>> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.push_back(std::async(std::launch::async, [&work, started, number] {
            started.wait();
            work(number);
        }));
    }
    start.set_value();
}

using ThreadTest = DiskTest;

TEST_F(ThreadTest, FirstCallsOfHomeFolderAgree) {
    std::vector<std::string> folders(threadCount);
    OnThreads([&folders](int number) { folders[static_cast<std::size_t>(number)] = GetHomeFolderMac(); });
    EXPECT_EQ(folders, std::vector<std::string>(threadCount, applicationFolder));
}

TEST_F(ThreadTest, SingleDatabaseCallsAreWhole) {
    constexpr int items = 10000;
    TrashDB database;
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
}

TEST_F(ThreadTest, CleanupRunsBesideTraces) {
    Tolvex::FileNames::DeleteFileToRecycleBin(MakeFile("take.wav"), true);
    testing::internal::CaptureStderr();
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(true, [done] {
        Tolvex::Debug::OutputDebugString("cleaned up");
        done->set_value();
    });
    OnThreads([](int number) { Tolvex::Debug::TraceRelease("trace %d", number); });
    ASSERT_EQ(done->get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
    const std::string traces = testing::internal::GetCapturedStderr();
    for (int number = 0; number < threadCount; ++number) {
        EXPECT_NE(traces.find("trace " + std::to_string(number)), std::string::npos);
    }
    EXPECT_EQ(Tree(applicationFolder), (std::vector<std::string>{"Trash/", "Trash/.trash.db"}));
}

} // namespace
