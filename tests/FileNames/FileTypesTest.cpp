#include <FrameworkBase/FileNames/FileTypes.h>

#include "tests/support/DiskTest.h"

using namespace Tolvex::FileNames;

TEST(FileTypes, OtherFilesAreTakenForSongs) {
    for (const std::string& extension : Cells("sng sgw sngw txt edl aaf omf", " ")) {
        EXPECT_TRUE(IsSongFile('.' + extension)) << extension;
        EXPECT_FALSE(IsSongFile(extension) || IsSongFile("a." + extension + '/')) << extension;
    }
    EXPECT_TRUE(Maps(IsSongFile, "Mix.SNG => true | asng => false | take.wav => false | a.tspl => false |  => false"));
    EXPECT_TRUE(IsSongFile(std::string("a.sng\0.wav", 10)) && !IsSongFile(std::string("a.wav\0.sng", 10)));
}

using SongFolders = DiskTest;

TEST_F(SongFolders, MarkerThatCannotBeReadCounts) {
    EXPECT_TRUE(Does(IsSongFolder, "s/Tolvex.db; s/ => true; s/, s/Tolvex.db | s/; s => false; s/ | "
                                   "Tolvex.db; . => true; Tolvex.db | Tolvex.db;  => false; Tolvex.db"));
    Make("Tolvex.db");
    std::filesystem::permissions(Path("Tolvex.db"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_FALSE(IsSongFolder(folder));
}
