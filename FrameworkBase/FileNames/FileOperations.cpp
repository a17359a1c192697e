#include <FrameworkBase/FileNames/FileOperations.h>

#include <FrameworkBase/Base/internal/Split.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/internal/FolderStream.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Files/internal/ReadProbe.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace Tolvex::FileNames {

namespace {

/// A descriptor that is closed at the end of its scope and leaves `errno` unchanged.
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

    /// Closes the descriptor now. Returns true on success; it counts as closed in either case.
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
    for (std::size_t level = 0; level < parts.size(); ++level) {
        folder += '/';
        folder += parts[level];
        if (level > 0 && !CheckFileExistsEvenIfNotAccessible(folder) && !CreateDirectory(folder)) {
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
    if (!out.IsOpen() || !CopyContents(out.Number(), in.Number())) {
        return -1;
    }
    return out.Close() ? 0 : -1;
}

bool CopyFile(std::string source, std::string destination, bool failIfExists, CopyFileError* error) {
    if (OpensForReading(destination)) {
        if (failIfExists) {
            if (error != nullptr) {
                *error = DestinationExists;
            }
            return false;
        }
        unlink(destination.c_str());
    }
    if (cp(destination.c_str(), source.c_str()) == 0) {
        return true;
    }
    if (error != nullptr) {
        *error = OpensForReading(source) ? CopyFailed : SourceNotFound;
    }
    return false;
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
    } else if (!CopyFile(to, from, false, nullptr)) { // from new to old: applications rely on this order
        unlink(from.c_str());
    }
}

int DeleteFileA(const char* path) { return unlink(path); }

int TolvexSetCurrentDirectory(const char* path) { return chdir(path); }

} // namespace Tolvex::FileNames

void remove_dir_content(const char* folder, int depth) {
    using namespace Tolvex::FileNames;
    constexpr int deepestLevel = 20;
    FolderStream stream(opendir(folder));
    if (stream == nullptr) {
        return;
    }
    while (const dirent* const entry = readdir(stream.get())) {
        if (IsDotOrDotDot(entry->d_name)) {
            continue;
        }
        // Every step looks up the whole path anew: if another program moves the folder, or changes a link in the path,
        // only what is below `folder` at that moment is deleted.
        std::array<char, 1040> child;
        std::snprintf(child.data(), child.size(), "%s/%s", folder, entry->d_name);
        const mode_t mode = ModeOf(child.data());
        if (mode == 0) {
            continue;
        }
        if (!S_ISDIR(mode)) {
            unlink(child.data());
        } else if (unlinkat(dirfd(stream.get()), child.data(), AT_REMOVEDIR) != 0) {
            if (depth < deepestLevel) {
                remove_dir_content(child.data(), depth + 1);
            }
            unlinkat(dirfd(stream.get()), child.data(), AT_REMOVEDIR);
        }
    }
    stream.reset();
    std::remove(folder);
}
