#include <FrameworkBase/FileNames/FolderListing.h>

#include <FrameworkBase/FileNames/internal/FolderStream.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <utility>

namespace Tolvex::FileNames {

std::vector<std::string> GetFolderFiles(std::string folder) {
    std::vector<std::string> names;
    DoGetFolderFiles<false>(std::move(folder), names);
    return names;
}

std::vector<std::string> GetFolderSubfolders(std::string folder) {
    std::vector<std::string> names;
    DoGetFolderFiles<true>(std::move(folder), names);
    return names;
}

int GetFolderFiles(char* folder, char* name, int size, void** handle) { // NOLINT(readability-non-const-parameter)
    if (name == nullptr) {
        auto listing = std::make_unique<std::vector<std::string>>();
        DoGetFolderFiles<false>(folder, *listing);
        const auto count = static_cast<int>(listing->size());
        *handle = listing.release();
        return count;
    }
    auto* const listing = static_cast<std::vector<std::string>*>(*handle);
    if (listing->empty()) {
        delete listing;
        return -1;
    }
    const std::string& last = listing->back();
    std::strncpy(name, last.c_str(), std::min(last.size() + 1, static_cast<std::size_t>(size)));
    listing->pop_back();
    return static_cast<int>(listing->size());
}

std::string FormatDirectory(std::string path) { return path; }

bool IsFolderEmpty(std::string folder) {
    FolderStream stream(opendir(folder.c_str()));
    if (stream == nullptr) {
        return true;
    }
    while (const dirent* const entry = readdir(stream.get())) {
        if (!IsDotOrDotDot(entry->d_name)) {
            static_cast<void>(stream.release()); // left open on purpose, as the declaration says
            return false;
        }
    }
    return true;
}

bool CheckPathIsDirectory(std::string path, bool& isFolder) {
    const mode_t mode = ModeOf(path.c_str());
    if (mode == 0) {
        return false;
    }
    isFolder = S_ISDIR(mode);
    return true;
}

bool CheckFileExistsEvenIfNotAccessible(std::string path) { return ModeOf(path.c_str()) != 0; }

bool IsSpecialFile(std::string /*path*/, bool& /*isSpecial*/) { return false; }

bool IsSymlink(std::string /*path*/) { return false; }

unsigned long long GetAvailableSpace(std::string path) {
    struct statvfs status {};
    if (statvfs(path.c_str(), &status) != 0) {
        return ~0ULL;
    }
    return static_cast<unsigned long long>(status.f_bavail) * status.f_bsize;
}

} // namespace Tolvex::FileNames
