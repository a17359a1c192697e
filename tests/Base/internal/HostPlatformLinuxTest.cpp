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

/// The folder of a user without TMPDIR: a user that nobody is, whose folder is no one's own.
class PrivateTemporaryFolderTest : public testing::Test {
protected:
    void SetUp() override {
        if (getuid() != 0) {
            GTEST_SKIP() << "only root can become another user";
        }
    }

    void TearDown() override { fs::remove_all(folder); }

    void MakeFolderOf(uid_t owner, fs::perms permissions) const {
        fs::create_directory(folder);
        fs::permissions(folder, permissions);
        EXPECT_EQ(chown(folder.c_str(), owner, owner), 0);
    }

    /// Ends the process after it has written what is the temporary folder for `user`.
    void LeaveWithTheFolder() const {
        const EnvironmentVariable variable("TMPDIR", nullptr);
        if (setuid(user) == 0) {
            std::cerr << GetTemporaryFolder();
        }
        _exit(0);
    }

    void ExpectFolder(const std::string& expected) const {
        EXPECT_EXIT(LeaveWithTheFolder(), testing::ExitedWithCode(0), '^' + expected + '$');
    }

    const uid_t user = 60000 + static_cast<uid_t>(getpid()) % 4000;
    const std::string folder = "/tmp/tolvex-" + std::to_string(user);
};

TEST_F(PrivateTemporaryFolderTest, IsCreatedForItsUserAlone) {
    ExpectFolder(folder + '/');
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    ExpectFolder(folder + '/');
}

TEST_F(PrivateTemporaryFolderTest, IsNotOneThatOthersMayEnter) {
    MakeFolderOf(user, fs::perms::owner_all | fs::perms::others_exec);
    ExpectFolder("/tmp/");
}

TEST_F(PrivateTemporaryFolderTest, IsNotOneOfAnotherUser) {
    MakeFolderOf(0, fs::perms::owner_all);
    ExpectFolder("/tmp/");
}

TEST_F(PrivateTemporaryFolderTest, IsNotALink) {
    MakeFolderOf(user, fs::perms::owner_all);
    fs::rename(folder, folder + "-elsewhere");
    fs::create_symlink(folder + "-elsewhere", folder);
    EXPECT_EQ(lchown(folder.c_str(), user, user), 0);
    ExpectFolder("/tmp/");
    fs::remove(folder + "-elsewhere");
}

} // namespace
