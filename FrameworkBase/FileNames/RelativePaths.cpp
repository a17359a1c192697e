#include <FrameworkBase/FileNames/RelativePaths.h>

#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

using Tolvex::FileNames::IsSeparator;
using Tolvex::FileNames::PathComponents;
using Tolvex::FileNames::SameComponent;

namespace {

/// Returns where the first component begins in which two paths differ, byte for byte.
std::size_t SameStart(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t start = 0;
    for (std::size_t i = 0; i < shorter && a[i] == b[i]; ++i) {
        if (IsSeparator(a[i])) {
            start = i + 1;
        }
    }
    return start;
}

} // namespace

std::string GetRelativePath(const std::string& target, const std::string& base, bool& flag) {
    // Components that are equal byte for byte are skipped at once, which is faster than cutting them out one by one.
    // If they end beyond index 1, which is behind a leading separator, at least one was equal.
    const std::size_t start = SameStart(target, base);
    flag = start <= 1;
    std::string result;
    result.reserve(target.size());
    PathComponents targets(target, start);
    PathComponents bases(base, start);
    std::string_view to;
    std::string_view from;
    bool toLeft = targets.Next(to);
    bool fromLeft = bases.Next(from);
    while (toLeft && fromLeft && SameComponent(to, from)) {
        flag = false;
        toLeft = targets.Next(to);
        fromLeft = bases.Next(from);
    }
    for (; fromLeft && !from.empty(); fromLeft = bases.Next(from)) {
        result += "../";
    }
    for (; toLeft && !to.empty(); toLeft = targets.Next(to)) {
        result += to;
        result += '/';
    }
    return result;
}

std::string GetAbsoluteFromRelativePath(const std::string& base, const std::string& relative) {
    std::vector<std::string> parts;
    std::vector<std::string> steps;
    SplitPath(base, parts);
    SplitPath(relative, steps);
    auto step = steps.begin();
    for (; step != steps.end() && SameComponent(*step, ".."); ++step) {
        if (!parts.empty()) {
            parts.pop_back();
        }
    }
    parts.insert(parts.end(), step, steps.end());
    std::string result;
    result.reserve(base.size() + relative.size() + 2);
    for (const std::string& part : parts) {
        result += '/';
        result += part;
    }
    return result;
}

namespace Tolvex::FileNames {

namespace {

/// Returns the working directory, or the empty string if it cannot be determined or has 1040 bytes or more.
std::string GetWorkingDirectory() {
    std::array<char, 1040> folder{};
    return getcwd(folder.data(), folder.size()) == nullptr ? "" : folder.data();
}

} // namespace

std::string GetAbsolutePath(std::string path, const char* baseFolder) {
    if (!path.empty() && path.front() != '/') {
        const std::string base = baseFolder != nullptr ? baseFolder : GetWorkingDirectory();
        if (!base.empty()) {
            path = GetAbsoluteFromRelativePath(base, path);
        }
    }
    return NormalizePath(std::move(path));
}

bool GetPathRelativeToOtherFile(std::string& out, const std::string& referenceFile, const std::string& file) {
    bool nothingShared = true;
    std::string relative = GetRelativePath(path_rimuovifilename(GetAbsolutePath(file, referenceFile.c_str())),
                                           path_rimuovifilename(referenceFile), nothingShared);
    if (nothingShared) {
        return false;
    }
    // Resolved anew: the folder above may be gone by now, and the name is the one on the disk at the end.
    relative += GetFilenameWithoutPath(GetAbsolutePath(file, referenceFile.c_str()));
    out = std::move(relative);
    return true;
}

} // namespace Tolvex::FileNames
