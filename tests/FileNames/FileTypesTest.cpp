#include <FrameworkBase/FileNames/FileTypes.h>

#include "tests/FileNames/PathTables.h"

using namespace Tolvex;
using namespace Tolvex::FileNames;
using namespace std::string_literals;

TEST(FileTypes, Lists) {
    const std::string all =
        " sng wav w64 sgw txt edl aif aiff afc mp3 wma ogg mid cda dll ax fla flac m4a aaf omf rex rx2 "
        "rcy tspl twf sng tww dawproject";
    const std::string audioAndMidi = "wav w64 aif aiff afc mp3 wma ogg mid cda ax fla flac m4a aaf omf twf tww";
    EXPECT_EQ(FileExtensionStrings, Cells(all, " "));
    EXPECT_EQ(AudioAndMidiFileExtensionsString, Cells(audioAndMidi, " "));
}

TEST(FileTypes, SongFilesByExtension) {
    for (const std::string& extension : Cells("sng sgw sngw txt edl aaf omf", " ")) {
        EXPECT_TRUE(IsSongFile('.' + extension)) << extension;
        EXPECT_FALSE(IsSongFile(extension) || IsSongFile("a." + extension + '/')) << extension;
    }
    EXPECT_TRUE(Maps(IsSongFile, "Mix.SNG => true | /a.b/a.Sngw => true | folder.sng/x.OMF => true | asng => false | "
                                 "take.wav => false | a.dawproject => false | a.tspl => false |  => false"));
    EXPECT_TRUE(IsSongFile("a.sng\0.wav"s) && !IsSongFile("a.wav\0.sng"s));
}

class SongFolders : public DiskTreeTest {};

TEST_F(SongFolders, HoldAMarkerThatCanBeRead) {
    EXPECT_TRUE(Does(IsSongFolder,
                     "s/Tolvex.db; s => true; s/, s/Tolvex.db | s/Tolvex.db; s/ => true; s/, s/Tolvex.db | "
                     "s/; s => false; s/ | Tolvex.db; . => true; Tolvex.db | Tolvex.db;  => false; Tolvex.db"));
    std::filesystem::permissions(Path("Tolvex.db"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_FALSE(IsSongFolder(folder));
}
