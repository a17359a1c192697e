#include <FrameworkBase/Trash/TrashCleanup.h>

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <algorithm>
#include <thread>
#include <utility>
#include <vector>

using Tolvex::FileNames::ComposePath;
using Tolvex::FileNames::GetFolderFiles;
using Tolvex::FileNames::GetFolderSubfolders;
using VarnelNative::Utility::DateTime;

namespace {

/// Returns true if more than 30 days have passed since `added`. The comparison is unsigned, so that a time before 1601
/// never expires.
bool IsExpired(DateTime added) {
    constexpr long long expiryAge = 30 * DateTime::ticksPerDay;
    return static_cast<unsigned long long>(added.ticks) <
           static_cast<unsigned long long>(DateTime::Now().ticks - expiryAge);
}

/// Deletes the file at `path` if it is due, or records it if it is not recorded. Returns true if it was deleted.
bool CleanupFile(const std::string& path, bool all) {
    DateTime added;
    if (!trashDB.GetFileAdded(path, added)) {
        trashDB.InsertFile(path, "");
        return false;
    }
    if (!all && !IsExpired(added)) {
        return false;
    }
    Tolvex::FileNames::DeleteFileA(path.c_str());
    trashDB.DeleteFile(path);
    return true;
}

} // namespace

void CleanupTrashFolder(bool all, std::function<void()> callback) {
    std::thread([trash = Tolvex::FileNames::GetTrashFolderPath(), all, callback = std::move(callback)] {
        trashDB.Load(trash);
        CleanupTrashFolder(trash, all);
        CheckDeleteEmptyFolders(trash);
        trashDB.Unload();
        if (callback) {
            callback();
        }
    }).detach();
}

bool CleanupTrashFolder(std::string folder, bool all) {
    bool deletedAnything = false;
    for (const std::string& name : GetFolderFiles(folder)) {
        if (name != ".trash.db" && CleanupFile(ComposePath(folder, name), all)) {
            deletedAnything = true;
        }
    }
    for (const std::string& name : GetFolderSubfolders(folder)) {
        const std::string path = ComposePath(folder, name);
        if (all || CleanupTrashFolder(path, false)) {
            remove_dir_content(path.c_str(), 0);
            deletedAnything = true;
        }
    }
    return deletedAnything;
}

bool HasFiles(std::string folder, int depth) {
    constexpr int depthLimit = 50;
    if (depth > depthLimit || !GetFolderFiles(folder).empty()) {
        return true;
    }
    const std::vector<std::string> subfolders = GetFolderSubfolders(folder);
    return std::any_of(subfolders.begin(), subfolders.end(), [&folder, depth](const std::string& name) {
        return HasFiles(ComposePath(folder, name), depth + 1);
    });
}

void CheckDeleteEmptyFolders(std::string folder) {
    for (const std::string& name : GetFolderSubfolders(folder)) {
        const std::string path = ComposePath(folder, name);
        if (!HasFiles(path, 0)) {
            remove_dir_content(path.c_str(), 0);
        }
    }
}
