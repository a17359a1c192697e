#include <FrameworkBase/Base/internal/HostPlatform.h>

#include <FrameworkBase/Base/internal/DateTime.h>

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

// What every back-end has to do, whichever system it is for.

using namespace Tolvex::HostPlatform;
using VarnelNative::Utility::DateTime;

TEST(HostPlatform, ExecutablePathOverrunsItsBuffer) {
    std::string buffer(2000, '#');
    EXPECT_EQ(GetExecutablePath(buffer.data(), 2000), 0);
    EXPECT_EQ(access(buffer.c_str(), X_OK), 0) << buffer;
    EXPECT_EQ(GetExecutablePath(buffer.data(), static_cast<std::uint32_t>(buffer.find('\0'))), -1);
    EXPECT_EQ(GetExecutablePath(buffer.data(), static_cast<std::uint32_t>(buffer.find('\0')) + 1), 0);
}

TEST(HostPlatform, TemporaryFolderIsNoneOrAnotherEachTime) {
    const std::string folder = GetTemporaryFolder();
    EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
    EXPECT_EQ(access(folder.c_str(), W_OK), 0) << folder;
    EXPECT_EQ(GetTemporaryFolder(), folder);
}

TEST(HostPlatform, ThreadsNeedToBePrepared) {
    testing::internal::CaptureStderr(); // where Foundation complains of objects that no pool will release
    std::thread([] {
        GetTemporaryFolder();
        EXPECT_EQ(Utf8FromWide(WideFromUtf8("\xC3\xA9").data(), 1), "\xC3\xA9");
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(HostPlatform, ClockIsNotTheCalendars) {
    const auto calendar = [] {
        const std::chrono::nanoseconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return 116'444'736'000'000'000 + sinceEpoch.count() / 100;
    };
    const long long before = calendar();
    const long long now = DateTime::Now().ticks;
    EXPECT_LE(before, now);
    EXPECT_LT(now, calendar() + 10) << "the standard library's clock may count microseconds";
}
