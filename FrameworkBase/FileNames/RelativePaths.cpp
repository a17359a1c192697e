#include <FrameworkBase/FileNames/RelativePaths.h>

#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>

using Tolvex::FileNames::IsSeparator;
using Tolvex::FileNames::PathComponents;
using Tolvex::FileNames::SameComponent;

namespace {

/// Where two paths stop to be the same byte for byte, at the beginning of a component.
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
    const std::size_t start = SameStart(target, base);
    flag = start <= 1; // a separator in front is no component
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
    std::string result;
    result.reserve(base.size() + relative.size() + 2);
    const auto append = [&result](std::string_view component) {
        result += '/';
        result += component;
    };
    std::string_view component;
    for (PathComponents components(base); components.Next(component);) {
        append(component);
    }
    PathComponents components(relative);
    bool left = components.Next(component);
    for (; left && SameComponent(component, ".."); left = components.Next(component)) {
        if (!result.empty()) {
            result.resize(result.rfind('/'));
        }
    }
    for (; left; left = components.Next(component)) {
        append(component);
    }
    return result;
}

namespace Tolvex::FileNames {

namespace {

/// The working directory; empty when it cannot be told, or in 1040 bytes.
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
    // Resolved anew: the folder above may be gone by now, the name is the one on the disk at the end.
    relative += GetFilenameWithoutPath(GetAbsolutePath(file, referenceFile.c_str()));
    out = std::move(relative);
    return true;
}

} // namespace Tolvex::FileNames
