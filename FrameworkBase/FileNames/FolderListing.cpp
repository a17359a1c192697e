#include <FrameworkBase/FileNames/FolderListing.h>

#include <FrameworkBase/FileNames/internal/FolderStream.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace Tolvex::FileNames {

namespace {

/// Whether the entry is a folder by the type that the stream reports. Some file systems report none: then the entry
/// alone is asked, lest a folder be copied or purged as a file.
bool IsFolder(DIR* stream, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type == DT_DIR;
    }
    struct stat status {};
    return fstatat(dirfd(stream), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

bool IsDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

template <bool foldersOnly>
bool DoGetFolderFiles(std::string folder, std::vector<std::string>& names) {
    const FolderStream stream(opendir(folder.c_str()));
    if (stream == nullptr) {
        return false;
    }
    const auto nextEntry = [&stream] {
        errno = 0;
        return readdir(stream.get());
    };
    std::vector<std::string> listing;
    while (const dirent* const entry = nextEntry()) {
        if (IsFolder(stream.get(), *entry) == foldersOnly && !IsDotOrDotDot(entry->d_name)) {
            listing.emplace_back(entry->d_name);
        }
    }
    names = std::move(listing);
    return true;
}

template bool DoGetFolderFiles<false>(std::string folder, std::vector<std::string>& names);
template bool DoGetFolderFiles<true>(std::string folder, std::vector<std::string>& names);

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
            static_cast<void>(stream.release()); // left open on purpose, as the declaration tells callers
            return false;
        }
    }
    return true;
}

bool CheckPathIsDirectory(std::string path, bool& isFolder) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return false;
    }
    isFolder = S_ISDIR(status.st_mode);
    return true;
}

bool CheckFileExistsEvenIfNotAccessible(std::string path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

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
