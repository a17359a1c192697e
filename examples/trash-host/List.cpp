#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>

namespace fs = std::filesystem;

namespace {

/// The bytes in a file, or in all files of a folder. What cannot be read counts as nothing.
std::string SizeOf(const std::string& path) {
    if (!Exists(path)) {
        return "vanished";
    }
    std::error_code error;
    std::uintmax_t size = is_regular_file(fs::symlink_status(path)) ? fs::file_size(path) : 0;
    if (IsFolder(path)) {
        for (const auto& entry : fs::recursive_directory_iterator(path, error)) {
            size += is_regular_file(entry.symlink_status()) ? entry.file_size(error) : 0;
        }
    }
    return std::to_string(size);
}

} // namespace

void PrintTrash() {
    const OpenTrash trash(Use::Read);
    Records records = trash.records;
    for (const std::string& name : trash.Names()) {
        records[trash.PathOf(name)]; // those that are not recorded, with nothing known about them
    }
    std::size_t width = 4;
    for (const auto& [path, record] : records) {
        width = std::max(width, Shown(trash.NameOf(path)).size());
    }
    const auto print = [width](const auto& name, const auto& size, const auto& deleted, const auto& origin) {
        std::cout << std::left << std::setw(static_cast<int>(width)) << name << "  " << std::setw(8) << size << "  "
                  << std::setw(23) << deleted << "  " << origin << '\n';
    };
    print("NAME", "BYTES", "DELETED", "FROM");
    for (const auto& [path, record] : records) {
        const bool isRecorded = trash.records.count(path) != 0;
        print(Shown(trash.NameOf(path)), SizeOf(path), isRecorded ? ShownTime(record.added) : "not recorded",
              record.origin.empty() ? "not known" : Shown(record.origin));
    }
}
