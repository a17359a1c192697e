#include <FrameworkBase/Base/internal/HostPlatform.h>

#include "tests/support/DiskTest.h"

#include <iostream>

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
    const auto answerIs = [user](const char* variable, const std::string& answer) {
        const EnvironmentVariable temporary("TMPDIR", variable);
        const auto ask = [user] { std::cerr << (setuid(user) == 0 ? GetTemporaryFolder() : "root"), _exit(0); };
        EXPECT_EXIT(ask(), testing::ExitedWithCode(0), '^' + answer + '$');
    };
    answerIs("", folder + '/');
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    answerIs(nullptr, folder + '/');
    for (const auto open : {fs::perms::group_read, fs::perms::others_exec}) {
        fs::permissions(folder, fs::perms::owner_all | open);
        answerIs(nullptr, "/tmp/");
    }
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_EQ(chown(folder.c_str(), 0, 0), 0);
    answerIs(nullptr, "/tmp/"); // root's
    EXPECT_EQ(chown(folder.c_str(), user, user), 0);
    fs::rename(folder, folder + "-elsewhere");
    fs::create_symlink(folder + "-elsewhere", folder);
    EXPECT_EQ(lchown(folder.c_str(), user, user), 0);
    answerIs(nullptr, "/tmp/"); // a link to a folder of the user's
    fs::remove(folder);
    fs::remove(folder + "-elsewhere");
}
