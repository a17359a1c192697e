#include <FrameworkBase/Base/internal/HostPlatform.h>

#include "tests/support/DiskTest.h"

#include <iostream>
#include <sys/stat.h>

using Tolvex::HostPlatform::GetTemporaryFolder;
namespace fs = std::filesystem;

TEST(HostPlatformLinux, TemporaryFolderIsNotTheOneOfTheEnvironmentAtEachCall) {
    for (const std::string value : {"/a", "/a b/", "relative", "/no/such//", "/"}) {
        const EnvironmentVariable variable("TMPDIR", value.c_str());
        EXPECT_EQ(GetTemporaryFolder(), value.back() == '/' ? value : value + '/');
    }
}

TEST(HostPlatformLinuxDeathTest, PrivateTemporaryFolderMayBeSomebodyElses) {
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can become a user that nobody is, whose folder is no one's own";
    }
    const uid_t user = 60000 + static_cast<uid_t>(getpid()) % 4000;
    const std::string folder = "/tmp/tolvex-" + std::to_string(user);
    const auto answerIs = [user](const std::string& answer) {
        const auto ask = [user] { std::cerr << (setuid(user) == 0 ? GetTemporaryFolder() : "root"), _exit(0); };
        EXPECT_EXIT(ask(), testing::ExitedWithCode(0), '^' + answer + '$');
    };
    for (const char* unset : {"", static_cast<const char*>(nullptr)}) {
        const EnvironmentVariable variable("TMPDIR", unset);
        answerIs(folder + '/'); // made, and then found
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    }
    const EnvironmentVariable variable("TMPDIR", nullptr);
    for (const auto open : {fs::perms::group_read, fs::perms::others_write, fs::perms::others_exec}) {
        fs::permissions(folder, fs::perms::owner_all | open);
        answerIs("/tmp/");
    }
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_EQ(chown(folder.c_str(), 0, 0), 0);
    answerIs("/tmp/"); // root's
    const std::string elsewhere = folder + "-elsewhere";
    fs::rename(folder, elsewhere);
    fs::create_symlink(elsewhere, folder);
    EXPECT_EQ(chown(elsewhere.c_str(), user, user) + lchown(folder.c_str(), user, user), 0);
    answerIs("/tmp/"); // a link to a folder of the user's
    fs::remove(elsewhere);
    fs::remove(folder);
}
