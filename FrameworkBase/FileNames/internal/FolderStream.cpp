#include <FrameworkBase/FileNames/internal/FolderStream.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace Tolvex::FileNames {

namespace {

/// Returns true if the entry is a folder, by the type that the stream reports. Some file systems report none; then the
/// entry itself is examined, so that no folder is copied or purged as a file.
bool IsFolder(DIR* stream, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type == DT_DIR;
    }
    struct stat status {};
    return fstatat(dirfd(stream), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

mode_t ModeOf(const char* path) {
    struct stat status {};
    return stat(path, &status) == 0 ? status.st_mode : 0;
}

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
        errno = 0; // so that errno is non-zero only if an error ended the listing
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

} // namespace Tolvex::FileNames
