#include <FrameworkBase/FileNames/KnownFolders.h>

#include <FrameworkBase/Base/Platform.h>
#include <FrameworkBase/Base/internal/HostPlatform.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::uint32_t pathBufferSize = 1040; // what callers of the buffer functions provide

/// Returns the home folder of the user in the password database, or the empty string if there is none.
std::string GetHomeFolderFromPasswordDatabase() {
    std::vector<char> texts(1024);
    passwd entry{};
    passwd* found = nullptr;
    while (getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found) == ERANGE) {
        texts.resize(2 * texts.size());
    }
    return found == nullptr || found->pw_dir == nullptr ? "" : found->pw_dir;
}

std::string ReadHomeFolder() {
    const char* home = std::getenv("HOME");
    return home != nullptr ? home : GetHomeFolderFromPasswordDatabase();
}

/// Returns true if `path` can be opened with `mode`. Closes it again.
bool OpensWithMode(const std::string& path, const char* mode) {
    std::FILE* const file = std::fopen(path.c_str(), mode);
    if (file == nullptr) {
        return false;
    }
    std::fclose(file);
    return true;
}

} // namespace

std::string GetHomeFolderMac() {
    static const std::string homeString = ReadHomeFolder();
    std::string folder =
        Tolvex::FileNames::ComposePath(homeString + "/Library/Application Support", "Tolvex Studio 10");
    mkdir(folder.c_str(), 0777);
    return folder;
}

std::string GetHomeFolderBase() { return GetHomeFolderMac(); }

std::string GetProgramFolderUserDocuments() { return GetHomeFolderMac(); }

std::string MacGetTempFolder() { return Tolvex::HostPlatform::GetTemporaryFolder(); }

namespace Tolvex {

int MacGetExecutablePath(char* buffer) { return HostPlatform::GetExecutablePath(buffer, pathBufferSize); }

void path_directory_programma(char* buffer, bool /*ignored*/) {
    *buffer = '\0';
    if (!pathFolderOverride.empty()) {
        std::strcpy(buffer, pathFolderOverride.c_str());
        return;
    }
    HostPlatform::GetExecutablePath(buffer, pathBufferSize);
    if (char* const separator = std::strrchr(buffer, '/'); separator != nullptr) {
        *separator = '\0';
    }
    if (const std::size_t length = std::strlen(buffer); length > 0 && buffer[length - 1] == '\\') {
        buffer[length - 1] = '\0';
    }
}

namespace FileNames {

std::string GetModuleFilename() {
    std::array<char, 1024> path{};
    return HostPlatform::GetExecutablePath(path.data(), path.size()) == 0 ? path.data() : "";
}

std::string GetUnixTempFolder() { return MacGetTempFolder(); }

std::string GetTempFolder() { return MacGetTempFolder(); }

std::string GetTempFolderT() { return MacGetTempFolder(); }

std::string GetTempFolderRoot() { return GetPathWithoutFilename(MacGetTempFolder()); }

std::string GetTempFilename(std::string extension) {
    constexpr int numberLimit = 10000;
    const std::string stem = ComposePath(MacGetTempFolder(), "tolvxtmp");
    for (int number = 0; number < numberLimit; ++number) {
        std::string candidate = stem + std::to_string(number);
        candidate += '.';
        candidate += extension;
        const bool isTaken = OpensWithMode(candidate, "r+");
        if (!isTaken && OpensWithMode(candidate, "w+")) {
            return candidate;
        }
    }
    throw std::exception();
}

std::string GetUniqueTempFilename(std::string extension) {
    return ComposeNewFilenameAndCheckExists(MacGetTempFolder(), "tolvex", '.' + extension);
}

std::string GetTempFilenameNoCreate() {
    std::string path = GetTempFilename("fld");
    unlink(path.c_str());
    return path;
}

} // namespace FileNames
} // namespace Tolvex
