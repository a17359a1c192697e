#include <FrameworkBase/FileNames/FileOperations.h>

#include <FrameworkBase/Base/internal/Split.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/internal/FolderStream.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Files/internal/ReadProbe.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Tolvex::FileNames {

namespace {

/// A descriptor that is closed at the end of its scope without touching `errno`.
class Descriptor {
public:
    explicit Descriptor(int openNumber) : number(openNumber) {}
    ~Descriptor() {
        const int error = errno;
        Close();
        errno = error;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number; }
    bool IsOpen() const { return number >= 0; }

    /// Closes now. Whether that succeeded; the descriptor counts as closed either way.
    bool Close() {
        const int closing = number;
        number = -1;
        return closing >= 0 && close(closing) == 0;
    }

private:
    int number;
};

bool WriteAll(int descriptor, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t count = write(descriptor, data, size);
        if (count >= 0) {
            data += count;
            size -= static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool CopyContents(int destination, int source) {
    std::array<char, 4096> buffer;
    ssize_t count = 0;
    while ((count = read(source, buffer.data(), buffer.size())) > 0) {
        if (!WriteAll(destination, buffer.data(), static_cast<std::size_t>(count))) {
            return false;
        }
    }
    return count == 0;
}

} // namespace

bool CreateDirectory(std::string path) { return mkdir(path.c_str(), 0777) >= 0; }

bool CreateDirectories(std::string path) {
    const std::vector<std::string> parts = Strings::Split(path, '/');
    std::string folder;
    for (const std::string& part : parts) {
        folder += '/';
        folder += part;
        const bool isFirst = &part == &parts.front();
        if (!isFirst && !CheckFileExistsEvenIfNotAccessible(folder) && !CreateDirectory(folder)) {
            return false;
        }
    }
    return true;
}

int cp(const char* destination, const char* source) {
    const Descriptor in(open(source, O_RDONLY));
    if (!in.IsOpen()) {
        return -1;
    }
    Descriptor out(open(destination, O_WRONLY | O_CREAT | O_EXCL, 0666));
    return out.IsOpen() && CopyContents(out.Number(), in.Number()) && out.Close() ? 0 : -1;
}

bool CopyFile(std::string source, std::string destination, bool failIfExists, CopyFileError* error) {
    const auto fail = [error](CopyFileError reason) {
        if (error != nullptr) {
            *error = reason;
        }
        return false;
    };
    if (OpensForReading(destination)) {
        if (failIfExists) {
            return fail(DestinationExists);
        }
        unlink(destination.c_str());
    }
    if (cp(destination.c_str(), source.c_str()) == 0) {
        return true;
    }
    return fail(error != nullptr && OpensForReading(source) ? CopyFailed : SourceNotFound);
}

void CopyFolder(std::string source, std::string destination) {
    CreateDirectory(destination);
    for (const std::string& name : GetFolderFiles(source)) {
        CopyFile(ComposePath(source, name), ComposePath(destination, name), false, nullptr);
    }
    for (const std::string& name : GetFolderSubfolders(source)) {
        CopyFolder(ComposePath(source, name), ComposePath(destination, name));
    }
}

void Rename(std::string from, std::string to) {
    if (std::rename(from.c_str(), to.c_str()) == 0) {
        return;
    }
    bool isFolder = false;
    CheckPathIsDirectory(from, isFolder);
    if (isFolder) {
        CopyFolder(from, to);
        remove_dir_content(from.c_str(), 0);
    } else if (!CopyFile(to, from, false, nullptr)) { // from new to old: the application relies on this order
        unlink(from.c_str());
    }
}

int DeleteFileA(const char* path) { return unlink(path); }

int TolvexSetCurrentDirectory(const char* path) { return chdir(path); }

} // namespace Tolvex::FileNames

namespace {

constexpr int deepestLevel = 20;

/// The path of an entry of a folder in the 1040 bytes that a level of remove_dir_content has for it. What does not fit
/// is cut off.
class ChildPath {
public:
    ChildPath(const char* folder, const char* name)
        : length(static_cast<std::size_t>(std::snprintf(path.data(), path.size(), "%s/%s", folder, name))) {}

    const char* Text() const { return path.data(); }

    /// Whether it is the entry's path, and one that the system takes.
    bool IsWhole() const { return length < std::min<std::size_t>(path.size(), PATH_MAX); }

private:
    std::array<char, 1040> path;
    std::size_t length;
};

enum class EntryKind { None, File, Folder };

/// What is behind a path, links followed.
EntryKind KindByStatus(const char* path) {
    struct stat status {};
    if (stat(path, &status) != 0) {
        return EntryKind::None;
    }
    return S_ISDIR(status.st_mode) ? EntryKind::Folder : EntryKind::File;
}

/// KindByStatus without the call where the reported type and a whole path leave no doubt.
EntryKind Kind(const dirent& entry, const ChildPath& child) {
    if (!child.IsWhole() || entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN) {
        return KindByStatus(child.Text());
    }
    return entry.d_type == DT_DIR ? EntryKind::Folder : EntryKind::File;
}

} // namespace

void remove_dir_content(const char* folder, int depth) {
    using namespace Tolvex::FileNames;
    {
        const FolderStream stream(opendir(folder));
        if (stream == nullptr) {
            return;
        }
        while (const dirent* const entry = readdir(stream.get())) {
            if (IsDotOrDotDot(entry->d_name)) {
                continue;
            }
            const ChildPath child(folder, entry->d_name);
            switch (Kind(*entry, child)) {
            case EntryKind::None:
                break;
            case EntryKind::File:
                if (child.IsWhole()) {
                    unlinkat(dirfd(stream.get()), entry->d_name, 0); // the same file, found without walking the path
                } else {
                    unlink(child.Text());
                }
                break;
            case EntryKind::Folder:
                // The whole path is relative to the stream's folder here, so a relative one seldom names anything.
                if (unlinkat(dirfd(stream.get()), child.Text(), AT_REMOVEDIR) != 0) {
                    if (depth < deepestLevel) {
                        remove_dir_content(child.Text(), depth + 1);
                    }
                    unlinkat(dirfd(stream.get()), child.Text(), AT_REMOVEDIR);
                }
                break;
            }
        }
    }
    std::remove(folder);
}
