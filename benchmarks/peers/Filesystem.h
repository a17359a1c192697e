#pragma once

#include "benchmarks/Jobs.h"

/// Adds the jobs of a library in the manner of std::filesystem, by its types; its functions are found by them.
template <class FsPath, class Iterator, class Options>
void AddFilesystem(const char* who) {
    OnPath("compose", who, [](Parts parts) { return (FsPath(parts.folder) / parts.name).string(); });
    OnPath("last component", who, [](Parts parts) { return FsPath(parts.path).filename().string(); });
    OnPath("folder part", who, [](Parts parts) { return FsPath(parts.path).parent_path().string(); });
    OnPath("extension", who, [](Parts parts) { return FsPath(parts.path).extension().string(); });
    OnPath("change extension", who, [](Parts parts) { return FsPath(parts.path).replace_extension(".flac").string(); });
    OnPath("is below", who, [](Parts parts) {
        const FsPath inner = parts.path;
        const FsPath outer = parts.folder;
        return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
    });
    OnPath("relative path", who, [](Parts parts) { return FsPath(parts.to).lexically_relative(parts.from).string(); });
    OnListing(who, [](Path folder) {
        std::vector<std::string> names;
        for (const auto& entry : Iterator(folder)) {
            if (!is_directory(entry.status())) {
                names.push_back(entry.path().filename().string());
            }
        }
        return names;
    });
    Measure(copyFile, who, [] { copy_file(FsPath(Original()), FsPath(Copy())); });
    Measure(copyTree, who,
            [] { copy(FsPath(Original()), FsPath(Copy()), Options::recursive | Options::overwrite_existing); });
    Measure(deletion, who, [] { remove_all(FsPath(Doomed())); });
}
