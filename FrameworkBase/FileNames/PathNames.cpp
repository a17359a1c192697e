#include <FrameworkBase/FileNames/PathNames.h>

#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <utility>

namespace Tolvex::FileNames {

namespace {

/// Cuts `text` at its first zero byte.
template <class Character>
void EndAtZero(std::basic_string<Character>& text) {
    text.resize(std::char_traits<Character>::length(text.c_str()));
}

template <class Character>
void KeepTextAfterLastSeparator(std::basic_string<Character>& path) {
    EndAtZero(path);
    path.erase(0, path.rfind('/') + 1); // 0 if there is no separator
}

} // namespace

std::string path_rimuovifilename(std::string path) {
    path.resize(path.rfind('/') + 1); // 0 if there is no separator
    return path;
}

std::string GetPathWithoutFilename(std::string path) {
    EndAtZero(path);
    return path_rimuovifilename(std::move(path));
}

std::string GetFilenameWithoutPath(std::string path) {
    KeepTextAfterLastSeparator(path);
    return path;
}

std::wstring GetFilenameWithoutPath(std::wstring path) {
    KeepTextAfterLastSeparator(path);
    return path;
}

std::string GetFolderPathFromFilename(std::string path) {
    const auto separator = std::find_if(path.rbegin(), path.rend(), IsSeparator);
    if (separator != path.rend()) {
        path.erase(separator.base() - 1, path.end());
    }
    return path;
}

std::string GetPathRoot(std::string& path) { return path; }

std::string CheckFolderHasSeparator(std::string folder) {
    if (!folder.empty() && folder.back() != '/') {
        folder += '/';
    }
    return folder;
}

std::string NormalizePath(std::string path) {
    constexpr std::size_t resultLimit = 1040;
    std::array<char, PATH_MAX> resolved;
    if (realpath(path.c_str(), resolved.data()) != nullptr && std::strlen(resolved.data()) < resultLimit) {
        return resolved.data();
    }
    return path;
}

std::string NormalizePathCase(std::string path) { return path; }

// A rule in NormalizePathCase would have to be applied by the next two functions as well.
bool CompareNormalizedPaths(std::string a, std::string b) { return a == b; }

bool IsPathBelow(std::string path, std::string folder) {
    if (folder.empty()) {
        return true;
    }
    // Without the trailing separator, which a folder need not have.
    const std::size_t length = folder.back() == '/' ? folder.size() - 1 : folder.size();
    return path.size() > length && path[length] == '/' &&
           std::equal(folder.data(), folder.data() + length, path.data());
}

std::string ConvertPathToLocalSystem(std::string path) {
    if (path.size() >= 3 && path[1] == ':' && path[2] == '\\') {
        path.erase(0, 2);
    }
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::vector<char> GetShellString(std::string path) {
    std::vector<char> result(path.size() + 2);
    std::copy(path.begin(), path.end(), result.begin());
    return result;
}

std::vector<wchar_t> GetShellWString(std::string path) {
    const std::vector<char> bytes = GetShellString(std::move(path));
    std::vector<wchar_t> result;
    result.reserve(bytes.size());
    wchar_t character = 0;
    for (const char byte : bytes) {
        std::mbstate_t state{}; // of its own for each byte, so that the rest of a character does not join its start
        std::mbrtowc(&character, &byte, 1, &state);
        result.push_back(character);
    }
    return result;
}

} // namespace Tolvex::FileNames
