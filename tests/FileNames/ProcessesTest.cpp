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

    /// What a shell writes to "output" in `folder`.
    std::string Output(const std::vector<std::string>& arguments) const {
        EXPECT_EQ(TolvexSetCurrentDirectory(folder.c_str()), 0);
        EXPECT_TRUE(WaitForProcess(Launch(arguments, "/bin/sh"), 20000));
        return Content("output");
    }
};

TEST_F(ProcessesTest, ChildGetsItsArgumentsUnchanged) {
    const std::string longText(100000, 'x');
    EXPECT_EQ(Output({"a name", "-c", "printf '<%s>' \"$0\" \"$@\" >output", "a b", "", "*", "'\"\\$0\n", longText}),
              "<a b><><*><'\"\\$0\n><" + longText + ">");
}

TEST_F(ProcessesTest, WaitLeavesTheEndOfAnotherChild) {
    HANDLE first = Sleep("0");
    EXPECT_TRUE(WaitForProcess(Sleep("0.1"), 20000));
    EXPECT_TRUE(WaitForProcess(first, 20000));
}

TEST_F(ProcessesTest, WaitWithoutEndTakesTheEndOfEveryChild) {
    Sleep("0");
    EXPECT_TRUE(WaitForProcess(Sleep("0.1"), -1));
}

TEST_F(ProcessesTest, WaitThatIsOverLeavesTheChildAtWork) {
    HANDLE process = Sleep("60");
    EXPECT_FALSE(WaitForProcess(process, -2));
    kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
    EXPECT_TRUE(WaitForProcess(process, 20000));
}

TEST_F(ProcessesTest, ChildThatCannotStartTheProgramGetsTheNullHandle) {
    for (const std::string& program : {std::string("/none/program"), folder}) {
        std::vector<std::string> arguments = {"program"};
        HANDLE process = LaunchProcess(program, arguments);
        if (process == nullptr) {
            MakeFile(program == folder ? "second" : "first");
            _exit(127);
        }
        ASSERT_TRUE(WaitForProcess(process, 20000));
    }
    EXPECT_EQ(TreeOf(folder), (Tree{{"first", ""}, {"second", ""}}));
}
