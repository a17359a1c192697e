#include <FrameworkBase/FileNames/PathNames.h>

#include "benchmarks/Inputs.h"
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

#include <cstring>
#include <strings.h>

namespace {

std::string LastComponentByHand(std::string path) {
    path.erase(0, path.rfind('/') + 1);
    return path;
}

std::string LastComponentOfTextByHand(std::string path) {
    path.resize(std::strlen(path.c_str()));
    path.erase(0, path.rfind('/') + 1);
    return path;
}

std::string FolderPartByHand(std::string path) {
    for (std::size_t i = path.size(); i > 0; --i) {
        if (path[i - 1] == '/' || path[i - 1] == '\\') {
            path.resize(i - 1);
            break;
        }
    }
    return path;
}

std::size_t ExtensionStart(Path path) {
    for (std::size_t i = path.size(); i > 0 && path[i - 1] != '/'; --i) {
        if (path[i - 1] == '.') {
            return i - 1;
        }
    }
    return path.size();
}

std::string ExtensionByHand(Path path) {
    const std::size_t dot = ExtensionStart(path);
    return dot == path.size() ? path : path.substr(dot);
}

std::string ChangeExtensionByHand(std::string path, std::string extension) {
    path.resize(ExtensionStart(path));
    path += extension;
    return path;
}

bool IsBelowByHand(std::string path, std::string folder) {
    if (folder.empty()) {
        return true;
    }
    const std::size_t end = folder.back() == '/' ? folder.size() - 1 : folder.size();
    return path.size() > end && path[end] == '/' && std::memcmp(path.data(), folder.data(), end) == 0;
}

/// For paths without backslashes, doubled separators and zero bytes that begin and end in "/".
std::string RelativeByHand(Path target, Path base, bool& nothingShared) {
    std::size_t same = 1;
    for (;;) {
        const std::size_t end = target.find('/', same);
        if (end == std::string::npos || base.size() <= end || base[end] != '/' ||
            strncasecmp(target.data() + same, base.data() + same, end - same) != 0) {
            break;
        }
        same = end + 1;
    }
    nothingShared = same == 1;
    std::string result;
    result.reserve(target.size());
    for (std::size_t at = base.find('/', same); at != std::string::npos; at = base.find('/', at + 1)) {
        result += "../";
    }
    result.append(target, same);
    return result;
}

/// Goes through a pointer in memory, as a call into a shared library does.
template <auto function>
auto* volatile called = function;

const Registration paths([] {
    using namespace Tolvex::FileNames;
    OnPath("last component", library, [](Parts parts) { return GetFilenameWithoutPath(parts.path); });
    OnPath("last component", limit, [](Parts parts) { return called<LastComponentByHand>(parts.path); });
    OnPath("last component", limitWithSteps, [](Parts parts) { return called<LastComponentOfTextByHand>(parts.path); });
    OnPath("folder part", library, [](Parts parts) { return GetFolderPathFromFilename(parts.path); });
    OnPath("folder part", limit, [](Parts parts) { return called<FolderPartByHand>(parts.path); });
    OnPath("extension", library, [](Parts parts) { return GetExtension(parts.path); });
    OnPath("extension", limit, [](Parts parts) { return called<ExtensionByHand>(parts.path); });
    OnPath("change extension", library, [](Parts parts) { return ExtensionChange(parts.path, ".flac"); });
    OnPath("change extension", limit, [](Parts parts) { return called<ChangeExtensionByHand>(parts.path, ".flac"); });
    OnPath("is below", library, [](Parts parts) { return IsPathBelow(parts.path, parts.folder); });
    OnPath("is below", limit, [](Parts parts) { return called<IsBelowByHand>(parts.path, parts.folder); });
    static bool nothingShared;
    OnPath("relative path", library, [](Parts parts) { return GetRelativePath(parts.to, parts.from, nothingShared); });
    OnPath("relative path", limit,
           [](Parts parts) { return called<RelativeByHand>(parts.to, parts.from, nothingShared); });
});

} // namespace
