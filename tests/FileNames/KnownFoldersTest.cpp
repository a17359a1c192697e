#include <FrameworkBase/FileNames/KnownFolders.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/Base/Platform.h>

#include <pwd.h>

using namespace Tolvex;
using namespace Tolvex::FileNames;

using HomeFolderTest = DiskTest;

TEST_F(HomeFolderTest, IsCreatedWheneverItIsMissing) {
    for (const auto function : {GetHomeFolderMac, GetHomeFolderBase, GetProgramFolderUserDocuments}) {
        EXPECT_EQ(function(), applicationFolder);
        EXPECT_EQ(std::filesystem::status(applicationFolder).permissions(), std::filesystem::perms(0755));
        EXPECT_TRUE(std::filesystem::remove(applicationFolder));
    }
}

TEST_F(HomeFolderTest, StaysTheSameWhenHomeChanges) {
    EXPECT_EQ(GetHomeFolderMac(), applicationFolder);
    const EnvironmentVariable homeLater("HOME", folder.c_str());
    EXPECT_EQ(GetHomeFolderMac(), applicationFolder);
}

TEST_F(HomeFolderTest, IsReturnedWhenItCannotBeCreated) {
    std::filesystem::remove_all(home + "/Library");
    EXPECT_EQ(GetHomeFolderMac(), applicationFolder);
    EXPECT_EQ(TreeOf(home), Tree()) << "no folder above is created";
    MakeFolder(home + "/Library/Application Support");
}

class FirstHomeFolderTest : public DiskTest {
protected:
    void TearDown() override {
        MakeEmpty(temporaryFolder); // of the sandboxes of the other processes
        DiskTest::TearDown();
    }

    /// Ends the process, which has not read HOME yet: with 0 if its home folder is `expected`.
    static void Leave(const char* value, const std::string& expected) {
        const EnvironmentVariable variable("HOME", value);
        std::exit(GetHomeFolderMac() == expected + "/Library/Application Support/Tolvex Studio 10" ? 0 : 1);
    }
};

TEST_F(FirstHomeFolderTest, KeepsTheSlashOfHome) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(Leave((home + '/').c_str(), home + '/'), testing::ExitedWithCode(0), "");
}

TEST_F(FirstHomeFolderTest, IsThatOfThePasswordDatabaseWithoutHome) {
    constexpr uid_t nobody = 65534; // who has no home folder in which one could be made
    const passwd* const user = getpwuid(nobody);
    if (user == nullptr || getuid() != 0) {
        GTEST_SKIP() << "only root can become a user without a home folder";
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leaveAsNobody = [user] {
        EXPECT_EQ(setuid(nobody), 0);
        Leave(nullptr, user->pw_dir);
    };
    EXPECT_EXIT(leaveAsNobody(), testing::ExitedWithCode(0), "");
}

class TemporaryFileTest : public DiskTest {
protected:
    void SetUp() override {
        DiskTest::SetUp();
        if (GetTempFolder() != folder + '/') {
            GTEST_SKIP() << "on this system TMPDIR does not choose the temporary folder";
        }
    }

    const EnvironmentVariable variable = EnvironmentVariable("TMPDIR", folder.c_str());
};

TEST_F(TemporaryFileTest, IsInTheFolderOfTMPDIR) {
    for (const auto function : {MacGetTempFolder, GetUnixTempFolder, GetTempFolderT, GetTempFolderRoot}) {
        EXPECT_EQ(function(), folder + '/');
    }
}

TEST_F(TemporaryFileTest, IsCreatedEmpty) {
    EXPECT_EQ(GetTempFilename("w"), Path("tolvxtmp0.w"));
    EXPECT_EQ(GetTempFilename(""), Path("tolvxtmp0."));
    EXPECT_EQ(TreeOf(folder), (Tree{{"tolvxtmp0.w", ""}, {"tolvxtmp0.", ""}}));
}

TEST_F(TemporaryFileTest, HasTheLowestFreeNumber) {
    MakeTree(folder, {{"tolvxtmp0.w", "kept"}, {"tolvxtmp1.w/", ""}, {"tolvxtmp3.w", ""}});
    EXPECT_EQ(GetTempFilename("w"), Path("tolvxtmp2.w"));
    EXPECT_EQ(Content(Path("tolvxtmp0.w")), "kept");
}

TEST_F(TemporaryFileTest, IsNotTheTenThousandAndFirst) {
    for (int number = 0; number < 9999; ++number) {
        MakeFile("tolvxtmp" + std::to_string(number) + ".x");
    }
    EXPECT_EQ(GetTempFilename("x"), Path("tolvxtmp9999.x"));
    EXPECT_THROW(GetTempFilename("x"), std::exception);
}

TEST_F(TemporaryFileTest, NameAloneLeavesNoFile) {
    MakeTree(folder, {{"tolvxtmp0.fld", "kept"}});
    EXPECT_EQ(GetTempFilenameNoCreate(), Path("tolvxtmp1.fld"));
    EXPECT_EQ(TreeOf(folder), (Tree{{"tolvxtmp0.fld", "kept"}}));
}

TEST_F(TemporaryFileTest, UniqueNameIsNumberedFromOne) {
    EXPECT_EQ(GetUniqueTempFilename("w"), Path("tolvex.w"));
    MakeFile("tolvex.w");
    EXPECT_EQ(GetUniqueTempFilename("w"), Path("tolvex1.w"));
}

TEST(ProgramFolderTest, IsThatOfTheExecutable) {
    char buffer[1040] = {};
    path_directory_programma(buffer, true);
    EXPECT_EQ(GetModuleFilename().substr(0, GetModuleFilename().rfind('/')), buffer);
}

TEST(ProgramFolderTest, IsTheOverrideAsItIs) {
    char buffer[1040] = {};
    pathFolderOverride = "/opt/app/\\";
    path_directory_programma(buffer, false);
    EXPECT_STREQ(buffer, "/opt/app/\\");
    pathFolderOverride.clear();
}
