#include "FrameworkBase/Base/Debug.h"

#include <csignal>
#include <dlfcn.h>
#include <functional>
#include <gtest/gtest.h>
#include <iomanip>
#include <iostream>
#include <new>
#include <sstream>

using namespace Tolvex::Debug;

namespace {

/// Takes the place of the buffer of `std::cerr` and knows how much of its text has been flushed.
class ErrorBuffer : public std::stringbuf {
public:
    ErrorBuffer() { std::cerr << std::nounitbuf; }
    ~ErrorBuffer() override {
        std::cerr.rdbuf(before);
        std::cerr << std::unitbuf;
    }
    ErrorBuffer(const ErrorBuffer&) = delete;
    ErrorBuffer& operator=(const ErrorBuffer&) = delete;

    std::string flushed;

private:
    int sync() override {
        flushed = str();
        return 0;
    }

    std::streambuf* before = std::cerr.rdbuf(this);
};

std::string WrittenToStream(const std::function<void()>& write) {
    const ErrorBuffer buffer;
    write();
    return buffer.flushed;
}

std::string WrittenToDescriptor(const std::function<void()>& write) {
    testing::internal::CaptureStderr();
    write();
    return testing::internal::GetCapturedStderr();
}

int FailingMessageBox(WindowImpl*, const char*, const char*, unsigned int) {
    ADD_FAILURE() << "called";
    return 0;
}

TEST(Debug, WritesLinesToTheErrorStream) {
    const std::string x20479(20479, 'x');
    const struct {
        std::function<void()> write;
        std::string expected;
    } cases[] = {
        {[] { OutputDebugString(""); }, "\n"},
        {[] { OutputDebugString("a"); }, "a\n"},
        {[] { OutputDebugString("a\n"); }, "a\n\n"},
        {[] { OutputDebugString("100%s"); }, "100%s\n"},
        {[] { TraceRelease("%d", 5); }, "5\n\n\n"},
        {[] { TraceRelease("take\n"); }, "take\n\n\n\n"},
        {[] { TraceRelease("%s|%lld|%.2f", "a", -1LL, 0.5); }, "a|-1|0.50\n\n\n"},
        {[&] { TraceRelease("%s", x20479.c_str()); }, x20479 + "\n\n\n"},
        {[&] { TraceRelease("%sy", x20479.c_str()); }, x20479 + "\n\n\n"},
        {[] { TraceRelease("%s", std::string(30000, 'x').c_str()); }, x20479 + "\n\n\n"},
        {[] { flpOutputDebugStringInternal("text"); }, ""},
        {[] { SetMessageBoxAssertLink(nullptr); }, ""},
        {[] { SetMessageBoxAssertLink(&FailingMessageBox); }, ""},
    };
    for (const auto& [write, expected] : cases) {
        EXPECT_EQ(WrittenToStream(write), expected);
        EXPECT_EQ(WrittenToDescriptor(write), expected);
    }
}

TEST(Debug, FieldWidthOfTheStreamApplies) {
    EXPECT_EQ(WrittenToStream([] {
                  std::cerr << std::setw(5) << std::setfill('.');
                  OutputDebugString("ab");
                  OutputDebugString("ab");
                  std::cerr << std::setfill(' ');
              }),
              "...ab\nab\n");
}

TEST(Debug, TextThatCanNeverBeFormattedEndsInBadAlloc) {
    if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr) {
        GTEST_SKIP() << "this build ends the process when an allocation fails";
    }
    EXPECT_EQ(WrittenToStream([] { EXPECT_THROW(TraceRelease("%lc", wint_t{0xDFFF}), std::bad_alloc); }), "");
}

TEST(DebugDeathTest, DebugBreakAbortsWithoutAMessage) {
    EXPECT_EXIT(DebugBreak(), testing::KilledBySignal(SIGABRT), "^$");
}

} // namespace
