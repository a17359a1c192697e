#pragma once

#include <dirent.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace Tolvex::FileNames {

struct CloseFolder {
    void operator()(DIR* stream) const { closedir(stream); }
};
using FolderStream = std::unique_ptr<DIR, CloseFolder>;

/// Kind and permissions of what is at `path`, links followed; 0 when that cannot be told. Removing a folder counts on
/// its being a call: so a level of the recursion is small enough for the stack of any thread.
mode_t ModeOf(const char* path);

/// Whether `name` is "." or "..".
bool IsDotOrDotDot(const char* name);

/// Replaces `names` by the names of the folders in `folder`, or of everything else in it. False, with `names`
/// untouched, when it cannot be opened; an error while reading ends the list and counts as success.
template <bool foldersOnly>
bool DoGetFolderFiles(std::string folder, std::vector<std::string>& names);

extern template bool DoGetFolderFiles<false>(std::string folder, std::vector<std::string>& names);
extern template bool DoGetFolderFiles<true>(std::string folder, std::vector<std::string>& names);

} // namespace Tolvex::FileNames
