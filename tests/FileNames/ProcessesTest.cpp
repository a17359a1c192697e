#include <FrameworkBase/FileNames/Processes.h>

#include "tests/support/DiskTest.h"

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>

using namespace Tolvex::FileNames;

class Processes : public DiskTest {
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

    /// What a program writes to the standard output that it inherits.
    std::string Output(const std::vector<std::string>& arguments, const std::string& program = "/bin/sh") const {
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

TEST_F(Processes, ArgumentsOrEnvironmentChangeOnTheWay) {
    EXPECT_EQ(Output({"hi"}, "/bin/echo"), "\n");
    EXPECT_EQ(Output({}, "/bin/echo"), "\n");
    const std::string longText(100000, 'x');
    EXPECT_EQ(Output({"a name", "-c", "printf '<%s>' \"$0\" \"$@\"", "a b", "", "*", "'\"\\$0\n", longText}),
              "<a b><><*><'\"\\$0\n><" + longText + ">");
    const EnvironmentVariable variable("FRAMEWORKBASE_TEST", "a value");
    EXPECT_EQ(Output({"sh", "-c", "echo $FRAMEWORKBASE_TEST; pwd"}), "a value\n" + workingFolder + "\n");
}

TEST_F(Processes, WaitTakesOtherChildrenOrNoneAtAll) {
    HANDLE first = Sleep("0");
    EXPECT_TRUE(WaitForProcess(Sleep("0.1"), 20000));
    EXPECT_TRUE(WaitForProcess(first, 20000));
    Sleep("0");
    EXPECT_TRUE(WaitForProcess(Sleep("0.1"), -1)) << "the wait without end takes them";
    HANDLE process = Sleep("60");
    EXPECT_FALSE(WaitForProcess(process, -2));
    kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
    EXPECT_TRUE(WaitForProcess(process, 20000));
    EXPECT_FALSE(WaitForProcess(process, 0) || WaitForProcess(nullptr, 0) || WaitForProcess(nullptr, -1));
}

TEST_F(Processes, ChildThatCannotStartTheProgramDoesNotGetTheNullHandle) {
    for (const std::string& program : {std::string("/none/program"), folder}) {
        std::vector<std::string> arguments = {"program"};
        HANDLE process = LaunchProcess(program, arguments);
        if (process == nullptr) {
            MakeFile("the child's " + std::string(program == folder ? "own" : "first"));
            _exit(127);
        }
        ASSERT_TRUE(WaitForProcess(process, 20000));
    }
    EXPECT_EQ(List(), "the child's first, the child's own") << "and no others";
}
