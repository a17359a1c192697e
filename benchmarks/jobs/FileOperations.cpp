#include <FrameworkBase/FileNames/FileOperations.h>

#include "benchmarks/Inputs.h"
#include <FrameworkBase/FileNames/FolderListing.h>

#include <array>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::vector<std::string> ListByHand(Path folder, bool folders) {
    std::vector<std::string> names;
    DIR* const stream = opendir(folder.c_str());
    while (const dirent* const entry = readdir(stream)) {
        if ((entry->d_type == DT_DIR) == folders && entry->d_name[0] != '.') {
            names.emplace_back(entry->d_name);
        }
    }
    closedir(stream);
    return names;
}

/// Opens both files and calls `copy` with them until it returns 0.
template <class Copy>
void CopyFileByHand(Path source, Path destination, Copy copy) {
    const int in = open(source.c_str(), O_RDONLY);
    const int out = open(destination.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    while (copy(in, out) > 0) {
    }
    close(out);
    close(in);
}

ssize_t CopyPage(int in, int out) {
    std::array<char, 4096> buffer;
    const ssize_t count = read(in, buffer.data(), buffer.size());
    return count > 0 ? write(out, buffer.data(), static_cast<std::size_t>(count)) : count;
}

ssize_t CopyInKernel(int in, int out) { return copy_file_range(in, nullptr, out, nullptr, std::size_t{1} << 30, 0); }

/// With the steps that the library promises: a look for each destination, and a listing for files, one for folders.
void CopyTreeByHand(Path source, Path destination) {
    mkdir(destination.c_str(), 0777);
    for (Path name : ListByHand(source, false)) {
        const std::string to = destination + '/' + name;
        if (const int there = open(to.c_str(), O_RDONLY); there >= 0) {
            close(there);
            unlink(to.c_str());
        }
        CopyFileByHand(source + '/' + name, to, CopyPage);
    }
    for (Path name : ListByHand(source, true)) {
        CopyTreeByHand(source + '/' + name, destination + '/' + name);
    }
}

void DeleteByHand(int parent, const char* name) {
    DIR* const stream = fdopendir(openat(parent, name, O_RDONLY | O_DIRECTORY));
    while (const dirent* const entry = readdir(stream)) {
        if (entry->d_type != DT_DIR) {
            unlinkat(dirfd(stream), entry->d_name, 0);
        } else if (entry->d_name[0] != '.') {
            DeleteByHand(dirfd(stream), entry->d_name);
        }
    }
    closedir(stream);
    unlinkat(parent, name, AT_REMOVEDIR);
}

const Registration files([] {
    using namespace Tolvex::FileNames;
    OnListing(library, [](Path folder) { return GetFolderFiles(folder); });
    OnListing(limit, [](std::string folder) { return ListByHand(folder, false); });
    Measure(copyFile, library, [] { CopyFile(Original(), Copy(), false, nullptr); });
    Measure(copyFile, limit, [] { CopyFileByHand(Original(), Copy(), CopyPage); });
    Measure(copyFile, "copy_file_range", [] { CopyFileByHand(Original(), Copy(), CopyInKernel); });
    Measure(copyTree, library, [] { CopyFolder(Original(), Copy()); });
    Measure(copyTree, limit, [] { CopyTreeByHand(Original(), Copy()); });
    Measure(deletion, library, [] { remove_dir_content(Doomed().c_str(), 0); });
    Measure(deletion, limit, [] { DeleteByHand(AT_FDCWD, Doomed().c_str()); });
});

} // namespace
