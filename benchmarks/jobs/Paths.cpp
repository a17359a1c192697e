#include "benchmarks/Jobs.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>
#include <string_view>
#include <strings.h>

[[gnu::noinline]] static std::string LastComponentByHand(std::string path) {
    path.resize(std::strlen(path.c_str()));
    path.erase(0, path.rfind('/') + 1);
    return path;
}
static bool IsSeparator(char character) { return character == '/' || character == '\\'; }

[[gnu::noinline]] static std::string FolderPartByHand(std::string path) {
    const auto separator = std::find_if(path.rbegin(), path.rend(), IsSeparator);
    path.erase(separator == path.rend() ? path.end() : separator.base() - 1, path.end());
    return path;
}
static std::size_t ExtensionStart(Path path) {
    for (std::size_t i = path.size(); i > 0 && path[i - 1] != '/'; --i) {
        if (path[i - 1] == '.') {
            return i - 1;
        }
    }
    return path.size();
}
[[gnu::noinline]] static std::string ExtensionByHand(Path path) {
    const std::size_t dot = ExtensionStart(path);
    return dot == path.size() ? path : path.substr(dot);
}
[[gnu::noinline]] static std::string ChangeExtensionByHand(std::string path, std::string extension) {
    path.replace(ExtensionStart(path), std::string::npos, extension);
    return path;
}
[[gnu::noinline]] static bool IsBelowByHand(std::string path, std::string folder) {
    const std::size_t end = !folder.empty() && folder.back() == '/' ? folder.size() - 1 : folder.size();
    return folder.empty() || (path.size() > end && path[end] == '/' && std::equal(&folder[0], &folder[end], &path[0]));
}
/// Takes the first component off `path`, if there is one; the last one ends at a zero byte.
[[gnu::always_inline]] static inline bool Take(std::string_view& path, std::string_view& component) {
    if (path.empty()) {
        return false;
    }
    std::size_t end = 0;
    while (end < path.size() && !IsSeparator(path[end])) {
        ++end;
    }
    component = path.substr(0, end);
    if (end == path.size()) {
        component = component.substr(0, component.find('\0'));
    }
    path.remove_prefix(std::min(end + 1, path.size()));
    return true;
}
[[gnu::noinline]] static std::string RelativeByHand(std::string_view target, std::string_view base,
                                                    bool& nothingShared) {
    std::string result;
    result.reserve(target.size());
    std::size_t start = 0; // of the first components that differ by a byte
    for (std::size_t i = 0; i < target.size() && i < base.size() && target[i] == base[i]; ++i) {
        if (IsSeparator(target[i])) {
            start = i + 1;
        }
    }
    nothingShared = start < 2;
    target.remove_prefix(start == 0 && !target.empty() && IsSeparator(target[0]) ? 1 : start);
    base.remove_prefix(start == 0 && !base.empty() && IsSeparator(base[0]) ? 1 : start);
    std::string_view to;
    std::string_view from;
    bool toLeft = Take(target, to);
    bool fromLeft = Take(base, from);
    while (toLeft && fromLeft && to.size() == from.size() && strncasecmp(to.data(), from.data(), to.size()) == 0) {
        nothingShared = false;
        toLeft = Take(target, to);
        fromLeft = Take(base, from);
    }
    for (; fromLeft && !from.empty(); fromLeft = Take(base, from)) {
        result += "../";
    }
    for (; toLeft && !to.empty(); toLeft = Take(target, to)) {
        result.append(to) += '/';
    }
    return result;
}

const Registration paths([] {
    using namespace Tolvex::FileNames;
    OnPath("last component", library, [](Parts parts) { return GetFilenameWithoutPath(parts.path); });
    OnPath("last component", plainest, [](Parts parts) { return LastComponentByHand(parts.path); });
    OnPath("folder part", library, [](Parts parts) { return GetFolderPathFromFilename(parts.path); });
    OnPath("folder part", plainest, [](Parts parts) { return FolderPartByHand(parts.path); });
    OnPath("extension", library, [](Parts parts) { return GetExtension(parts.path); });
    OnPath("extension", plainest, [](Parts parts) { return ExtensionByHand(parts.path); });
    OnPath("change extension", library, [](Parts parts) { return ExtensionChange(parts.path, ".flac"); });
    OnPath("change extension", plainest, [](Parts parts) { return ChangeExtensionByHand(parts.path, ".flac"); });
    OnPath("is below", library, [](Parts parts) { return IsPathBelow(parts.path, parts.folder); });
    OnPath("is below", plainest, [](Parts parts) { return IsBelowByHand(parts.path, parts.folder); });
    static bool nothing;
    OnPath("relative path", library, [](Parts parts) { return GetRelativePath(parts.to, parts.from, nothing); });
    OnPath("relative path", plainest, [](Parts parts) { return RelativeByHand(parts.to, parts.from, nothing); });
});
