#include <FrameworkBase/FileNames/Processes.h>

#include "tests/support/DiskTest.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Tolvex::FileNames;

namespace {

HANDLE Launch(std::vector<std::string> arguments, const std::string& program = "/bin/sh") {
    HANDLE process = LaunchProcess(program, arguments);
    if (process == nullptr) {
        _exit(127);
    }
    return process;
}

HANDLE Sleep(const char* seconds) { return Launch({"sleep", seconds}, "/bin/sleep"); }

/// Expects a wait to end like this and in this time, which leaves room for a machine that has much else to do.
void ExpectWait(HANDLE process, int timeout, bool ended, double atLeast, double atMost) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForProcess(process, timeout), ended) << timeout;
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(atLeast <= time.count() && time.count() <= atMost) << timeout << ": " << time.count();
}

} // namespace

class Processes : public DiskTest {
protected:
    void TearDown() override {
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left, at work or waiting to be waited for";
        DiskTest::TearDown();
    }

    /// What a program writes to the standard output that it inherits.
    std::string Output(const std::vector<std::string>& arguments, const std::string& program = "/bin/sh") {
        const int standardOutput = dup(STDOUT_FILENO);
        const int output = open(MakeFile("output").c_str(), O_WRONLY);
        dup2(output, STDOUT_FILENO);
        HANDLE process = Launch(arguments, program);
        dup2(standardOutput, STDOUT_FILENO);
        close(standardOutput);
        close(output);
        EXPECT_TRUE(WaitForProcess(process, 20000));
        return Content(Path("output"));
    }
};

TEST_F(Processes, ArgumentsAndEnvironmentArriveExactly) {
    EXPECT_EQ(Output({"echo", "hi"}, "/bin/echo"), "hi\n");
    EXPECT_EQ(Output({"hi"}, "/bin/echo"), "\n");
    EXPECT_EQ(Output({}, "/bin/echo"), "\n");
    EXPECT_EQ(Output({"a name", "-c", "echo \"$0\""}), "a name\n");
    const std::string longText(100000, 'x');
    EXPECT_EQ(Output({"sh", "-c", "printf '<%s>' \"$@\"", "sh", "a b", "", "*", "'\"\\$0\n", longText}),
              "<a b><><*><'\"\\$0\n><" + longText + ">");
    const EnvironmentVariable variable("FRAMEWORKBASE_TEST", "a value");
    EXPECT_EQ(Output({"sh", "-c", "echo $FRAMEWORKBASE_TEST; pwd"}), "a value\n" + workingFolder + "\n");
}

TEST_F(Processes, TimeOutIsLookedAtEvery200Milliseconds) {
    HANDLE process = Sleep("60");
    ExpectWait(process, 500, false, 500, 2000);
    ExpectWait(process, 0, false, 200, 1500);
    ExpectWait(process, -2, false, 200, 1500);
    kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
    ExpectWait(process, 20000, true, 0, 10000);
    ExpectWait(process, 0, false, 200, 1500); // no longer valid
    ExpectWait(nullptr, 1000, false, 0, 150);
    ExpectWait(nullptr, -1, false, 0, 150);
}

TEST_F(Processes, OnlyTheWaitWithoutEndTakesOtherChildren) {
    HANDLE first = Sleep("0");
    EXPECT_TRUE(WaitForProcess(Sleep("0.3"), 20000));
    EXPECT_TRUE(WaitForProcess(first, 20000));
    Sleep("0");
    EXPECT_TRUE(WaitForProcess(Sleep("0.3"), -1));
}

TEST_F(Processes, ChildThatCannotStartTheProgramGetsTheNullHandle) {
    volatile bool isShared = false;
    if (vfork() == 0) {
        isShared = true;
        _exit(0);
    }
    wait(nullptr);
    if (!isShared) {
        GTEST_SKIP() << "a tool gives the child of vfork a memory of its own";
    }
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    for (int time = 0; time < 100; ++time) {
        std::vector<std::string> arguments = {"program"};
        HANDLE process = LaunchProcess(time % 2 == 0 ? "/none/program" : folder, arguments);
        if (process == nullptr) {
            _exit(write(ends[1], "x", 1) == 1 ? 127 : 1);
        }
        ASSERT_TRUE(WaitForProcess(process, 20000));
    }
    close(ends[1]);
    std::array<char, 200> written{};
    EXPECT_EQ(read(ends[0], written.data(), written.size()), 100);
    close(ends[0]);
}
