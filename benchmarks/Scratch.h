#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

/// A new folder that is deleted at the end. It is the home folder of the process, so that the trash lies in it, too.
class ScratchFolder {
public:
    ScratchFolder() : path((fs::temp_directory_path() / "benchmarks-XXXXXX").string()) {
        if (mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("cannot create " + path);
        }
        setenv("HOME", path.c_str(), 1);
        unsetenv("XDG_DATA_HOME");
    }
    ~ScratchFolder() { fs::remove_all(path); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path;
};

inline const ScratchFolder scratch;

inline std::string InScratch(const std::string& name) { return scratch.path + '/' + name; }

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Creates `count` files of `size` bytes, a hundred in a folder, in the new folder `root`.
inline void MakeTree(const std::string& root, long count, std::size_t size) {
    const std::string bytes(size, 'x');
    for (long i = 0; i < count; ++i) {
        const std::string folder = root + "/Audio " + std::to_string(i / 100);
        if (i % 100 == 0) {
            fs::create_directories(folder);
        }
        WriteBytes(folder + "/take " + std::to_string(i) + ".wav", bytes);
    }
}
