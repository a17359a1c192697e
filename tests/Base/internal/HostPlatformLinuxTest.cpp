#include <FrameworkBase/Base/internal/HostPlatform.h>

#include "tests/support/DiskTest.h"

#include <iostream>

using Tolvex::HostPlatform::GetTemporaryFolder;
namespace fs = std::filesystem;

namespace {

TEST(TemporaryFolderTest, IsThatOfTMPDIRWithATrailingSlash) {
    for (const std::string value : {"/a b", "relative", "/no/such//", "/"}) {
        const EnvironmentVariable variable("TMPDIR", value.c_str());
        EXPECT_EQ(GetTemporaryFolder(), value.back() == '/' ? value : value + '/');
    }
}

/// Becomes the user, and ends the process after it has written what is the temporary folder without TMPDIR.
void LeaveWithTheFolderOf(uid_t user) {
    const EnvironmentVariable variable("TMPDIR", nullptr);
    if (setuid(user) == 0) {
        std::cerr << GetTemporaryFolder();
    }
    _exit(0);
}

TEST(TemporaryFolderDeathTest, IsOneThatOnlyItsUserMayEnterWithoutTMPDIR) {
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    const uid_t user = 60000 + static_cast<uid_t>(getpid()) % 4000; // nobody is, so that the folder is no one's own
    const std::string folder = "/tmp/tolvex-" + std::to_string(user);
    EXPECT_EXIT(LeaveWithTheFolderOf(user), testing::ExitedWithCode(0), '^' + folder + "/$");
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    fs::permissions(folder, fs::perms::owner_all | fs::perms::others_exec);
    EXPECT_EXIT(LeaveWithTheFolderOf(user), testing::ExitedWithCode(0), "^/tmp/$");
    fs::remove(folder);
}

} // namespace
