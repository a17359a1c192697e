#include "fuzz/Support.h"
#include <FrameworkBase/Base/Strings.h>
#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>
#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <strings.h>
#include <vector>

// The input is two texts with a byte FF between them. Both go through the functions in either role, and what must hold
// for all texts is checked.

namespace {

using namespace Tolvex::FileNames;

void CheckFolders(const std::string& path, const std::string& text) {
    Require(GetPathWithoutFilename(path) + GetFilenameWithoutPath(path) == path.c_str(), "folder + file name = path");
    const std::string folder = GetFolderPathFromFilename(path);
    Require(path.compare(0, folder.size(), folder) == 0, "the folder begins the path");
    Require(path.find_first_of("/\\", folder.size() + 1) == std::string::npos, "and ends before the last separator");
    const std::string separated = CheckFolderHasSeparator(path);
    Require(CheckFolderHasSeparator(separated) == separated, "one separator is enough");
    Require(IsPathBelow(ComposePath(path, text), path), "what is composed with a folder lies below it");
    const std::string local = ConvertPathToLocalSystem(path);
    Require(local.find('\\') == std::string::npos && ConvertPathToLocalSystem(local) == local, "no backslash is left");
    Require(path.size() - local.size() <= 2, "nothing but a drive is dropped");
    Require(GetShellWString(path).size() == path.size() + 2, "two zeros are added");
    const std::string normal = NormalizePath(path);
    Require(NormalizePath(normal) == normal, "a normal path stays");
}

void CheckExtensions(const std::string& name, const std::string& text) {
    std::string copy = name;
    const std::string extension = GetExtension(copy);
    const std::string stem = RemoveExtension(name);
    Require(stem + extension == name || (stem == name && extension == name), "stem + extension = name");
    Require(AppendStringBeforeExtension(name, text) == stem + text + extension, "the text comes before the extension");
    Require(HasExtension(name) == (GetFilenameWithoutExtension(name) != name), "cut at any dot");
    const std::string forced = ForceExtension(name, text);
    const std::string appended = CheckAppendExtension(name, text);
    Require(forced == name || forced == stem + text, "forced: kept or replaced");
    Require(appended == name || appended == name + text, "appended: kept or added");
    const bool isOrdinary = text.size() >= 2 && text.size() < 49 && text.front() == '.' &&
                            text.find_first_of(std::string("./\0", 3), 1) == std::string::npos;
    if (isOrdinary && name.find('\0') == std::string::npos) {
        Require(ForceExtension(forced, text) == forced, "forcing twice changes nothing");
        Require(CheckAppendExtension(appended, text) == appended, "nor does appending twice");
    }
    EndsWithExtension(name, text);

    std::vector<char> buffer = GetShellString(name.c_str());
    std::string ending = text.c_str();
    const std::string changed = GetFilenameWithoutExtension(buffer.data()) + '.' + ending;
    buffer.resize(std::max(buffer.size(), changed.size() + 1)); // to the byte, so that no write passes the end unseen
    extension_change(buffer.data(), ending.data());
    Require(buffer.data() == changed, "changed in place");
}

std::vector<std::string> Components(const std::string& path) {
    std::vector<std::string> parts;
    SplitPath(path, parts);
    return parts;
}

void CheckRelativePaths(const std::string& target, const std::string& base) {
    bool nothingShared = false;
    const std::string there = GetAbsoluteFromRelativePath(base, GetRelativePath(target, base, nothingShared));
    bool isPlain = true;
    for (const std::string& part : Components(target + '/' + base)) {
        isPlain &= !part.empty() && part != ".." && part.find('\0') == std::string::npos;
    }
    std::string joined;
    for (const std::string& part : Components(target)) {
        joined += '/' + part;
    }
    Require(!isPlain || strcasecmp(there.c_str(), joined.c_str()) == 0, "the relative path leads to the target");
    std::string out = "untouched";
    Require(GetPathRelativeToOtherFile(out, base, target) || out == "untouched", "nothing is stored on failure");
    const std::string absolute = GetAbsolutePath(target, nullptr);
    Require(absolute.empty() || absolute.front() == '/', "made absolute");
}

void CheckStrings(const std::string& text) {
    std::wstring wide = Tolvex::Strings::wstringFromS(text.c_str());
    const std::string narrow = Tolvex::Strings::stringFromW(wide.data());
    const bool isRefused = wide.empty() || wide.size() >= 2000;
    Require(isRefused ? narrow.empty() : narrow == text.c_str(), "UTF-8 comes back as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const auto* const end = data + size;
    const auto* const middle = std::find(data, end, 0xFF);
    const std::string first(data, middle);
    const std::string second(std::min(middle + 1, end), end);
    for (const auto& [one, other] : {std::pair(first, second), std::pair(second, first)}) {
        CheckFolders(one, other);
        CheckExtensions(one, other);
        CheckRelativePaths(one, other);
        CheckStrings(one);
    }
    return 0;
}
