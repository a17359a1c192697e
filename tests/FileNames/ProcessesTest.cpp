#include <FrameworkBase/FileNames/Processes.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>

#include <csignal>
#include <sys/wait.h>

using namespace Tolvex::FileNames;

class ProcessesTest : public DiskTest {
protected:
    void TearDown() override {
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left, at work or waiting to be waited for";
        DiskTest::TearDown();
    }

    static HANDLE Launch(std::vector<std::string> arguments, const std::string& program) {
        HANDLE process = LaunchProcess(program, arguments);
        if (process == nullptr) {
            _exit(127);
        }
        return process;
    }

    static HANDLE Sleep(const char* seconds) { return Launch({"sleep", seconds}, "/bin/sleep"); }
};

TEST_F(ProcessesTest, ChildGetsItsArgumentsUnchangedAndTheWorkingDirectory) {
    EXPECT_EQ(TolvexSetCurrentDirectory(folder.c_str()), 0);
    const std::string script = "printf '<%s>' \"$0\" \"$@\" >output";
    EXPECT_TRUE(WaitForProcess(Launch({"sh", "-c", script, "a b", "", "*", "'\"\\$0\n"}, "/bin/sh"), 20000));
    EXPECT_EQ(Content(Path("output")), "<a b><><*><'\"\\$0\n>");
}

TEST_F(ProcessesTest, WaitLeavesTheEndOfAnotherChild) {
    const auto first = static_cast<pid_t>(reinterpret_cast<std::intptr_t>(Sleep("0")));
    EXPECT_TRUE(WaitForProcess(Sleep("0.1"), 20000));
    EXPECT_EQ(waitpid(first, nullptr, 0), first);
}

TEST_F(ProcessesTest, WaitThatIsOverLeavesTheChildAtWork) {
    HANDLE process = Sleep("60");
    EXPECT_FALSE(WaitForProcess(process, -2));
    kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
    EXPECT_TRUE(WaitForProcess(process, 20000));
}

TEST_F(ProcessesTest, ChildThatCannotStartTheProgramGetsTheNullHandle) {
    std::vector<std::string> arguments = {"program"};
    HANDLE process = LaunchProcess("/none/program", arguments);
    if (process == nullptr) {
        MakeFile("the child was here");
        _exit(127);
    }
    EXPECT_TRUE(WaitForProcess(process, 20000));
    EXPECT_TRUE(std::filesystem::exists(Path("the child was here")));
    EXPECT_FALSE(WaitForProcess(nullptr, 0));
}
