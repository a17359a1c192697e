#include <FrameworkBase/Base/Debug.h>
#include <FrameworkBase/Base/Platform.h>

#include <csignal>
#include <functional>
#include <gtest/gtest.h>

using namespace Tolvex::Debug;

namespace {

/// Returns what `write` has written to the standard error stream.
std::string WrittenBy(const std::function<void()>& write) {
    testing::internal::CaptureStderr();
    write();
    return testing::internal::GetCapturedStderr();
}

TEST(DebugTest, OutputIsUnchangedAndEndsInALineFeed) {
    EXPECT_EQ(WrittenBy([] { OutputDebugString("100%s\n"); }), "100%s\n\n");
}

TEST(DebugTest, TraceIsFormattedAndEndsInThreeLineFeeds) {
    EXPECT_EQ(WrittenBy([] { TraceRelease("%s|%lld|%.2f", "a", -1LL, 0.5); }), "a|-1|0.50\n\n\n");
}

TEST(DebugTest, TraceIsCutTo20479Bytes) {
    const std::string longest(20479, 'x');
    EXPECT_EQ(WrittenBy([&] { TraceRelease("%sy", longest.c_str()); }), longest + "\n\n\n");
}

TEST(DebugDeathTest, BreakAbortsTheProcess) { EXPECT_EXIT(DebugBreak(), testing::KilledBySignal(SIGABRT), "^$"); }

TEST(PlatformTest, IsADesktopMac) {
    EXPECT_EQ(GetPlatform(), "mac");
    EXPECT_EQ(GetPlatformType(), "desktop");
}

} // namespace
