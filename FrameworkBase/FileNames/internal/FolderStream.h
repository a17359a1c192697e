#pragma once

#include <dirent.h>
#include <memory>
#include <string>
#include <vector>

namespace Tolvex::FileNames {

struct CloseFolder {
    void operator()(DIR* stream) const { closedir(stream); }
};
using FolderStream = std::unique_ptr<DIR, CloseFolder>;

/// Whether `name` is "." or "..".
bool IsDotOrDotDot(const char* name);

/// Replaces `names` by the names of the folders in `folder`, or of everything else in it. False, with `names`
/// untouched, when it cannot be opened; an error while reading ends the list and counts as success.
template <bool foldersOnly>
bool DoGetFolderFiles(std::string folder, std::vector<std::string>& names);

extern template bool DoGetFolderFiles<false>(std::string folder, std::vector<std::string>& names);
extern template bool DoGetFolderFiles<true>(std::string folder, std::vector<std::string>& names);

} // namespace Tolvex::FileNames
