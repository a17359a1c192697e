#include "fuzz/Support.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>
#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <cstring>
#include <strings.h>
#include <vector>

// The input is texts with a byte FF between them. What every pair gives is compared with the plainest of means.

namespace {

using namespace Tolvex::FileNames;

void CheckFolders(const std::string& path, const std::string& text) {
    const std::string name = GetFilenameWithoutPath(path);
    Require(GetPathWithoutFilename(path) + name == path.c_str(), "folder + file name = path");
    Require(GetFilenameWithoutPath(std::wstring(path.begin(), path.end())) == std::wstring(name.begin(), name.end()),
            "wide paths too");
    Require(path_rimuovifilename(path) == path.substr(0, path.rfind('/') + 1), "cut behind the last slash");
    Require(GetFolderPathFromFilename(path) == path.substr(0, path.find_last_of("/\\")), "cut at the last separator");
    std::string same = path;
    Require(GetPathRoot(same) + NormalizePathCase(path) == path + path, "as it is");
    const std::string separated = path.empty() || path.back() == '/' ? path : path + '/';
    Require(CheckFolderHasSeparator(path) == separated, "one separator is enough");
    Require(IsPathBelow(text, path) == (text.substr(0, separated.size()) == separated), "below it");
    Require(CompareNormalizedPaths(path, text) == (path == text), "compared as they are");
    Require(ComposePath(path, text) == separated + text, "composed with one separator");
    const bool hasDrive = path.size() >= 3 && path.compare(1, 2, ":\\") == 0;
    std::string local = path.substr(hasDrive ? 2 : 0);
    std::replace(local.begin(), local.end(), '\\', '/');
    Require(ConvertPathToLocalSystem(path) == local, "nothing but a drive is dropped, and no backslash is left");
    const std::vector<char> shell = GetShellString(path);
    Require(std::string(shell.begin(), shell.end()) == path + std::string(2, '\0'), "two zeros are added");
    Require(GetShellWString(path).size() == path.size() + 2, "to wide ones too");
    Require(NormalizePath(NormalizePath(path)) == NormalizePath(path), "a normal path stays");
}

void CheckExtensions(const std::string& name, const std::string& text) {
    const std::size_t dot = name.rfind('.');
    const bool isInName = dot != std::string::npos && name.find('/', dot) == std::string::npos;
    const std::string stem = isInName ? name.substr(0, dot) : name;
    const std::string extension = isInName ? name.substr(dot) : name;
    std::string copy = name;
    Require(GetExtension(copy) == extension, "from the last dot of the file name on, or all of it");
    Require(RemoveExtension(name) == stem && ExtensionChange(name, text) == stem + text, "changed from there on");
    Require(AppendStringBeforeExtension(name, text) == stem + text + extension, "the text comes before the extension");
    Require(GetFilenameWithoutExtension(name) == name.substr(0, dot), "cut at any dot");
    Require(HasExtension(name) == (dot != std::string::npos), "which any dot is");
    const bool isForced = ForceExtension(name, text) != name;
    Require(ForceExtension(name, text) == (isForced ? stem + text : name), "forced: kept or replaced");
    Require(CheckAppendExtension(name, text) == (isForced ? name + text : name) || stem + text == name, "or appended");
    std::vector<char> buffer = GetShellString(name.c_str());
    std::string ending = text.c_str();
    const std::string changed = GetFilenameWithoutExtension(buffer.data()) + '.' + ending;
    buffer.resize(std::max(buffer.size(), changed.size() + 1)); // to the byte, so that no write passes the end unseen
    Require(extension_change(buffer.data(), ending.data()) == 1, "said to be changed in place");
    Require(buffer.data() == changed, "and changed");
}

/// All texts between separators, less one empty text at either end.
std::vector<std::string> Components(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    std::vector<std::string> components;
    for (std::size_t start = !path.empty() && path[0] == '/' ? 1 : 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        components.push_back(path.substr(start, end - start));
        components.back().resize(end == path.size() ? std::strlen(components.back().c_str()) : end - start);
        start = end + 1;
    }
    return components;
}

void CheckRelativePaths(const std::string& target, const std::string& base) {
    std::vector<std::string> parts;
    SplitPath(target, parts);
    const std::vector<std::string> to = Components(target);
    const std::vector<std::string> from = Components(base);
    Require(parts == to, "split into its components");
    Require(SameComponent(target, base) == (strcasecmp(target.c_str(), base.c_str()) == 0), "in any letter case");
    std::size_t same = 0;
    while (same < std::min(to.size(), from.size()) && strcasecmp(to[same].c_str(), from[same].c_str()) == 0) {
        ++same;
    }
    std::string relative;
    for (std::size_t i = same; i < from.size() && !from[i].empty(); ++i) {
        relative += "../";
    }
    for (std::size_t i = same; i < to.size() && !to[i].empty(); ++i) {
        relative += to[i] + '/';
    }
    for (bool nothingShared : {false, true}) {
        Require(GetRelativePath(target, base, nothingShared) == relative, "up to what is shared, and down again");
        Require(nothingShared == (same == 0), "told when nothing is");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    std::vector<std::string> texts(1);
    for (const auto* byte = data; byte != data + size; ++byte) {
        *byte == 0xFF ? texts.emplace_back() : texts.back() += static_cast<char>(*byte);
    }
    texts.resize(std::clamp<std::size_t>(texts.size(), 2, 64));
    for (const std::string& one : texts) {
        for (const std::string& other : texts) {
            CheckFolders(one, other);
            CheckExtensions(one, other);
            CheckRelativePaths(one, other);
        }
    }
    return 0;
}
