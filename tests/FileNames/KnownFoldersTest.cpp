#include <FrameworkBase/FileNames/KnownFolders.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/Base/Platform.h>

#include <fstream>
#include <pwd.h>

using namespace Tolvex;
using namespace Tolvex::FileNames;

using KnownFolders = DiskTest;

TEST_F(KnownFolders, ApplicationFolderStaysMissing) {
    for (const auto function : {GetHomeFolderMac, GetHomeFolderBase, GetProgramFolderUserDocuments}) {
        EXPECT_EQ(function(), applicationFolder);
        EXPECT_EQ(std::filesystem::status(applicationFolder).permissions(), std::filesystem::perms(0755));
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
    MakeEmpty(temporaryFolder); // of the other processes' sandboxes
}

TEST_F(KnownFolders, TemporaryFileIsTakenTwiceOrOverwritten) {
#ifdef __APPLE__
    GTEST_SKIP() << "TMPDIR need not choose the temporary folder here, and the user's own is no place for tests";
#endif
    const EnvironmentVariable variable("TMPDIR", folder.c_str());
    for (const auto function :
         {MacGetTempFolder, GetUnixTempFolder, GetTempFolder, GetTempFolderT, GetTempFolderRoot}) {
        EXPECT_EQ(function(), folder + '/') << "asked anew";
    }
    const auto make = [this](const std::string& ext, const std::string& how) {
        const auto function = how == "unique" ? GetUniqueTempFilename : GetTempFilename;
        return (how == "none" ? GetTempFilenameNoCreate() : function(ext)).substr(folder.size() + 1);
    };
    EXPECT_TRUE(Does(make, "; w => tolvxtmp0.w; tolvxtmp0.w= | ;  => tolvxtmp0.; tolvxtmp0.= | "
                           "tolvxtmp1.w; w => tolvxtmp0.w; tolvxtmp0.w=, tolvxtmp1.w | "
                           "tolvxtmp0.w/; w => tolvxtmp1.w; tolvxtmp0.w/, tolvxtmp1.w= | " // neither opens nor is made
                           "tolvxtmp0.fld; , none => tolvxtmp1.fld; tolvxtmp0.fld | ; w, unique => tolvex.w;  | "
                           "tolvex.w; w, unique => tolvex1.w; tolvex.w"));
    for (int number = 0; number < 9999; ++number) {
        const std::ofstream file(Path("tolvxtmp" + std::to_string(number) + ".x"));
    }
    EXPECT_EQ(GetTempFilename("x"), Path("tolvxtmp9999.x"));
    EXPECT_THROW(GetTempFilename("x"), std::exception);
}

TEST_F(KnownFolders, ProgramFolderIsNotTheExecutables) {
    char buffer[1040] = {};
    path_directory_programma(buffer, true);
    EXPECT_EQ(GetModuleFilename().substr(0, GetModuleFilename().rfind('/')), buffer);
    pathFolderOverride = "/opt/app/\\";
    path_directory_programma(buffer, false);
    EXPECT_STREQ(buffer, "/opt/app/\\") << "an override is taken as it is";
    pathFolderOverride.clear();
}
