#include "benchmarks/Jobs.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/Processes.h>
#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>
#include <sys/wait.h>

static void CopyFileByHand(Path source, Path destination) {
    if (OpensByHand(destination)) {
        unlink(destination.c_str());
    }
    const int in = open(source.c_str(), O_RDONLY);
    const int out = open(destination.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    std::array<char, 4096> block;
    for (ssize_t count = 1; count > 0;) {
        count = read(in, block.data(), block.size());
        count = write(out, block.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    close(out);
    close(in);
}
static void CopyTreeByHand(Path source, Path destination) {
    mkdir(destination.c_str(), 0777);
    for (Path name : ListByHand(source, false)) {
        CopyFileByHand(source + '/' + name, destination + '/' + name);
    }
    for (Path name : ListByHand(source, true)) {
        CopyTreeByHand(source + '/' + name, destination + '/' + name);
    }
}
static void DeleteByHand(const char* folder, int depth) {
    DIR* const stream = opendir(folder);
    while (const dirent* const entry = readdir(stream)) {
        std::array<char, 1040> child;
        struct stat status {};
        if (!IsDots(entry->d_name)) {
            std::snprintf(child.data(), child.size(), "%s/%s", folder, entry->d_name);
            stat(child.data(), &status);
        }
        if (status.st_mode != 0 && !S_ISDIR(status.st_mode)) {
            unlink(child.data());
        } else if (status.st_mode != 0 && unlinkat(dirfd(stream), child.data(), AT_REMOVEDIR) != 0) {
            if (depth < 20) {
                DeleteByHand(child.data(), depth + 1);
            }
            unlinkat(dirfd(stream), child.data(), AT_REMOVEDIR);
        }
    }
    closedir(stream);
    std::remove(folder);
}

static const char* const program = "/bin/true";
static pid_t RunAsChild(pid_t child) {
    if (child == 0) {
        execl(program, program, nullptr);
        _exit(127);
    }
    return waitpid(child, nullptr, 0);
}

struct LibraryStream : FlapFiles::CFile {
    LibraryStream(const char* path, bool reads) {
        DoCreate(path, reads ? GENERIC_READ : GENERIC_WRITE, 0, reads ? OPEN_EXISTING : CREATE_ALWAYS);
    }
    ~LibraryStream() { Close(); }
};

using PlainStream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
static long failures = 0;

const Registration files([] {
    using namespace Tolvex::FileNames;
    OnListing(library, [](Path folder) { return GetFolderFiles(folder); });
    OnListing(plainest, [](Path folder) { return ListByHand(folder, false); });
    Measure(copyFile, library, [] { CopyFile(Original(), Copy(), false, nullptr); });
    Measure(copyFile, plainest, [] { CopyFileByHand(Original(), Copy()); });
    Measure(copyTree, library, [] { CopyFolder(Original(), Copy()); });
    Measure(copyTree, plainest, [] { CopyTreeByHand(Original(), Copy()); });
    Measure(deletion, library, [] { remove_dir_content(Doomed().c_str(), 0); });
    Measure(deletion, plainest, [] { DeleteByHand(Doomed().c_str(), 0); });
    OnChild(library, [](auto& /*memory*/) {
        std::vector<std::string> arguments = {program};
        return WaitForProcess(LaunchProcess(program, arguments), -1);
    });
    OnChild(plainest, [](auto& /*memory*/) { return RunAsChild(vfork()); });
    OnChild("fork", [](auto& /*memory*/) { return RunAsChild(fork()); });
    OnStreams(
        library, [](const char* path, bool reads) { return LibraryStream(path, reads); },
        [](auto& file, auto& value) { file.WriteData(value); }, [](auto& file, auto& value) { file.ReadData(value); });
    OnStreams(
        plainest,
        [](const char* path, bool reads) { return PlainStream(std::fopen(path, reads ? "rb" : "wb"), std::fclose); },
        [](auto& file, auto& value) { failures += std::fwrite(&value, sizeof value, 1, file.get()) != 1; },
        [](auto& file, auto& value) { failures += std::fread(&value, sizeof value, 1, file.get()) != 1; });
});
