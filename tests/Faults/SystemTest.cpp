#include "tests/Faults/Faults.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/FileNames/Processes.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <sys/wait.h>
#include <system_error>

// What the library makes of answers that this system does not give, or not when a test wants them.

using namespace Tolvex;
using namespace Tolvex::FileNames;
using Faults::answers;

namespace {

struct SystemTest : DiskTest {
    ~SystemTest() override { answers = {}; }
};

pid_t Launch(std::vector<std::string> arguments) {
    HANDLE process = LaunchProcess(arguments[0], arguments);
    if (process == nullptr) {
        _exit(127);
    }
    return static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process));
}

TEST_F(SystemTest, FoldersAreTakenForFilesWhereTypesAreUnknown) {
    answers.typesUnknown = true;
    Make("a/s/x, a/y, t/z, a/l -> ../t");
    EXPECT_EQ(Joined(GetFolderSubfolders(Path("a"))), "s");
    std::vector<std::string> files = GetFolderFiles(Path("a"));
    std::sort(files.begin(), files.end());
    EXPECT_EQ(Joined(files), "l, y");
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(List(), "t/");
}

TEST_F(SystemTest, RemovalForgetsThatOthersAreAtWork) {
    namespace fs = std::filesystem;
    const auto others = [](const std::string& name) {
        if (name == "moves") {
            fs::rename("d", "kept");
        } else if (name == "file") {
            fs::remove("d/file");
            fs::create_directories("d/file/inner");
        } else if (name == "folder") {
            fs::remove("d/folder");
            fs::create_directory_symlink("../elsewhere", "d/folder");
        }
    };
    const auto remove = [this, others](const std::string& name) {
        answers.meanwhile = others;
        remove_dir_content(Path(name).c_str(), 0);
        answers.meanwhile = nullptr;
        return "";
    };
    EXPECT_TRUE(Does(remove, "d/e/c, d/e/b -> ..; d/e/b => ; d/, d/e/, d/e/c | "
                             "D/F/1, D/F/2, D/F/a, D/F/b, D/F/U -> ../../K, K/, K/M -> ../D; K/M/F => ; "
                             "D/, D/F/, D/F/U, D/F/a, D/F/b, K/ | "
                             "d/a/x, d/l -> a; d => ; d/, d/l | d/b/x, d/a -> b; d => ;  | "
                             "d/a, d/b, d/moves, d/n, d/o/f; d => ; kept/, kept/moves=d/moves, kept/n=d/n, kept/o/, "
                             "kept/o/f=d/o/f | d/file, d/folder/, elsewhere/x; d => ; elsewhere/"));
}

TEST_F(SystemTest, BlocksOfTheSuperuserCountAsAvailable) {
    answers.blocks = 0x100000001;
    EXPECT_EQ(GetAvailableSpace(folder), 0x100000001ULL * 512);
    answers.blocks = 0;
    EXPECT_EQ(GetAvailableSpace(Path("missing")), 0xFFFFFFFFFFFFFFFFU);
}

TEST_F(SystemTest, PathOfTheExecutableOverrunsTheBufferOrKeepsABackslash) {
    std::array<char, 2000> buffer{};
    for (const std::size_t length : {1023U, 1024U, 1039U, 1040U, 1500U}) {
        buffer.fill('#');
        answers.executable = '/' + std::string(length - 1, 'p');
        EXPECT_EQ(MacGetExecutablePath(buffer.data()), length < 1040 ? 0 : -1);
        EXPECT_EQ(std::count(buffer.begin(), buffer.end(), '#'),
                  length < 1040 ? 1999 - static_cast<int>(length) : 2000);
        EXPECT_EQ(GetModuleFilename(), length < 1024 ? answers.executable : "");
        path_directory_programma(buffer.data(), true);
        EXPECT_STREQ(buffer.data(), "");
    }
    answers.executable = "/opt/app\\\\/program";
    path_directory_programma(buffer.data(), true);
    EXPECT_STREQ(buffer.data(), "/opt/app\\") << "one of them goes";
}

TEST_F(SystemTest, WaitEndsARoundEarlyOrLate) {
    answers.slept = 0;
    const pid_t child = Launch({"/bin/sleep", "60"});
    const HANDLE process = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(child));
    constexpr std::array<int, 2> rows[] = {{-2, 200}, {0, 200}, {199, 200}, {200, 400}, {201, 400}, {500, 600}};
    for (const auto [timeout, expected] : rows) {
        answers.slept = 0;
        EXPECT_FALSE(WaitForProcess(process, timeout));
        EXPECT_EQ(answers.slept, expected * 1000LL) << timeout;
    }
    kill(child, SIGKILL);
    EXPECT_TRUE(WaitForProcess(process, -1));
}

TEST_F(SystemTest, SecondAttemptToStartDoesNotStartOrLeavesTheFirstChild) {
    answers.startsLate = answers.isInterrupted = true;
    const pid_t child = Launch({"/bin/true"});
    int status = 0;
    EXPECT_EQ(wait(&status), child) << "the other one has been waited for";
    EXPECT_EQ(status, 0) << "it ran the program";
    EXPECT_EQ(wait(&status), -1);
}

TEST_F(SystemTest, TrashFolderIsAskedForOnTheThreadOfTheCleanup) {
    const auto cleanUp = [] { EXPECT_THROW(CleanupTrashFolder(false, {}), std::system_error); };
    Faults::Strike({2, EACCES, false, false}, cleanUp); // the first call makes the application folder
    EXPECT_EQ(List(home + "/Library/Application Support"), "Tolvex Studio 10/");
}

} // namespace
