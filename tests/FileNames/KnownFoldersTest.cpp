#include <FrameworkBase/FileNames/KnownFolders.h>

#include "tests/support/DiskTest.h"

using namespace Tolvex::FileNames;

using HomeFolderTest = DiskTest;

TEST_F(HomeFolderTest, IsCreatedWheneverItIsMissing) {
    for (const auto function : {GetHomeFolderMac, GetHomeFolderBase, GetProgramFolderUserDocuments}) {
        EXPECT_EQ(function(), applicationFolder);
        EXPECT_EQ(std::filesystem::status(applicationFolder).permissions(), std::filesystem::perms(0755));
        EXPECT_TRUE(std::filesystem::remove(applicationFolder));
    }
}

class TemporaryFileTest : public DiskTest {
protected:
    void SetUp() override {
        DiskTest::SetUp();
        setenv("TMPDIR", folder.c_str(), 1);
        if (GetTempFolder() != folder + '/') {
            GTEST_SKIP() << "on this system TMPDIR does not choose the temporary folder";
        }
    }
};

TEST_F(TemporaryFileTest, IsInTheFolderOfTMPDIR) {
    for (const auto function : {MacGetTempFolder, GetUnixTempFolder, GetTempFolderT, GetTempFolderRoot}) {
        EXPECT_EQ(function(), folder + '/');
    }
}

TEST_F(TemporaryFileTest, HasTheLowestFreeNumber) {
    MakeTree(folder, {{"tolvxtmp0.w", "kept"}, {"tolvxtmp1.w/", ""}, {"tolvxtmp3.w", ""}});
    EXPECT_EQ(GetTempFilename("w"), Path("tolvxtmp2.w"));
    EXPECT_EQ(GetTempFilename("x"), Path("tolvxtmp0.x"));
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

TEST_F(TemporaryFileTest, IsInAFolderOfItsUserAloneWithoutTMPDIR) {
    unsetenv("TMPDIR");
    const std::string privateFolder = GetTempFolder();
    EXPECT_EQ(privateFolder, "/tmp/tolvex-" + std::to_string(getuid()) + '/');
    EXPECT_EQ(std::filesystem::status(privateFolder).permissions(), std::filesystem::perms::owner_all);
    std::filesystem::remove(privateFolder);
}

TEST(ProgramFolderTest, IsThatOfTheExecutable) {
    char buffer[1040] = {};
    Tolvex::path_directory_programma(buffer, true);
    EXPECT_EQ(GetModuleFilename().substr(0, GetModuleFilename().rfind('/')), buffer);
}
