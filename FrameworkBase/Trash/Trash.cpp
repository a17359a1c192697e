#include <FrameworkBase/Trash/Trash.h>

#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <utility>

namespace Tolvex::FileNames {

std::string GetTrashFolderPath() { return ComposePath(GetHomeFolderMac(), "Trash"); }

void DeleteFileToRecycleBin(std::string path, bool loadDatabase) {
    const std::string trash = GetTrashFolderPath();
    if (!CheckFileExistsEvenIfNotAccessible(trash)) {
        CreateDirectory(trash);
    }
    if (loadDatabase) {
        trashDB.Load(trash);
    }
    std::string name = GetFilenameWithoutPath(path);
    std::string extension = GetExtension(name);
    if (extension == name) {
        extension.clear();
    }
    const std::string target =
        ComposeNewFilenameAndCheckExists(trash, RemoveExtension(std::move(name)), std::move(extension));
    Rename(path, target);
    trashDB.InsertFile(target, std::move(path));
    if (loadDatabase) {
        trashDB.Unload();
    }
}

void DeleteFolderWithContents(const char* path, bool /*ignored*/, bool permanently) {
    if (permanently) {
        remove_dir_content(path, 0);
        return;
    }
    trashDB.Load(GetTrashFolderPath());
    DeleteFileToRecycleBin(path, false);
    trashDB.Unload();
}

bool CanPutBack(std::string trashPath) {
    trashDB.Load(GetTrashFolderPath());
    std::string original;
    const bool canPutBack = trashDB.GetFileOriginalPath(std::move(trashPath), original);
    trashDB.Unload();
    return canPutBack;
}

bool PutBack(std::string trashPath) {
    trashDB.Load(GetTrashFolderPath());
    std::string original;
    const bool canPutBack = trashDB.GetFileOriginalPath(trashPath, original);
    if (canPutBack) {
        Rename(trashPath, std::move(original));
        trashDB.DeleteFile(std::move(trashPath));
    }
    trashDB.Unload();
    return canPutBack;
}

void TouchFolder(std::string folder) {
    for (const std::string& name : GetFolderFiles(folder)) {
        trashDB.InsertFile(ComposePath(folder, name), name);
    }
    for (const std::string& name : GetFolderSubfolders(folder)) {
        TouchFolder(name);
    }
}

} // namespace Tolvex::FileNames
