#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/PathNames.h>

#include <algorithm>
#include <filesystem>
#include <strings.h>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

/// The bytes in a file, or in all files of a folder. What cannot be read counts as nothing.
std::string SizeOf(const std::string& path) {
    std::error_code error;
    std::uintmax_t size = is_regular_file(fs::symlink_status(path, error)) ? fs::file_size(path, error) : 0;
    if (IsFolder(path)) {
        const auto options = fs::directory_options::skip_permission_denied;
        for (const auto& entry : fs::recursive_directory_iterator(path, options, error)) {
            size += is_regular_file(entry.symlink_status(error)) ? entry.file_size(error) : 0;
        }
    }
    return Exists(path) ? std::to_string(size) : "vanished";
}

std::string KindOf(const std::string& path) {
    bool isFolder = false;
    RefuseIf(!CheckPathIsDirectory(path, isFolder) && !Exists(path), "there is no " + Shown(path));
    if (isFolder || IsSongFile(path)) {
        return !isFolder ? "song file" : IsSongFolder(path) ? "song folder" : "other";
    }
    const std::string extension = GetExtensionWithoutDot(GetFilenameWithoutPath(path));
    const auto& known = Tolvex::AudioAndMidiFileExtensionsString;
    return std::any_of(known.begin(), known.end(),
                       [&](const auto& candidate) { return strcasecmp(candidate.c_str(), extension.c_str()) == 0; })
               ? "audio or MIDI file"
               : "other";
}

} // namespace

void PrintTrash() {
    const OpenTrash trash(Use::List);
    Records records = trash.records;
    for (const std::string& name : trash.Names()) {
        records[trash.PathOf(name)]; // those that are not recorded, with nothing known about them
    }
    std::size_t width = 4;
    for (auto entry = records.begin(); entry != records.end();) {
        const std::string name = trash.NameOf(entry->first);
        const bool isItem = name.front() == '/' || name.find('/') == std::string::npos; // others are files in a folder
        width = isItem ? std::max(width, Width(Shown(name))) : width;
        entry = isItem ? std::next(entry) : records.erase(entry);
    }
    const auto print = [width](const auto& name, const auto& size, const auto& deleted, const auto& origin) {
        Say(Padded(name, width) + "  " + Padded(size, 8) + "  " + Padded(deleted, 23) + "  " + origin);
    };
    print("NAME", "BYTES", "DELETED", "FROM");
    for (const auto& [path, record] : records) {
        const bool isRecorded = trash.records.count(path) != 0;
        print(Shown(trash.NameOf(path)), SizeOf(path), isRecorded ? ShownTime(record.added) : "not recorded",
              record.origin.empty() ? "not known" : Shown(record.origin));
    }
}

void PrintKinds(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        Say(Padded(KindOf(path), 20) + Shown(path));
    }
}
