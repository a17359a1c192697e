// Expresses takes by paths that a song can store, relative to the song's folder where that works, and finds them again.

#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

using namespace Tolvex::FileNames;
namespace fs = std::filesystem;

namespace {

/// Returns the full path of the take to which a song refers. `song` is empty if it is not saved yet.
std::string TakeOf(const std::string& song, const std::string& reference) {
    return GetAbsolutePath(reference, GetPathWithoutFilename(song).c_str());
}

/// Returns the path by which a song refers to a take: relative if it leads back to the take, and absolute otherwise. It
/// does not lead back from a song that is not saved yet or has no folder in common with the take, nor, for instance,
/// if a name contains a backslash.
std::string ReferenceTo(const std::string& take, const std::string& song) {
    std::string reference;
    if (!song.empty() && GetPathRelativeToOtherFile(reference, NormalizePath(song), take)) {
        std::error_code error;
        if (fs::equivalent(TakeOf(song, reference), take, error)) {
            return reference;
        }
    }
    return NormalizePath(take);
}

} // namespace

int main() {
    const fs::path folder = fs::current_path() / "song-references";
    const std::string song = folder / "Evening/Evening.sng";
    bool areFound = true;
    for (const char* name : {"Evening/Audio/bass.wav", "Samples/kick.wav", "Evening/back\\slash.wav"}) {
        const std::string take = folder / name;
        fs::create_directories(fs::path(take).parent_path());
        std::ofstream file(take);
        std::ofstream songFile(song);
        for (const std::string& from : {song, std::string()}) {
            const std::string reference = ReferenceTo(take, from);
            std::error_code error;
            areFound = areFound && fs::equivalent(TakeOf(from, reference), take, error);
            std::cout << (from.empty() ? "a new song" : "the saved song") << " refers to " << reference << '\n';
        }
    }
    return areFound ? 0 : 1;
}
