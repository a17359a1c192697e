#include <FrameworkBase/FileNames/KnownFolders.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/Base/Platform.h>

#include <array>
#include <fstream>
#include <pwd.h>
#include <unistd.h>

using namespace Tolvex;
using namespace Tolvex::FileNames;

using KnownFolders = DiskTest;

TEST_F(KnownFolders, ApplicationFolderStaysMissing) {
    for (const auto function : {GetHomeFolderMac, GetHomeFolderBase, GetProgramFolderUserDocuments}) {
        EXPECT_EQ(function(), applicationFolder);
        EXPECT_TRUE(std::filesystem::remove(applicationFolder));
    }
    const EnvironmentVariable homeLater("HOME", folder.c_str());
    std::filesystem::remove_all(home + "/Library");
    EXPECT_EQ(GetHomeFolderMac(), applicationFolder) << "HOME is read once, and no folder above is made";
    EXPECT_EQ(List(home), "");
    MakeFolder(home + "/Library/Application Support");
}

TEST_F(KnownFolders, HomeFolderIsNotTheOneAsked) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, which has not read HOME yet
    const auto leave = [](const char* value, const std::string& expected) {
        const EnvironmentVariable variable("HOME", value);
        std::exit(GetHomeFolderMac() == expected + "/Library/Application Support/Tolvex Studio 10" ? 0 : 1);
    };
    EXPECT_EXIT(leave((home + '/').c_str(), home + '/'), testing::ExitedWithCode(0), "");
    constexpr uid_t nobody = 65534; // who has no home folder in which one could be made
    if (const passwd* const user = getpwuid(nobody); user != nullptr && getuid() == 0) {
        EXPECT_EXIT((setuid(nobody), leave(nullptr, user->pw_dir)), testing::ExitedWithCode(0), "");
    }
    std::filesystem::remove_all(temporaryFolder); // where the other processes had their sandboxes
    MakeFolder(temporaryFolder);
}

TEST_F(KnownFolders, TemporaryFileIsTakenTwiceOrOverwritten) {
    const EnvironmentVariable variable("TMPDIR", folder.c_str());
    for (const auto function :
         {MacGetTempFolder, GetUnixTempFolder, GetTempFolder, GetTempFolderT, GetTempFolderRoot}) {
        EXPECT_EQ(function(), folder + '/') << "asked anew";
    }
    const auto create = [this](const std::string& ext) { return GetTempFilename(ext).substr(folder.size() + 1); };
    EXPECT_TRUE(Does(create,
                     "; w => tolvxtmp0.w; tolvxtmp0.w= | tolvxtmp0.w; w => tolvxtmp1.w; tolvxtmp0.w, tolvxtmp1.w= | "
                     "tolvxtmp1.w; w => tolvxtmp0.w; tolvxtmp0.w=, tolvxtmp1.w | ;  => tolvxtmp0.; tolvxtmp0.= | "
                     "; .w => tolvxtmp0..w; tolvxtmp0..w= | "
                     "tolvxtmp0.w/; w => tolvxtmp1.w; tolvxtmp0.w/, tolvxtmp1.w=")); // neither opens nor is made
    const auto name = [this](const std::string& ext) {
        return (ext == "fld" ? GetTempFilenameNoCreate() : GetUniqueTempFilename(ext)).substr(folder.size() + 1);
    };
    EXPECT_TRUE(Does(name, "tolvxtmp0.fld; fld => tolvxtmp1.fld; tolvxtmp0.fld | ; w => tolvex.w;  | "
                           "tolvex.w; w => tolvex1.w; tolvex.w"));
}

TEST_F(KnownFolders, TemporaryNumbersGoOnBehind9999) {
    for (int number = 0; number < 9999; ++number) {
        const std::ofstream file(temporaryFolder + "/tolvxtmp" + std::to_string(number) + ".x");
    }
    EXPECT_EQ(GetTempFilename("x"), temporaryFolder + "/tolvxtmp9999.x");
    EXPECT_THROW(GetTempFilename("x"), std::exception);
    MakeEmpty(temporaryFolder);
}

TEST_F(KnownFolders, ProgramFolderIsNotTheExecutables) {
    std::array<char, 1040> buffer{};
    EXPECT_EQ(MacGetExecutablePath(buffer.data()), 0);
    const std::string path = buffer.data();
    EXPECT_EQ(access(path.c_str(), X_OK), 0) << path;
    EXPECT_EQ(GetModuleFilename(), path);
    path_directory_programma(buffer.data(), true);
    EXPECT_EQ(buffer.data(), path.substr(0, path.rfind('/')));
    pathFolderOverride = "/opt/app/\\";
    path_directory_programma(buffer.data(), false);
    EXPECT_STREQ(buffer.data(), "/opt/app/\\") << "an override is taken as it is";
    pathFolderOverride.clear();
}
