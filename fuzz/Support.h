#pragma once

#include "tests/support/SafeFolder.h"

#include <cstddef>

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
    ~ScratchFolder() { std::filesystem::remove_all(std::filesystem::path(path).parent_path()); }

    const std::string path = MakeSafeFolder();
};
