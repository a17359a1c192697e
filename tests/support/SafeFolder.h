#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

/// Makes a folder for this process in "TMPDIR", or else in memory or in /tmp. A broken library may remove what is
/// around it: the folder is two levels further down, and a "TMPDIR" that is a system's folder or in one is refused.
inline std::filesystem::path MakeSafeFolder() {
    const char* const asked = std::getenv("TMPDIR");
    const char* const usual = std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    const auto place = std::filesystem::weakly_canonical(asked != nullptr ? asked : usual);
    const bool isSystems = place.parent_path().parent_path() == place.root_path();
    if (std::filesystem::is_directory(place) && isSystems && asked != nullptr && place != "/tmp" &&
        place != "/var/tmp" && place != "/private/tmp") {
        std::fprintf(stderr, "tests do not run in %s: broken, they remove what is beside it\n", place.c_str());
        std::abort();
    }
    std::string folder = place / "frameworkbase-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        std::fprintf(stderr, "tests need a folder in which they can make files: %s is none (see TMPDIR)\n",
                     place.c_str());
        std::exit(1);
    }
    const std::filesystem::path made = std::filesystem::path(folder) / "tests";
    std::filesystem::create_directory(made);
    return made;
}
