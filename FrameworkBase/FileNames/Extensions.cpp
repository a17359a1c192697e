#include <FrameworkBase/FileNames/Extensions.h>

#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <cstring>
#include <strings.h>
#include <utility>

namespace Tolvex::FileNames {

namespace {

/// Returns the position of the last dot of the final component, or the size of `name` if there is none.
std::size_t StemLength(const std::string& name) {
    for (std::size_t i = name.size(); i > 0 && name[i - 1] != '/'; --i) {
        if (name[i - 1] == '.') {
            return i - 1;
        }
    }
    return name.size();
}

bool HasThisExtension(const std::string& name, std::string ext) {
    return EndsWithExtension(name, GetExtensionWithoutDot(std::move(ext)));
}

} // namespace

std::string GetExtension(std::string& name) {
    const std::size_t dot = StemLength(name);
    return dot == name.size() ? name : name.substr(dot);
}

std::string GetExtensionWithoutDot(std::string name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) {
        return {};
    }
    name.erase(0, std::min(dot + 1, name.size() - 1)); // a dot at the end is left
    return name;
}

int extension_change(char* name, char* ext) {
    if (char* const dot = std::strrchr(name, '.'); dot != nullptr) {
        *dot = '\0';
    }
    std::strcat(name, ".");
    std::strcat(name, ext);
    return 1;
}

std::string ExtensionChange(std::string name, std::string ext) {
    name.replace(StemLength(name), std::string::npos, ext);
    return name;
}

std::string RemoveExtension(std::string name) { return ExtensionChange(std::move(name), {}); }

bool EndsWithExtension(const std::string& name, const std::string& extension) {
    constexpr std::size_t comparedCharacters = 48;
    const std::size_t length = std::strlen(name.c_str());
    if (length < extension.size() + 1) {
        return false;
    }
    const std::size_t compared = std::min(std::strlen(extension.c_str()), comparedCharacters);
    const char* const dot = name.c_str() + length - compared - 1;
    return *dot == '.' && strncasecmp(dot + 1, extension.c_str(), compared) == 0;
}

std::string ForceExtension(std::string name, std::string ext) {
    if (HasThisExtension(name, ext)) {
        return name;
    }
    return ExtensionChange(std::move(name), std::move(ext));
}

bool HasExtension(std::string name) { return name.find('.') != std::string::npos; }

std::string CheckAppendExtension(std::string name, std::string ext) {
    if (!HasThisExtension(name, ext)) {
        name += ext;
    }
    return name;
}

std::string GetFilenameWithoutExtension(std::string name) {
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos) {
        name.resize(dot);
    }
    return name;
}

std::string AppendStringBeforeExtension(std::string name, std::string text) {
    text += GetExtension(name);
    return ExtensionChange(std::move(name), std::move(text));
}

std::string AppendStringBeforeFilename(std::string path, std::string text) {
    text += GetFilenameWithoutPath(path);
    return ComposePath(path_rimuovifilename(std::move(path)), std::move(text));
}

} // namespace Tolvex::FileNames
