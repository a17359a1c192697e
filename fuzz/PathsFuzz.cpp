#include "FrameworkBase/Base/Strings.h"
#include "FrameworkBase/FileNames/Extensions.h"
#include "FrameworkBase/FileNames/PathNames.h"
#include "FrameworkBase/FileNames/RelativePaths.h"
#include "FrameworkBase/FileNames/internal/ExtensionRules.h"
#include "FrameworkBase/FileNames/internal/PathComponents.h"
#include "fuzz/Support.h"

#include <algorithm>
#include <strings.h>
#include <vector>

// The input is two texts with a byte FF between them; each function gets both in either role, and what must hold for
// all texts is checked.

namespace {

using namespace Tolvex::FileNames;

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

void CheckFolders(const std::string& path, const std::string& text) {
    const std::string untilZero = path.c_str();
    Require(GetPathWithoutFilename(path) + GetFilenameWithoutPath(path) == untilZero, "folder + file name = path");
    const std::wstring wide(path.begin(), path.end());
    const std::string narrow = GetFilenameWithoutPath(path);
    Require(GetFilenameWithoutPath(wide) == std::wstring(narrow.begin(), narrow.end()), "wide names are cut alike");

    const std::string folder = GetFolderPathFromFilename(path);
    Require(path.compare(0, folder.size(), folder) == 0, "the folder begins the path");
    Require(folder.size() == path.size() || IsSeparator(path[folder.size()]), "and ends before a separator");
    Require(path.find_first_of("/\\", folder.size() + 1) == std::string::npos, "the last one");

    const std::string separated = CheckFolderHasSeparator(path);
    Require(CheckFolderHasSeparator(separated) == separated, "one separator is enough");
    Require(IsPathBelow(ComposePath(path, text), path), "what is composed with a folder lies below it");
    Require(path.empty() || IsPathBelow(separated, path), "a folder with its separator lies below it");
    Require(!CompareNormalizedPaths(path, text) || path == text, "comparison is exact");

    const std::string local = ConvertPathToLocalSystem(path);
    Require(local.find('\\') == std::string::npos && ConvertPathToLocalSystem(local) == local, "no backslash is left");
    Require(path.size() - local.size() <= 2, "nothing but a drive is dropped");
    Require(GetShellString(path).size() == path.size() + 2 && GetShellWString(path).size() == path.size() + 2,
            "two zeros are added");
    const std::string normal = NormalizePath(path);
    Require(NormalizePath(normal) == normal, "a normal path stays");
}

void CheckExtensions(const std::string& name, const std::string& text) {
    std::string copy = name;
    const std::string extension = GetExtension(copy);
    const std::string stem = RemoveExtension(name);
    const bool hasNone = extension == name && stem == name;
    Require(hasNone || stem + extension == name, "stem + extension = name");
    Require(ExtensionChange(name, text) == stem + text, "the extension is replaced");
    Require(AppendStringBeforeExtension(name, text) == stem + text + extension, "the text comes before the extension");
    Require(EndsWith(name, GetExtensionWithoutDot(name)), "the extension without dot ends the name");
    Require(HasExtension(name) == (GetFilenameWithoutExtension(name) != name), "cut at any dot");
    Require(GetFilenameWithoutExtension(name).size() <= stem.size(), "cut at the same dot or before");
    const std::string folder = path_rimuovifilename(name);
    Require(AppendStringBeforeFilename(name, text) == folder + text + GetFilenameWithoutPath(name),
            "the text comes before the file name");

    const std::string forced = ForceExtension(name, text);
    Require(forced == name || forced == stem + text, "forced: kept or replaced");
    const std::string appended = CheckAppendExtension(name, text);
    Require(appended == name || appended == name + text, "appended: kept or added");
    if (text.size() >= 2 && text.front() == '.' && text.find_first_of(std::string("./\0", 3), 1) == std::string::npos &&
        name.find('\0') == std::string::npos) {
        Require(ForceExtension(forced, text) == forced, "forcing twice changes nothing");
        Require(text.size() > 49 || CheckAppendExtension(appended, text) == appended, "nor does appending twice");
    }
    EndsWithExtension(name, text);

    std::vector<char> buffer(name.c_str(), name.c_str() + std::char_traits<char>::length(name.c_str()) + 1);
    const std::string untilDot = GetFilenameWithoutExtension(buffer.data());
    const std::string ending = text.c_str();
    buffer.resize(std::max(buffer.size(), untilDot.size() + 1 + ending.size() + 1));
    std::string argument = ending;
    Require(extension_change(buffer.data(), argument.data()) == 1, "always 1");
    Require(buffer.data() == untilDot + '.' + ending, "changed in place");
}

void CheckRelativePaths(const std::string& target, const std::string& base) {
    const auto components = [](const std::string& path) {
        std::vector<std::string> parts;
        SplitPath(path, parts);
        return parts;
    };
    const std::vector<std::string> targets = components(target);
    std::vector<std::string> bases = components(base);
    bool nothingShared = false;
    const std::string relative = GetRelativePath(target, base, nothingShared);
    Require(relative.size() <= target.size() + 1 + 3 * bases.size(), "no longer than its steps");
    Require(relative.empty() || relative.back() == '/', "relative paths end in a separator");
    Require(nothingShared == (targets.empty() || bases.empty() || !SameComponent(targets[0], bases[0])),
            "told when nothing is shared");

    const auto isPlain = [](const std::string& part) {
        return !part.empty() && part != ".." && part.find('\0') == std::string::npos;
    };
    const std::string there = GetAbsoluteFromRelativePath(base, relative);
    if (std::all_of(targets.begin(), targets.end(), isPlain) && std::all_of(bases.begin(), bases.end(), isPlain)) {
        std::string joined;
        for (const std::string& part : targets) {
            joined += '/' + part;
        }
        Require(strcasecmp(there.c_str(), joined.c_str()) == 0, "the relative path leads to the target");
    }
    Require(there.empty() || there.front() == '/', "absolute paths begin at the root");

    std::string out = "untouched";
    if (!GetPathRelativeToOtherFile(out, base, target)) {
        Require(out == "untouched", "nothing is stored on failure");
    }
    const std::string absolute = GetAbsolutePath(target, nullptr);
    Require(absolute.empty() || absolute.front() == '/', "made absolute");
}

void CheckStrings(const std::string& text) {
    std::wstring wide = Tolvex::Strings::wstringFromS(text.c_str());
    const std::string narrow = Tolvex::Strings::stringFromW(wide.data());
    Require(narrow.empty() || narrow == text.c_str(), "UTF-8 comes back as it was");
    Require(!narrow.empty() || wide.empty() || wide.size() >= 2000, "unless it is refused");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const auto* const middle = std::find(data, data + size, 0xFF);
    const std::string first(data, middle);
    const std::string second(middle == data + size ? middle : middle + 1, data + size);
    for (const auto& [one, other] : {std::pair(first, second), std::pair(second, first)}) {
        CheckFolders(one, other);
        CheckExtensions(one, other);
        CheckRelativePaths(one, other);
        CheckStrings(one);
    }
    return 0;
}
