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

/// Returns kind and permissions of what is at `path`, or 0 on failure. Links are followed. This must be a function call
/// in remove_dir_content, so that each level of that recursion fits on the stack of any thread.
mode_t ModeOf(const char* path);

/// Returns true if `name` is "." or "..".
bool IsDotOrDotDot(const char* name);

/// Replaces `names` by the names of the folders in `folder`, or of everything else in it. Returns false, and leaves
/// `names` unchanged, if it cannot be opened. An error while reading ends the list and counts as success.
template <bool foldersOnly>
bool DoGetFolderFiles(std::string folder, std::vector<std::string>& names);

extern template bool DoGetFolderFiles<false>(std::string folder, std::vector<std::string>& names);
extern template bool DoGetFolderFiles<true>(std::string folder, std::vector<std::string>& names);

} // namespace Tolvex::FileNames
