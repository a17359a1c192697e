// Creates the file of a new take in a song's folder, under a name that nothing has, writes a header and reads it back.

#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/Files/FileStream.h>

#include <filesystem>
#include <iostream>
#include <string>

using namespace Tolvex::FileNames;

namespace {

/// A file that is closed at the end of its scope. The library's own stays open until Close is called.
struct File : FlapFiles::CFile {
    File(const std::string& path, unsigned int access) { DoCreate(path.c_str(), access, 0, OPEN_EXISTING); }
    ~File() override { CFile::Close(); }
};

/// Creates an empty file. A name may be taken by another program after it was found free: cp replaces nothing.
std::string CreateTake(const std::string& folder) {
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::string path = ComposeNewFilenameAndCheckExists(folder, "Take", ".take");
        if (cp(path.c_str(), "/dev/null") == 0) {
            return path;
        }
    }
    throw TolvexException("no file can be created");
}

void WriteHeader(const std::string& path, const std::string& name, long long frames) {
    File file(path, GENERIC_WRITE);
    const int size = static_cast<int>(name.size()) + 1; // with the zero byte
    file.WriteData(frames);
    file.WriteData(size);
    file.Write(name.c_str(), size);
    if (!file.Close()) { // on a full disk this is the call that fails
        throw TolvexException("the header could not be written");
    }
}

void PrintHeader(const std::string& path) {
    File file(path, GENERIC_READ);
    long long frames = 0;
    file.ReadData(frames);
    std::cout << path << ": \"" << DeSerializeString(file) << "\", " << frames << " frames\n";
}

} // namespace

int main() {
    try {
        const std::string folder = std::filesystem::current_path() / "new-take/Audio";
        CreateDirectories(folder);
        const std::string path = CreateTake(folder);
        WriteHeader(path, "Vocals, second verse", 960000);
        PrintHeader(path);
        return 0;
    } catch (const TolvexException& exception) {
        std::cerr << "new-take: " << exception.message << '\n';
        return 1;
    }
}
