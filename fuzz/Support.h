#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

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
struct ScratchFolder {
    ScratchFolder() { Require(mkdtemp(path.data()) != nullptr, "there is a scratch folder"); }
    ~ScratchFolder() { std::filesystem::remove_all(path); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path = std::filesystem::temp_directory_path() / "frameworkbase-fuzz-XXXXXX";
};
