#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

/// What every fuzz target defines. Called once for each input; ends the process when something is wrong.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

/// Ends the process, with the claim, when it does not hold.
inline void Require(bool holds, const char* claim) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", claim);
        std::abort();
    }
}

/// A folder of the process's own, removed at exit.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string name =
            std::filesystem::canonical(std::filesystem::temp_directory_path()) / "frameworkbase-fuzz-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no scratch folder");
        }
        path = name;
    }
    ~ScratchFolder() { std::filesystem::remove_all(path); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::filesystem::path path;
};
