#include "TrashHost.h"

#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/Trash/Trash.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

struct stat StatusOf(const std::string& path) {
    struct stat status {};
    lstat(path.c_str(), &status);
    return status;
}

/// Moves stay on one device and, where the system tells them apart, on one of its mounts.
std::pair<dev_t, unsigned long long> VolumeOf(const std::string& folder) {
#ifdef STATX_MNT_ID
    struct statx extended {};
    statx(AT_FDCWD, folder.c_str(), 0, STATX_MNT_ID, &extended);
    return {StatusOf(folder).st_dev, extended.stx_mnt_id};
#endif
    return {StatusOf(folder).st_dev, 0};
}

/// Refuses, with `claim` and the reason, unless the system can move the item `from` to `to`. The library does not say
/// whether a move worked, and A FILE THAT CANNOT BE MOVED IS LOST (see Rename), so what makes it fail is looked at
/// before.
void CheckMove(const std::string& claim, const std::string& from, const std::string& to) {
    const std::string source = path_rimuovifilename(from); // with their separators, so that links there are followed
    const std::string target = path_rimuovifilename(to);
    const bool isFolder = IsFolder(from);
    RefuseIf(!IsFolder(target), claim + "the folder " + Shown(target) + " is gone");
    RefuseIf(Exists(to), claim + "something else is at " + Shown(to));
    const auto longest = static_cast<std::size_t>(pathconf(target.c_str(), _PC_NAME_MAX));
    RefuseIf(to.size() > 1039 || to.size() - target.size() > longest, claim + "its name is too long");
    RefuseIf(isFolder && IsPathBelow(NormalizePath(target) + '/', NormalizePath(from)), claim + "that lies in it");
    RefuseIf(VolumeOf(source) != VolumeOf(target) || (isFolder && VolumeOf(from) != VolumeOf(target)),
             claim + "they are on different volumes");
    CheckAccess(source, W_OK | X_OK);
    CheckAccess(target, W_OK | X_OK);
    CheckAccess(isFolder ? from : source, W_OK); // a folder that moves has its entry ".." changed
    const bool isMine = geteuid() == StatusOf(from).st_uid || geteuid() == StatusOf(source).st_uid || geteuid() == 0;
    RefuseIf((StatusOf(source).st_mode & S_ISVTX) != 0 && !isMine, claim + "it belongs to somebody else");
}

/// The full path of what `path` names. Only its folder is resolved: a link at the end is itself what goes. The
/// library's GetAbsolutePath would follow it, and take a backslash for a separator.
std::string FullPath(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    const std::string name = GetFilenameWithoutPath(path);
    const std::string folder = path_rimuovifilename(path);
    std::string item = CheckFolderHasSeparator(NormalizePath(folder.empty() ? "." : folder)) + name;
    RefuseIf(name.empty() || name == "." || name == ".." || item.front() != '/' || !Exists(item),
             "\"" + Shown(path) + "\" is not the name of an existing file or folder");
    const fs::file_type type = fs::status(item).type();
    RefuseIf(type != fs::file_type::regular && type != fs::file_type::directory && type != fs::file_type::not_found,
             Shown(path) + " is neither a file nor a folder");
    return item;
}

/// Whether the volume of the trash takes `name` for the database's, as one does that ignores letter case. The database
/// need not be there yet, so the volume is asked in a folder made for that.
bool NamesDatabase(const OpenTrash& trash, const std::string& name) {
    std::string folder = trash.PathOf("probe.XXXXXX");
    RefuseIf(mkdtemp(folder.data()) == nullptr, Shown(trash.folder) + " may not be changed: " + std::strerror(errno));
    const std::string database = folder + "/.trash.db";
    const bool isMade = cp(database.c_str(), "/dev/null") == 0;
    const bool isFound = Exists(folder + '/' + name);
    unlink(database.c_str());
    rmdir(folder.c_str());
    RefuseIf(!isMade, "no file can be made in " + Shown(trash.folder));
    return isFound;
}

/// Returns the path that the library will give to `item` in the trash, or refuses.
std::string CheckPut(const OpenTrash& trash, const std::string& item) {
    const std::string claim = Shown(item) + " cannot go into the trash: ";
    const std::string realTrash = NormalizePath(trash.folder);
    RefuseIf(IsPathBelow(item, realTrash), claim + "it is there already");
    RefuseIf(IsPathBelow(realTrash + '/', NormalizePath(item)), claim + "the trash lies in it");
    std::string name = GetFilenameWithoutPath(item);
    const std::string extension = GetExtension(name);
    std::string target = ComposeNewFilenameAndCheckExists(trash.folder, GetFilenameWithoutExtension(name),
                                                          extension == name ? "" : extension);
    // A file that cannot be read counts as free to the library, which would put the item in its place.
    RefuseIf(Exists(target) || name.rfind(".trash.db", 0) == 0, claim + "it would replace " + Shown(target));
    CheckMove(claim, item, target);
    FilesOfDeletable(item);
    RefuseIf(NamesDatabase(trash, name), claim + "it would replace " + Shown(trash.database));
    return target;
}

void Put(OpenTrash& trash, const std::string& item) {
    const std::string target = CheckPut(trash, item);
    if (trash.Forget(target)) {
        trash.Save();
    }
    DeleteFileToRecycleBin(item, true);
    RefuseIf(!Exists(target) || Exists(item), Shown(item) + " did not arrive as " + Shown(target));
    trash.records[target] = {Now(), item};
    Say(Shown(trash.NameOf(target)) + "  <-  " + Shown(item));
}

/// The recorded path of what the user calls `item`: its name as Shown, else as it is, else its full path.
std::string FindRecord(const OpenTrash& trash, std::string item) {
    item.erase(item.size() - (!item.empty() && item.back() == '/' ? 1 : 0));
    const bool isEscaped = item.find('\\') != std::string::npos; // then all have to be looked at
    auto found = std::find_if(isEscaped ? trash.records.begin() : trash.records.end(), trash.records.end(),
                              [&](const auto& entry) { return Shown(trash.NameOf(entry.first)) == item; });
    found = found == trash.records.end() ? trash.records.find(trash.PathOf(item)) : found;
    found = found == trash.records.end() ? trash.records.find(item) : found;
    RefuseIf(found == trash.records.end(), Shown(item) + " is not recorded in the trash");
    return found->first;
}

/// Refuses unless the item recorded as `path` can go back without replacing anything.
void CheckRestore(const OpenTrash& trash, const std::string& path) {
    const std::string name = trash.NameOf(path);
    const std::string claim = Shown(name) + " cannot go back: ";
    const std::string& origin = trash.records.at(path).second;
    RefuseIf(name.find('/') != std::string::npos || name == "." || name == ".." || name == ".trash.db",
             claim + "it is not an item of this trash by itself");
    RefuseIf(origin.empty() || origin.front() != '/', claim + "the trash database does not tell where it came from");
    RefuseIf(!Exists(path), claim + "it has vanished from the trash");
    CheckMove(claim, path, origin);
}

void Restore(OpenTrash& trash, const std::string& path) {
    CheckRestore(trash, path);
    const std::string origin = trash.records.at(path).second;
    const auto [first, last] = trash.RecordsOf(path);
    const auto lost = std::count_if(first, last, [](const auto& file) { return !Exists(file.first); });
    PutBack(path);
    RefuseIf(!Exists(origin) || Exists(path), Shown(path) + " did not arrive at " + Shown(origin));
    trash.Forget(path);
    Say(Shown(trash.NameOf(path)) + "  ->  " + Shown(origin) +
        (lost == 0 ? "" : "  INCOMPLETE, files of it deleted in the trash: " + std::to_string(lost)));
}

} // namespace

void PutIntoTrash(const std::vector<std::string>& paths) {
    std::vector<std::string> items;
    std::transform(paths.begin(), paths.end(), std::back_inserter(items), FullPath);
    std::multiset<std::string> known(items.begin(), items.end());
    for (const std::string& item : items) {
        for (fs::path folder = item; folder != "/"; folder = folder.parent_path()) {
            RefuseIf(known.count(folder) > (folder == item ? 1U : 0U),
                     Shown(item) + " and " + Shown(folder) + " cannot both go");
        }
    }
    OpenTrash trash(Use::Put);
    for (const std::string& item : items) {
        CheckPut(trash, item);
    }
    trash.ForEach(items, [&trash](const std::string& item) { Put(trash, item); });
}

void RestoreFromTrash(const std::vector<std::string>& items) {
    OpenTrash trash(Use::Restore);
    std::vector<std::string> paths;
    std::set<std::string> origins;
    for (const std::string& item : items) {
        paths.push_back(FindRecord(trash, item));
        CheckRestore(trash, paths.back());
        RefuseIf(!origins.insert(trash.records.at(paths.back()).second).second,
                 Shown(item) + " and another item cannot both go to one place");
    }
    trash.ForEach(paths, [&trash](const std::string& path) { Restore(trash, path); });
}
