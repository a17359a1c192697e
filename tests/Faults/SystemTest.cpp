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

class RemovalTest : public SystemTest {
protected:
    /// Creates the tree in `folder`, which is the working directory, removes `name` from it and returns what is left.
    Tree Remove(const Tree& tree, const std::string& name, const std::function<void(const std::string&)>& meanwhile) {
        std::filesystem::current_path(folder);
        MakeTree(folder, tree);
        answers.meanwhile = meanwhile;
        remove_dir_content(Path(name).c_str(), 0);
        answers.meanwhile = nullptr;
        return TreeOf(folder);
    }
};

const std::function<void(const std::string&)> nothing = [](const std::string& /*entry*/) {};

TEST_F(RemovalTest, FollowsALinkToTheFolderAbove) {
    EXPECT_EQ(Remove({{"d/e/b", "-> .."}, {"d/e/c", "kept"}}, "d/e/b", nothing),
              (Tree{{"d/", ""}, {"d/e/", ""}, {"d/e/c", "kept"}}));
}

TEST_F(RemovalTest, KeepsALinkWhoseTargetWentBeforeIt) {
    EXPECT_EQ(Remove({{"d/a/x", ""}, {"d/l", "-> a"}}, "d", nothing), (Tree{{"d/", ""}, {"d/l", "-> a"}}));
    EXPECT_EQ(Remove({{"e/b/x", ""}, {"e/a", "-> b"}}, "e", nothing), (Tree{{"d/", ""}, {"d/l", "-> a"}}));
}

TEST_F(RemovalTest, StopsInAFolderThatIsMovedAway) {
    const auto move = [](const std::string& entry) {
        if (entry == "moves") {
            std::filesystem::rename("d", "kept");
        }
    };
    EXPECT_EQ(Remove({{"d/a", ""}, {"d/moves", ""}, {"d/n", ""}, {"d/o/f", ""}}, "d", move),
              (Tree{{"kept/", ""}, {"kept/moves", ""}, {"kept/n", ""}, {"kept/o/", ""}, {"kept/o/f", ""}}));
}

TEST_F(RemovalTest, RemovesWhatHasTakenThePlaceOfAnEntry) {
    const auto replace = [](const std::string& entry) {
        if (entry == "file") {
            std::filesystem::remove("d/file");
            std::filesystem::create_directories("d/file/inner");
        } else if (entry == "folder") {
            std::filesystem::remove("d/folder");
            std::filesystem::create_directory_symlink("../elsewhere", "d/folder");
        }
    };
    EXPECT_EQ(Remove({{"d/file", ""}, {"d/folder/", ""}, {"elsewhere/x", ""}}, "d", replace),
              (Tree{{"elsewhere/", ""}}));
}

TEST_F(SystemTest, AvailableSpaceIsThatOfOrdinaryUsers) {
    answers.blocks = 0x100000001;
    EXPECT_EQ(GetAvailableSpace(folder), 0x100000001ULL * 512);
}

TEST_F(SystemTest, AvailableSpaceOfNothingIsTheLargestNumber) {
    EXPECT_EQ(GetAvailableSpace(Path("missing")), 0xFFFFFFFFFFFFFFFFU);
}

TEST_F(SystemTest, ExecutableHasAPathOfUpTo1039Bytes) {
    for (const std::size_t length : {1039U, 1040U}) {
        std::string buffer(2000, '#');
        answers.executable = '/' + std::string(length - 1, 'p');
        EXPECT_EQ(MacGetExecutablePath(buffer.data()), length == 1039 ? 0 : -1);
        EXPECT_EQ(buffer, length == 1039 ? answers.executable + '\0' + std::string(960, '#') : std::string(2000, '#'));
    }
}

TEST_F(SystemTest, ModuleHasANameOfUpTo1023Bytes) {
    answers.executable = '/' + std::string(1022, 'p');
    EXPECT_EQ(GetModuleFilename(), answers.executable);
    answers.executable += 'p';
    EXPECT_EQ(GetModuleFilename(), "");
}

TEST_F(SystemTest, ProgramFolderLosesOneTrailingBackslash) {
    std::array<char, 1040> buffer{};
    answers.executable = "/opt/app\\\\/program";
    path_directory_programma(buffer.data(), true);
    EXPECT_STREQ(buffer.data(), "/opt/app\\");
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

TEST_F(SystemTest, ProgramIsStartedAtTheSecondAttempt) {
    answers.startsLate = true;
    answers.isInterrupted = true;
    const pid_t child = Launch({"/bin/true"});
    int status = 0;
    EXPECT_EQ(wait(&status), child) << "the first child has been waited for";
    EXPECT_EQ(status, 0) << "it ran the program";
    EXPECT_EQ(wait(&status), -1);
}

TEST_F(SystemTest, CleanupThatGetsNoThreadHasCreatedTheApplicationFolder) {
    const auto cleanUp = [] { EXPECT_THROW(CleanupTrashFolder(false, {}), std::system_error); };
    Faults::Strike({2, EACCES, false, false}, cleanUp); // the first call makes the application folder
    EXPECT_TRUE(std::filesystem::is_directory(applicationFolder));
}

} // namespace
