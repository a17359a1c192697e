#include "Commands.h"
#include "OpenTrash.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

/// The bytes in a file, or in all files of a folder. What cannot be read counts as nothing.
static std::string SizeOf(const std::string& path) {
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
        print(Shown(trash.NameOf(path)), SizeOf(path), isRecorded ? ShownTime(record.first) : "not recorded",
              record.second.empty() ? "not known" : Shown(record.second));
    }
}
