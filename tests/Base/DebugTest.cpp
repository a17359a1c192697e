#include <FrameworkBase/Base/Debug.h>
#include <FrameworkBase/Base/Platform.h>

#include <csignal>
#include <dlfcn.h>
#include <functional>
#include <gtest/gtest.h>
#include <iomanip>
#include <iostream>
#include <sstream>

using namespace Tolvex::Debug;

namespace {

struct FlushedText : std::stringbuf {
    int sync() override { return flushed = str(), 0; }
    std::string flushed;
};

std::string FlushedThroughErrorStream(const std::function<void()>& write) {
    FlushedText buffer;
    std::streambuf* const before = std::cerr.rdbuf(&buffer);
    std::cerr << std::nounitbuf;
    write();
    std::cerr << std::unitbuf;
    std::cerr.rdbuf(before);
    return buffer.flushed;
}

TEST(Debug, LinesAreLostCutOrLeftInABuffer) {
    const std::string x20479(20479, 'x');
    const std::pair<std::function<void()>, std::string> cases[] = {
        {[] { OutputDebugString("100%s\n"); }, "100%s\n\n"},
        {[] { std::cerr << std::setw(4), OutputDebugString("ab"), OutputDebugString("c"); }, "  ab\nc\n"},
        {[] { TraceRelease("%s|%lld|%.2f\n", "a", -1LL, 0.5); }, "a|-1|0.50\n\n\n\n"},
        {[&] { TraceRelease("%sy", x20479.c_str()); }, x20479 + "\n\n\n"},
        {[] { flpOutputDebugStringInternal("text"), SetMessageBoxAssertLink(nullptr); }, ""}};
    for (const auto& [write, expected] : cases) {
        EXPECT_EQ(FlushedThroughErrorStream(write), expected);
    }
}

TEST(Debug, TextThatCanNeverBeFormattedHangs) {
    if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr) {
        GTEST_SKIP() << "this build ends the process when an allocation fails";
    }
    EXPECT_EQ(FlushedThroughErrorStream([] { EXPECT_THROW(TraceRelease("%lc", wint_t{0xDFFF}), std::bad_alloc); }), "");
}

TEST(Platform, ValuesAreOthersOrChecked) {
    EXPECT_TRUE(testsRunning == 0 && isDoingStressTest == 0 && Tolvex::Threading::mainThreadId == 0);
    EXPECT_EQ(GetPlatform() + ' ' + GetPlatformType(), "mac desktop");
    EXPECT_EQ(GetUIScaleFactor(), 1.0F);
    for (const float factor : {2.5F, 0.0F, -1.0F, 1.0F}) {
        SetUIScaleFactor(factor);
        EXPECT_TRUE(TolvexDip == factor && GetUIScaleFactor() == factor) << factor;
    }
}

TEST(DebugDeathTest, DebugBreakReturns) { EXPECT_EXIT(DebugBreak(), testing::KilledBySignal(SIGABRT), "^$"); }

} // namespace
