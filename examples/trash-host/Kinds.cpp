#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/PathNames.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <strings.h>

using namespace Tolvex::FileNames;

namespace {

std::string KindOf(const std::string& path) {
    bool isFolder = false;
    if (!CheckPathIsDirectory(path, isFolder) && !Exists(path)) {
        throw Refusal("there is no " + Shown(path));
    }
    if (isFolder) {
        return IsSongFolder(path) ? "song folder" : "other";
    }
    if (IsSongFile(path)) {
        return "song file";
    }
    const std::string extension = GetExtensionWithoutDot(GetFilenameWithoutPath(path));
    const auto& known = Tolvex::AudioAndMidiFileExtensionsString;
    const bool isMedia = std::any_of(known.begin(), known.end(), [&extension](const std::string& candidate) {
        return strcasecmp(candidate.c_str(), extension.c_str()) == 0;
    });
    return isMedia ? "audio or MIDI file" : "other";
}

} // namespace

void PrintKinds(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        std::cout << std::left << std::setw(20) << KindOf(path) << Shown(path) << '\n';
    }
}
