#include "fuzz/Support.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>
#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <vector>

// The input is strings with a byte FF between them. Every pair of them has to keep these laws.

namespace {

using namespace Tolvex::FileNames;

void CheckPathNames(const std::string& path, const std::string& name) {
    Require(GetPathWithoutFilename(path) + GetFilenameWithoutPath(path) == path.c_str(), "folder + file name = path");
    const std::string separated = CheckFolderHasSeparator(path);
    Require(CheckFolderHasSeparator(separated) == separated, "one separator is enough");
    Require(ComposePath(path, name) == separated + name, "a composed path is folder + separator + name");
    Require(path.empty() || IsPathBelow(ComposePath(path, name), path), "a composed path is below its folder");
    const std::string normal = NormalizePath(path);
    Require(NormalizePath(normal) == normal, "a normal path is normalised to itself");
}

void CheckExtensions(const std::string& name, const std::string& extension) {
    const std::string stem = RemoveExtension(name);
    std::string copy = name;
    const std::string removed = GetExtension(copy);
    Require(stem == name || stem + removed == name, "stem + extension = name");
    Require(ExtensionChange(name, extension) == stem + extension, "a changed name is stem + new extension");
    const std::string appended = AppendStringBeforeExtension(name, extension);
    Require(appended == stem + extension + removed, "a string comes between stem and extension");
    std::vector<char> buffer = GetShellString(name.c_str());
    std::string ending = extension.c_str();
    buffer.resize(buffer.size() + ending.size()); // enough, so that sanitizers see what is written behind
    Require(extension_change(buffer.data(), ending.data()) == 1, "an extension is always changed");
    Require(buffer.data() == GetFilenameWithoutExtension(std::string(name.c_str())) + '.' + ending,
            "an extension is changed in place behind the last dot");
}

bool IsPlain(const std::vector<std::string>& components) {
    return std::none_of(components.begin(), components.end(), [](const std::string& component) {
        const bool hasZeroByte = component.find('\0') != std::string::npos;
        return component.empty() || component == "." || component == ".." || hasZeroByte;
    });
}

void CheckRelativePaths(const std::string& target, const std::string& base) {
    bool hasNothingInCommon = false;
    Require(GetRelativePath(target, target, hasNothingInCommon).empty(), "a path leads to itself by the empty string");
    std::vector<std::string> targetComponents;
    std::vector<std::string> baseComponents;
    SplitPath(target, targetComponents);
    SplitPath(base, baseComponents);
    if (!IsPlain(targetComponents) || !IsPlain(baseComponents)) {
        return;
    }
    const std::string relative = GetRelativePath(target, base, hasNothingInCommon);
    std::vector<std::string> reached;
    SplitPath(GetAbsoluteFromRelativePath(base, relative), reached);
    Require(reached.size() == targetComponents.size(), "a relative path leads from the base to the target");
    Require(std::equal(reached.begin(), reached.end(), targetComponents.begin(), SameComponent),
            "a relative path leads through the components of the target");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    std::vector<std::string> strings(1);
    for (const auto* byte = data; byte != data + size; ++byte) {
        if (*byte == 0xFF) {
            strings.emplace_back();
        } else {
            strings.back() += static_cast<char>(*byte);
        }
    }
    strings.resize(std::clamp<std::size_t>(strings.size(), 2, 64));
    for (const std::string& one : strings) {
        for (const std::string& other : strings) {
            CheckPathNames(one, other);
            CheckExtensions(one, other);
            CheckRelativePaths(one, other);
        }
    }
    return 0;
}
