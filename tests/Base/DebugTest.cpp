#include <FrameworkBase/Base/Debug.h>
#include <FrameworkBase/Base/Platform.h>

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>

using namespace Tolvex::Debug;

namespace {

class FlushedBuffer : public std::stringbuf {
public:
    std::string flushed;

protected:
    int sync() override {
        flushed = str();
        return 0;
    }
};

/// Returns what `write` has written to the standard error stream and flushed.
std::string FlushedBy(const std::function<void()>& write) {
    FlushedBuffer buffer;
    std::streambuf* const before = std::cerr.rdbuf(&buffer);
    std::cerr << std::nounitbuf;
    write();
    std::cerr << std::unitbuf;
    std::cerr.rdbuf(before);
    return buffer.flushed;
}

TEST(DebugTest, OutputIsUnchangedAndEndsInALineFeed) {
    EXPECT_EQ(FlushedBy([] { OutputDebugString("100%s\n"); }), "100%s\n\n");
}

TEST(DebugTest, TraceIsFormattedAndEndsInThreeLineFeeds) {
    EXPECT_EQ(FlushedBy([] { TraceRelease("%s|%lld|%.2f", "a", -1LL, 0.5); }), "a|-1|0.50\n\n\n");
}

TEST(DebugTest, TraceIsCutTo20479Bytes) {
    const std::string longest(20479, 'x');
    EXPECT_EQ(FlushedBy([&] { TraceRelease("%sy", longest.c_str()); }), longest + "\n\n\n");
}

TEST(DebugDeathTest, BreakAbortsTheProcess) { EXPECT_EXIT(DebugBreak(), testing::KilledBySignal(SIGABRT), "^$"); }

} // namespace
