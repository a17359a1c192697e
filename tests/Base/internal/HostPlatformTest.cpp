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

namespace {

TEST(HostPlatformTest, ExecutablePathNeedsRoomForItsZeroByte) {
    std::string buffer(2000, '#');
    EXPECT_EQ(GetExecutablePath(buffer.data(), 2000), 0);
    const std::string path = buffer.c_str();
    EXPECT_EQ(access(path.c_str(), X_OK), 0) << path;
    EXPECT_EQ(GetExecutablePath(buffer.data(), static_cast<std::uint32_t>(path.size())), -1);
    EXPECT_EQ(GetExecutablePath(buffer.data(), static_cast<std::uint32_t>(path.size()) + 1), 0);
}

TEST(HostPlatformTest, AThreadNeedsNoPreparation) {
    testing::internal::CaptureStderr(); // where Foundation complains of objects that no pool will release
    std::thread([] {
        GetTemporaryFolder();
        EXPECT_EQ(Utf8FromWide(WideFromUtf8("\xC3\xA9").data(), 1), "\xC3\xA9");
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

long long Calendar() {
    const std::chrono::nanoseconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return sinceEpoch.count() / 100 + 116'444'736'000'000'000;
}

TEST(HostPlatformTest, ClockCountsFrom1601) {
    const long long before = Calendar();
    const long long now = DateTime::Now().ticks;
    EXPECT_LE(before, now);
    EXPECT_LT(now, Calendar() + 10) << "the standard library's clock may count microseconds";
}

} // namespace
