#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/Trash/Trash.h>

#include <filesystem>
#include <iostream>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

/// The full path of what `path` names. Only its folder is resolved: a link at the end is itself what goes. The library's
/// GetAbsolutePath would follow it, and take a backslash for a separator.
std::string FullPath(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    const std::string name = GetFilenameWithoutPath(path);
    const std::string folder = path_rimuovifilename(path);
    std::string item = CheckFolderHasSeparator(NormalizePath(folder.empty() ? "." : folder)) + name;
    if (name.empty() || name == "." || name == ".." || item.front() != '/' || !Exists(item)) {
        throw Refusal("\"" + Shown(path) + "\" is not the name of an existing file or folder");
    }
    const fs::file_type type = fs::status(item).type();
    const bool isBrokenLink = type == fs::file_type::not_found;
    if (type != fs::file_type::regular && type != fs::file_type::directory && !isBrokenLink) {
        throw Refusal(Shown(path) + " is neither a file nor a folder");
    }
    return item;
}

/// The name that the library will give to `item` in the trash.
std::string NameInTrash(const OpenTrash& trash, const std::string& item) {
    std::string name = GetFilenameWithoutPath(item);
    std::string extension = GetExtension(name);
    if (extension == name) {
        extension.clear();
    }
    return trash.NameOf(ComposeNewFilenameAndCheckExists(trash.folder, GetFilenameWithoutExtension(name), extension));
}

/// Returns the item's name in the trash, or refuses.
std::string Check(const OpenTrash& trash, const std::string& item) {
    if (IsPathBelow(item, NormalizePath(trash.folder))) {
        throw Refusal(Shown(item) + " is in the trash already");
    }
    if (IsFolder(item)) {
        RefuseLinksToFolders(item);
    }
    std::string name = NameInTrash(trash, item);
    // The library takes a name for free when the file cannot be read, and would put the item in its place.
    if (Exists(trash.PathOf(name)) || name == ".trash.db") {
        throw Refusal(Shown(item) + " would replace " + Shown(trash.PathOf(name)));
    }
    trash.TryMove(OpenTrash::Direction::In, name, item);
    return name;
}

void PutOne(OpenTrash& trash, const std::string& item) {
    const std::string name = Check(trash, item);
    const std::string target = trash.PathOf(name);
    trash.Forget(target);
    Records expected = trash.records;
    if (IsFolder(item)) {
        DeleteFolderWithContents(item.c_str(), false, false);
    } else {
        DeleteFileToRecycleBin(item, true);
    }
    trash.Reload();
    expected[target] = {trash.records[target].added, item};
    Verify(trash.records == expected && Exists(target) && !Exists(item), Shown(target) + " is there and recorded");
    std::cout << Shown(name) << "  <-  " << Shown(item) << '\n';
}

} // namespace

void PutIntoTrash(const std::vector<std::string>& paths) {
    std::vector<std::string> items;
    for (const std::string& path : paths) {
        const std::string item = FullPath(path);
        for (const std::string& other : items) {
            if (item == other || IsPathBelow(item, other) || IsPathBelow(other, item)) {
                throw Refusal(Shown(item) + " and " + Shown(other) + " cannot both go");
            }
        }
        items.push_back(item);
    }
    OpenTrash trash(Use::Change);
    for (const std::string& item : items) {
        Check(trash, item);
    }
    for (const std::string& item : items) {
        PutOne(trash, item);
    }
}
