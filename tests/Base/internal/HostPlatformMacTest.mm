#include <FrameworkBase/Base/internal/HostPlatform.h>

#include <gtest/gtest.h>
#include <thread>

using namespace Tolvex::HostPlatform;

TEST(HostPlatformMac, ThreadsNeedAPoolOfTheirOwn) {
    testing::internal::CaptureStderr(); // where Foundation complains of objects that no pool will release
    std::thread([] {
        GetTemporaryFolder();
        EXPECT_EQ(Utf8FromWide(WideFromUtf8("\xC3\xA9").data(), 1), "\xC3\xA9");
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
