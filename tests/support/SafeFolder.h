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
    const char* const named = asked != nullptr ? asked : usual;
    std::error_code missing;
    const auto place = std::filesystem::canonical(named, missing);
    const bool isSystems = !missing && place.parent_path().parent_path() == place.root_path();
    if (isSystems && asked != nullptr && place != "/tmp" && place != "/var/tmp" && place != "/private/tmp") {
        std::fprintf(stderr, "tests do not run in %s: broken, they remove what is beside it\n", named);
        std::_Exit(1);
    }
    std::string folder = place / "frameworkbase-XXXXXX";
    if (missing || mkdtemp(folder.data()) == nullptr) {
        std::fprintf(stderr, "tests cannot run: no folder can be created in %s\n", named);
        std::_Exit(1);
    }
    const std::filesystem::path made = std::filesystem::path(folder) / "tests";
    std::filesystem::create_directory(made);
    return made;
}
