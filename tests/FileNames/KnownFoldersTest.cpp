#include "FrameworkBase/FileNames/KnownFolders.h"

#include "FrameworkBase/Base/Platform.h"
#include "tests/FileNames/PathTables.h"

#include <array>
#include <fstream>

using namespace Tolvex;
using namespace Tolvex::FileNames;

class KnownFolders : public DiskTreeTest {};

TEST_F(KnownFolders, ApplicationFolderIsMadeAgainWheneverItIsMissing) {
    for (const auto function : {GetHomeFolderMac, GetHomeFolderBase, GetProgramFolderUserDocuments}) {
        EXPECT_EQ(function(), applicationFolder);
        EXPECT_TRUE(std::filesystem::remove(applicationFolder));
    }
    const EnvironmentVariable homeLater("HOME", folder.c_str());
    std::filesystem::remove_all(home + "/Library");
    EXPECT_EQ(GetHomeFolderMac(), applicationFolder) << "HOME is read once, and no folder above is made";
    EXPECT_EQ(List(home), "");
}

TEST_F(KnownFolders, SeparatorAtTheEndOfHomeIsKept) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, which has not read HOME yet
    const auto leave = [this] {
        const EnvironmentVariable variable("HOME", (home + '/').c_str());
        std::exit(GetHomeFolderMac() == home + "//Library/Application Support/Tolvex Studio 10" ? 0 : 1);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
    Tree(temporaryFolder); // the other process was in a sandbox there
}

TEST_F(KnownFolders, TemporaryFilesTakeTheLowestFreeNumber) {
    const EnvironmentVariable variable("TMPDIR", folder.c_str());
    for (const auto function :
         {MacGetTempFolder, GetUnixTempFolder, GetTempFolder, GetTempFolderT, GetTempFolderRoot}) {
        EXPECT_EQ(function(), folder + '/') << "asked anew";
    }
    Make("tolvxtmp2.wav/, tolvxtmp0.fld, tolvex.wav");
    for (const char* name : {"tolvxtmp0.wav", "tolvxtmp1.wav", "tolvxtmp3.wav"}) {
        EXPECT_EQ(GetTempFilename("wav"), Path(name)); // the folder can be neither opened nor created
        EXPECT_EQ(Content(Path(name)), "");
    }
    std::filesystem::remove(Path("tolvxtmp1.wav"));
    EXPECT_EQ(GetTempFilename("wav"), Path("tolvxtmp1.wav"));
    EXPECT_EQ(GetTempFilename(""), Path("tolvxtmp0."));
    EXPECT_EQ(GetTempFilename(".x"), Path("tolvxtmp0..x"));
    EXPECT_EQ(GetTempFilenameNoCreate(), Path("tolvxtmp1.fld"));
    EXPECT_EQ(GetUniqueTempFilename("wav"), Path("tolvex1.wav"));
    EXPECT_EQ(GetUniqueTempFilename("aif"), Path("tolvex.aif"));
    EXPECT_EQ(List(),
              "tolvex.wav, tolvxtmp0., tolvxtmp0..x, tolvxtmp0.fld, tolvxtmp0.wav, tolvxtmp1.wav, tolvxtmp2.wav/, "
              "tolvxtmp3.wav");
}

TEST_F(KnownFolders, TemporaryNumbersEndAt9999) {
    for (int number = 0; number < 9999; ++number) {
        const std::ofstream file(temporaryFolder + "/tolvxtmp" + std::to_string(number) + ".x");
    }
    EXPECT_EQ(GetTempFilename("x"), temporaryFolder + "/tolvxtmp9999.x");
    EXPECT_THROW(GetTempFilename("x"), std::exception);
    EXPECT_EQ(Tree(temporaryFolder).size(), 10000U);
}

TEST_F(KnownFolders, ProgramFolderIsTheExecutablesOrTheOverride) {
    const std::string path = std::filesystem::read_symlink("/proc/self/exe");
    std::array<char, 1040> buffer{};
    EXPECT_EQ(MacGetExecutablePath(buffer.data()), 0);
    EXPECT_EQ(buffer.data() + GetModuleFilename(), path + path);
    path_directory_programma(buffer.data(), true);
    EXPECT_EQ(buffer.data(), path.substr(0, path.rfind('/')));
    pathFolderOverride = "/opt/app/\\";
    path_directory_programma(buffer.data(), false);
    EXPECT_STREQ(buffer.data(), "/opt/app/\\") << "as it is";
    pathFolderOverride.clear();
}
