#include "tests/Faults/Faults.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/FileNames/Processes.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <array>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <system_error>

// What the library makes of answers that this system does not give, or not when a test wants them.

using namespace Tolvex;
using namespace Tolvex::FileNames;
using Faults::answers;

namespace {

class SystemTest : public DiskTest {
protected:
    ~SystemTest() override { answers = {}; }
};

pid_t Launch(std::vector<std::string> arguments) {
    HANDLE process = LaunchProcess(arguments[0], arguments);
    if (process == nullptr) {
        _exit(127);
    }
    return static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process));
}

using UnknownTypesTest = SystemTest;

TEST_F(UnknownTypesTest, FoldersAreStillTakenForFolders) {
    answers.typesUnknown = true;
    MakeTree(folder, {{"a/s/x", ""}, {"a/y", ""}, {"a/link", "-> ../t"}, {"t/z", ""}});
    EXPECT_THAT(GetFolderSubfolders(Path("a")), testing::ElementsAre("s"));
    EXPECT_THAT(GetFolderFiles(Path("a")), testing::UnorderedElementsAre("link", "y"));
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"t/", ""}}));
}

struct WaitCase {
    int timeout;
    long long slept;
};

TEST_F(SystemTest, WaitIsRoundedUpToMultiplesOf200Milliseconds) {
    answers.slept = 0;
    const pid_t child = Launch({"/bin/sleep", "60"});
    const HANDLE process = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(child));
    for (const auto& [timeout, slept] : {WaitCase{-2, 200}, {0, 200}, {199, 200}, {200, 400}, {201, 400}, {500, 600}}) {
        answers.slept = 0;
        EXPECT_FALSE(WaitForProcess(process, timeout));
        EXPECT_EQ(answers.slept, slept * 1000) << timeout;
    }
    kill(child, SIGKILL);
    EXPECT_TRUE(WaitForProcess(process, -1));
}

} // namespace
