#include "OpenTrash.h"

#include "Text.h"

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/Trash/Trash.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

std::string FindTrashFolder() {
    const char* const home = std::getenv("HOME");
    const bool isUsable = home == nullptr || (*home == '/' && fs::is_directory(home));
    // The library cuts paths at 1039 bytes when it deletes folders; inside the trash there must be room for any name.
    if (!isUsable || GetTrashFolderPath().size() > 700) {
        throw Refusal("HOME is not the full path of a folder, or too long");
    }
    return GetTrashFolderPath();
}

void MakeFolders(const std::string& path) {
    // Another run may make a folder of the chain just before this one does, and CreateDirectories then gives up.
    // The next attempt finds that folder and goes on below it, so there are as many attempts as folders on the way.
    const auto attempts = std::count(path.begin(), path.end(), '/');
    for (auto attempt = attempts; !CreateDirectories(path); --attempt) {
        if (attempt == 1) {
            throw Refusal("the folder " + Shown(path) + " cannot be made");
        }
    }
}

void PrepareForChange(const std::string& trash) {
    const std::string applicationFolder = GetHomeFolderMac();
    if (!CheckFileExistsEvenIfNotAccessible(applicationFolder)) {
        std::cout << "making the application's folder " << Shown(applicationFolder) << '\n';
    }
    MakeFolders(trash);
    constexpr unsigned long long roomForDatabase = 16'000'000;
    if (GetAvailableSpace(trash) < roomForDatabase) {
        throw Refusal("the disk is too full to save the trash database");
    }
    // An interruption in the wrong moment would cut the database.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        std::signal(signal, SIG_IGN);
    }
}

void Lock(int folder, int kind) {
    for (int attempt = 0; flock(folder, kind | LOCK_NB) != 0; ++attempt) {
        if (attempt == 100) {
            throw Refusal("another run of this program has been at work in the trash for ten seconds");
        }
        usleep(100'000);
    }
}

} // namespace

bool Exists(const std::string& path) {
    std::error_code error;
    return exists(fs::symlink_status(path, error));
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return is_directory(fs::symlink_status(path, error));
}

void RefuseLinksToFolders(const std::string& folder) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_symlink() && entry.is_directory(error)) {
            throw Refusal(Shown(entry.path()) + " is a link to a folder: a purge would empty the folder it leads to");
        }
    }
}

OpenTrash::OpenTrash(Use use) : folder(FindTrashFolder()), stream(nullptr, closedir) {
    if (use == Use::Change) {
        PrepareForChange(folder);
    }
    stream.reset(opendir(folder.c_str()));
    if (stream != nullptr) {
        Lock(dirfd(stream.get()), use == Use::Change ? LOCK_EX : LOCK_SH);
    } else if (use == Use::Change || errno != ENOENT) {
        throw Refusal("the trash folder " + Shown(folder) + " cannot be opened: " + std::strerror(errno));
    }
    records = ReadDatabase(PathOf(".trash.db"), use);
}

std::string OpenTrash::NameOf(const std::string& path) const {
    return IsPathBelow(path, folder) ? path.substr(folder.size() + 1) : path;
}

std::vector<std::string> OpenTrash::Names() const {
    std::vector<std::string> names = GetFolderFiles(folder);
    const std::vector<std::string> subfolders = GetFolderSubfolders(folder);
    names.insert(names.end(), subfolders.begin(), subfolders.end());
    names.erase(std::remove(names.begin(), names.end(), ".trash.db"), names.end());
    std::sort(names.begin(), names.end());
    return names;
}

void OpenTrash::TryMove(Direction direction, const std::string& name, const std::string& path) const {
    // By the folder's descriptor, so that the way back works even when the trash is reached through the item.
    const auto move = [trash = dirfd(stream.get()), &name, &path](bool isIn) {
        return isIn ? renameat(AT_FDCWD, path.c_str(), trash, name.c_str())
                    : renameat(trash, name.c_str(), AT_FDCWD, path.c_str());
    };
    const auto refuse = [&name, &path](const std::string& reason) {
        throw Refusal("cannot move between " + Shown(path) + " and " + Shown(name) + " in the trash: " + reason);
    };
    const bool isIn = direction == Direction::In;
    if (move(isIn) != 0) {
        refuse(errno == EXDEV    ? "they are on different volumes"
               : errno == EINVAL ? "the trash lies in it"
                                 : std::strerror(errno));
    }
    const bool hasArrived = Exists(isIn ? PathOf(name) : path);
    if (move(!isIn) != 0) {
        refuse("it went there but not back: " + std::string(std::strerror(errno)));
    }
    if (!hasArrived) {
        refuse("the trash is reached through it");
    }
}

void OpenTrash::Forget(const std::string& path) {
    const std::size_t before = records.size();
    records.erase(path);
    records.erase(records.lower_bound(path + '/'), records.lower_bound(path + '0')); // "0" comes after "/"
    if (records.size() != before) {
        Save();
    }
}
