#include "tests/Faults/Faults.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/Processes.h>

#include <csignal>
#include <gmock/gmock.h>

// What the library makes of answers that this system does not give, or not when a test wants them.

using namespace Tolvex;
using namespace Tolvex::FileNames;
using Faults::answers;

namespace {

class SystemTest : public DiskTest {
protected:
    ~SystemTest() override { answers = {}; }
};

TEST_F(SystemTest, FoldersOfUnknownTypeCountAsFolders) {
    answers.typesUnknown = true;
    MakeTree(folder, {{"a/s/x", ""}, {"a/y", ""}, {"a/link", "-> ../t"}, {"t/z", ""}});
    EXPECT_THAT(GetFolderSubfolders(Path("a")), testing::ElementsAre("s"));
    EXPECT_THAT(GetFolderFiles(Path("a")), testing::UnorderedElementsAre("link", "y"));
    remove_dir_content(Path("a").c_str(), 0);
    EXPECT_EQ(TreeOf(folder), (Tree{{"t/", ""}}));
}

TEST_F(SystemTest, WaitIsRoundedUpToMultiplesOf200Milliseconds) {
    std::vector<std::string> arguments = {"sleep", "60"};
    HANDLE process = LaunchProcess("/bin/sleep", arguments);
    ASSERT_NE(process, nullptr);
    for (const auto& [timeout, slept] :
         {std::pair(-2, 200), {0, 200}, {199, 200}, {200, 400}, {201, 400}, {500, 600}}) {
        answers.slept = 0;
        EXPECT_FALSE(WaitForProcess(process, timeout));
        EXPECT_EQ(answers.slept, slept * 1000LL) << timeout;
    }
    kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
    EXPECT_TRUE(WaitForProcess(process, -1));
}

} // namespace
