#include "Commands.h"
#include "OpenTrash.h"
#include "SampleFiles.h"
#include "Text.h"

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>
#include <FrameworkBase/FileNames/UniqueNames.h>

#include <iostream>

using namespace Tolvex::FileNames;

namespace {

void Say(const std::string& line) { std::cout << line << '\n'; }

/// The tour's own files: the working directory while it lasts, and deleted at its end.
class Session {
public:
    Session() : folder(ComposeNewFolderAndCheckExists(GetTempFolder(), "tour", "")) {
        Verify(CreateDirectory(folder), Shown(folder) + " can be made");
        folder = NormalizePath(folder);
        TolvexSetCurrentDirectory(folder.c_str());
        for (const char* name : {"Song A", "Song A/Audio", "Song B", "Evening.sng"}) {
            CreateDirectory(name);
        }
        WriteTone("Song A/song.wav", 440);
        WriteTone("Song A/Audio/bass.wav", 55);
        WriteTone("Song B/song.wav", 660);
        WriteTone("Evening.sng/vocals.wav", 330);
        WriteFile("Evening.sng/Tolvex.db", "marks a song folder");
        WriteFile("Song A/Mix.sng", "a song in one file");
        WriteFile("Song A/README", "a file without an extension");
    }
    ~Session() { remove_dir_content(folder.c_str(), 0); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    std::string folder;
};

void ShowKinds() {
    Say("\n1. What is what: files by their names, folders by what is in them.");
    PrintKinds({"Song A/song.wav", "Song A/Mix.sng", "Song A/README", "Evening.sng"});
    Verify(IsSongFolder("Evening.sng") && IsSongFile("Song A/Mix.sng"), "they are songs");
}

void ShowNames(const Session& session) {
    Say("\n2. Relative paths: how Song A/Mix.sng refers to its own take and to one of Song B.");
    for (const char* name : {"Song A/Audio/bass.wav", "Song B/song.wav"}) {
        const std::string path = GetAbsolutePath(name, nullptr);
        std::string relative;
        Verify(GetPathRelativeToOtherFile(relative, session.folder + "/Song A/Mix.sng", path), "they share a folder");
        Verify(GetAbsolutePath(relative, (session.folder + "/Song A").c_str()) == path, "the path leads back");
        Say(relative);
    }
    Say("\n3. New names: the next free ones for another Song A/song.wav, and for another folder Song A.");
    for (const std::string& name :
         {ComposeNewFilenameAndCheckExists("Song A", "song", ".wav"), ComposeNewFolderAndCheckExists("Song A", "")}) {
        Verify(!Exists(name), name + " is free");
        Say(name);
    }
}

void ShowPutAndList() {
    Say("\n4. Into the trash. A name that is taken there gets a number.");
    PutIntoTrash({"Song A/song.wav", "Song B/song.wav", "Song A/README", "Song A/Mix.sng", "Evening.sng/"});
    const std::vector<std::string> names = {"Evening.sng", "Mix.sng", "README", "song.wav", "song1.wav"};
    Verify(OpenTrash(Use::Read).Names() == names, "the second song.wav is song1.wav");
    Say("\n5. What the database in the trash, \".trash.db\", says of them.");
    PrintTrash();
}

void ShowRestore(const std::string& song, const std::string& mix) {
    Say("\n6. Back to where they came from, unchanged. They are forgotten in the trash.");
    RestoreFromTrash({"song1.wav", "Mix.sng"});
    Verify(ReadFile("Song B/song.wav") == song && ReadFile("Song A/Mix.sng") == mix, "they came back unchanged");
    Verify(OpenTrash(Use::Read).records.size() == 3, "they are forgotten");

    Say("\n7. Song A has a new song.wav by now. Putting the old one back would replace it, so that is refused.");
    WriteTone("Song A/song.wav", 880);
    const std::string newTake = ReadFile("Song A/song.wav");
    bool isRefused = false;
    try {
        RestoreFromTrash({"song.wav"});
    } catch (const Refusal& refusal) {
        isRefused = true;
        Say(refusal.what());
    }
    Verify(isRefused && ReadFile("Song A/song.wav") == newTake, "the new take is safe");
}

/// Makes the database say that `name` came `days` days ago.
void Age(const std::string& name, int days) {
    OpenTrash trash(Use::Change);
    trash.records.at(trash.PathOf(name)).added -= days * secondsPerDay * ticksPerSecond;
    trash.Save();
}

void PurgeAndVerify(bool all, const std::vector<std::string>& left) {
    PurgeTrash(all);
    Verify(OpenTrash(Use::Read).Names() == left, "the purge left what it should");
}

void ShowPurges() {
    Say("\n8. The purge deletes what came more than 30 days ago. Let README have come 31 days ago, song.wav 29:");
    Age("README", 31);
    Age("song.wav", 29);
    PurgeAndVerify(false, {"Evening.sng", "song.wav"});
    Say("A folder is dated by the files in it. These the purge has just recorded: their 30 days begin now.");
    Say("\n9. Let vocals.wav in Evening.sng be 31 days old: the first file to expire takes the folder with it.");
    Age("Evening.sng/vocals.wav", 31);
    PurgeAndVerify(false, {"song.wav"});
    Say("\n10. The purge of everything.");
    PurgeAndVerify(true, {});
}

} // namespace

void RunTour() {
    if (const OpenTrash trash(Use::Change); !trash.records.empty() || !trash.Names().empty()) {
        throw Refusal(
            "the tour purges the trash, and there is something in it: set HOME to another folder for the tour");
    }
    const Session session;
    Say("A tour with files made for it in " + Shown(session.folder));
    const std::string song = ReadFile("Song B/song.wav");
    const std::string mix = ReadFile("Song A/Mix.sng");
    ShowKinds();
    ShowNames(session);
    ShowPutAndList();
    ShowRestore(song, mix);
    ShowPurges();
    Say("\nAll of this was verified on the way. The files made for it are deleted.");
}
