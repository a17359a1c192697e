#include "FrameworkBase/Base/internal/HostPlatform.h"

#include "tests/support/DiskTest.h"

#include <filesystem>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace Tolvex::HostPlatform;
namespace fs = std::filesystem;

namespace {

TEST(HostPlatform, TemporaryFolderIsTheOneOfTheEnvironmentAtEveryCall) {
    const std::vector<std::pair<const char*, std::string>> cases = {{"/a", "/a/"},
                                                                    {"/a/", "/a/"},
                                                                    {"/a//", "/a//"},
                                                                    {"/", "/"},
                                                                    {"relative", "relative/"},
                                                                    {"/no/such", "/no/such/"}};
    for (const auto& [value, expected] : cases) {
        const EnvironmentVariable variable("TMPDIR", value);
        EXPECT_EQ(GetTemporaryFolder(), expected);
    }
}

/// The folder of a user that nobody is, so that no one's own folder is touched.
class PrivateTemporaryFolder : public testing::Test {
protected:
    PrivateTemporaryFolder() { fs::remove_all(folder); }
    ~PrivateTemporaryFolder() override { fs::remove_all(folder); }

    void SetUp() override {
        if (getuid() != 0) {
            GTEST_SKIP() << "only root can become another user";
        }
    }

    /// What the library answers to that user.
    void ExpectAnswer(const std::string& answer) const {
        const auto tellAnswer = [this] {
            std::cerr << (setuid(user) == 0 ? GetTemporaryFolder() : "still root");
            _exit(0);
        };
        EXPECT_EXIT(tellAnswer(), testing::ExitedWithCode(0), '^' + answer + '$');
    }

    void GiveToUser() const { ASSERT_EQ(lchown(folder.c_str(), user, user), 0); }

    const uid_t user = 60000 + static_cast<uid_t>(getpid()) % 4000;
    const std::string folder = "/tmp/tolvex-" + std::to_string(user);
};
using PrivateTemporaryFolderDeathTest = PrivateTemporaryFolder;

TEST_F(PrivateTemporaryFolderDeathTest, IsMadeForTheUserAlone) {
    for (const char* unset : {static_cast<const char*>(nullptr), ""}) {
        const EnvironmentVariable variable("TMPDIR", unset);
        ExpectAnswer(folder + '/');
        ExpectAnswer(folder + '/'); // again, now that it is there
        struct stat status {};
        ASSERT_EQ(lstat(folder.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode, S_IFDIR | 0700U);
        EXPECT_EQ(status.st_uid, user);
        fs::remove_all(folder);
    }
}

TEST_F(PrivateTemporaryFolderDeathTest, IsNotUsedWhenSomebodyElseMayHaveMadeIt) {
    const EnvironmentVariable variable("TMPDIR", nullptr);

    fs::create_directory(folder); // root's
    fs::permissions(folder, fs::perms::owner_all);
    ExpectAnswer("/tmp/");
    GiveToUser();
    ExpectAnswer(folder + '/');
    for (const fs::perms openToOthers : {fs::perms::group_read, fs::perms::others_write, fs::perms::others_exec}) {
        fs::permissions(folder, fs::perms::owner_all | openToOthers);
        ExpectAnswer("/tmp/");
    }

    fs::remove(folder);
    fs::create_directory_symlink("/tmp", folder);
    GiveToUser();
    ExpectAnswer("/tmp/");

    fs::remove(folder);
    fclose(fopen(folder.c_str(), "w"));
    fs::permissions(folder, fs::perms::owner_all);
    GiveToUser();
    ExpectAnswer("/tmp/");
}

TEST(HostPlatform, ExecutablePathNeedsRoomForItsTerminator) {
    const std::string path = fs::read_symlink("/proc/self/exe").string();
    const auto length = static_cast<std::uint32_t>(path.size());
    std::string buffer(2000, '#');
    for (const std::uint32_t size : {0U, 1U, length}) {
        EXPECT_EQ(GetExecutablePath(buffer.data(), size), -1);
        EXPECT_EQ(buffer, std::string(2000, '#'));
    }
    for (const std::uint32_t size : {length + 1, 2000U}) {
        buffer.assign(2000, '#');
        EXPECT_EQ(GetExecutablePath(buffer.data(), size), 0);
        EXPECT_EQ(buffer, path + '\0' + std::string(2000 - length - 1, '#'));
    }
}

TEST(HostPlatform, ErrorStreamIsTheStandardOne) { EXPECT_EQ(&ErrorStream(), &std::cerr); }

} // namespace
