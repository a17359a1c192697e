#include "TrashHost.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>

namespace fs = std::filesystem;

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

} // namespace

void PrintTrash() {
    const OpenTrash trash(Use::List);
    Records records = trash.records;
    for (const std::string& name : trash.Names()) {
        records[trash.PathOf(name)]; // those that are not recorded, with nothing known about them
    }
    const auto isItem = [&trash](const std::string& path) { // the others are files in a folder
        return trash.NameOf(path) == path || trash.NameOf(path).find('/') == std::string::npos;
    };
    std::size_t width = 4;
    for (const auto& [path, record] : records) {
        width = isItem(path) ? std::max(width, Width(Shown(trash.NameOf(path)))) : width;
    }
    const auto print = [width](const auto& name, const auto& size, const auto& deleted, const auto& origin) {
        std::cout << name << std::string(width - Width(name), ' ') << "  " << std::left << std::setw(8) << size << "  "
                  << std::setw(23) << deleted << "  " << origin << '\n';
    };
    print("NAME", "BYTES", "DELETED", "FROM");
    for (const auto& [path, record] : records) {
        if (isItem(path)) {
            print(Shown(trash.NameOf(path)), SizeOf(path), record.first == 0 ? "not recorded" : ShownTime(record.first),
                  record.second.empty() ? "not known" : Shown(record.second));
        }
    }
}
