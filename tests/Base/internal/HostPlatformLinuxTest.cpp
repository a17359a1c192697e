#include <FrameworkBase/Base/internal/HostPlatform.h>

#include "tests/support/DiskTest.h"

#include <filesystem>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

using namespace Tolvex::HostPlatform;
namespace fs = std::filesystem;

TEST(HostPlatform, TemporaryFolderIsTheOneOfTheEnvironmentAtEveryCall) {
    for (const std::string value : {"/a", "/a b/", "relative", "/no/such//", "/"}) {
        const EnvironmentVariable variable("TMPDIR", value.c_str());
        EXPECT_EQ(GetTemporaryFolder(), value.back() == '/' ? value : value + '/');
    }
}

TEST(HostPlatformDeathTest, PrivateTemporaryFolderIsUsedWhenNobodyElseCanHaveMadeIt) {
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can become a user that nobody is, whose folder is no one's own";
    }
    const uid_t user = 60000 + static_cast<uid_t>(getpid()) % 4000;
    const std::string folder = "/tmp/tolvex-" + std::to_string(user);
    const auto answerIs = [user](const std::string& answer) {
        const auto ask = [user] { std::cerr << (setuid(user) == 0 ? GetTemporaryFolder() : "root"), _exit(0); };
        EXPECT_EXIT(ask(), testing::ExitedWithCode(0), '^' + answer + '$');
    };
    fs::remove_all(folder);
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
    fs::remove(folder);
    umask(077);
    fs::create_directory(folder);
    answerIs("/tmp/"); // root's
    const std::string elsewhere = folder + "-elsewhere";
    fs::rename(folder, elsewhere);
    fs::create_symlink(elsewhere, folder);
    EXPECT_EQ(chown(elsewhere.c_str(), user, user) + lchown(folder.c_str(), user, user), 0);
    answerIs("/tmp/"); // a link to a folder of the user's
    fs::remove(elsewhere);
    fs::remove(folder);
    umask(022);
}

TEST(HostPlatform, ExecutablePathNeedsRoomForItsTerminator) {
    const std::string path = fs::read_symlink("/proc/self/exe").string();
    const auto length = static_cast<std::uint32_t>(path.size());
    for (const std::uint32_t size : {0U, 1U, length, length + 1, 2000U}) {
        std::string buffer(2000, '#');
        const bool fits = size > length;
        EXPECT_EQ(GetExecutablePath(buffer.data(), size), fits ? 0 : -1);
        EXPECT_EQ(buffer, fits ? path + '\0' + std::string(1999 - length, '#') : std::string(2000, '#'));
    }
}
