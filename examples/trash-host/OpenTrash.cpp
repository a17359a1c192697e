#include "OpenTrash.h"

#include "Text.h"

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/Trash/Trash.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

std::string FindTrashFolder(Use use) {
    const char* const home = std::getenv("HOME");
    bool isFolder = false;
    // The library cuts paths at 1039 bytes when it deletes folders; inside the trash there must be room for any name.
    RefuseIf(home == nullptr || *home != '/' || !CheckPathIsDirectory(home, isFolder) || !isFolder ||
                 std::strlen(home) > 600,
             "HOME is not the full path of a folder, or too long");
    const std::string application = home + std::string("/Library/Application Support/Tolvex Studio 10");
    // GetTrashFolderPath makes the application's folder.
    return use == Use::Put || Exists(application) ? GetTrashFolderPath() : application + "/Trash";
}

void MakeFolders(const std::string& trash) {
    // Another run may make a folder of the chain just before this one does, and CreateDirectories then gives up.
    // The next attempt finds that folder and goes on below it, so there are as many attempts as folders on the way.
    for (auto attempts = std::count(trash.begin(), trash.end(), '/'); !CreateDirectories(trash); --attempts) {
        RefuseIf(attempts == 1, "the folder " + Shown(trash) + " cannot be made");
    }
}

void Lock(int folder, int kind) {
    for (int attempt = 0; flock(folder, kind | LOCK_NB) != 0; ++attempt) {
        RefuseIf(attempt == 100, "another run of this program has been at work in the trash for ten seconds");
        RefuseIf(interruption != 0, "interrupted");
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

void CheckAccess(const std::string& path, int rights) {
    if (faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) != 0) {
        throw Refusal(Shown(path) + ": " + std::strerror(errno));
    }
}

std::vector<std::string> FilesOfDeletable(const std::string& folder, const std::string& pathInTrash) {
    std::vector<std::string> files;
    if (!IsFolder(folder)) {
        return files;
    }
    CheckAccess(folder, R_OK | W_OK | X_OK);
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
        const std::string path = entry->path();
        std::error_code error;
        RefuseIf(interruption != 0, "interrupted; nothing was changed");
        RefuseIf(entry->is_symlink() && entry->is_directory(error),
                 Shown(path) + " is a link to a folder: a purge would empty the folder it leads to");
        // remove_dir_content goes down 20 folders and cuts paths at 1039 bytes.
        RefuseIf(entry.depth() >= 20 || path.size() - folder.size() + pathInTrash.size() > 1039,
                 Shown(path) + " lies too deep: a purge could not delete it");
        if (IsFolder(path)) {
            CheckAccess(path, R_OK | W_OK | X_OK);
        } else {
            files.push_back(path);
        }
    }
    return files;
}

OpenTrash::OpenTrash(Use use) : folder(FindTrashFolder(use)), stream(nullptr, closedir) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) { // in the wrong moment they would cut the database
        if (use != Use::List) {
            std::signal(
                signal, signal == SIGPIPE ? SIG_IGN : [](int number) { interruption = number; });
        }
    }
    if (use == Use::Put) {
        MakeFolders(folder);
    }
    constexpr unsigned long long roomForDatabase = 16'000'000;
    RefuseIf(use >= Use::Restore && GetAvailableSpace(folder) < roomForDatabase,
             "the disk is too full to save the trash database; a purge makes room");
    stream.reset(opendir(folder.c_str()));
    RefuseIf(stream == nullptr && errno != ENOENT,
             "the trash folder " + Shown(folder) + " cannot be opened: " + std::strerror(errno));
    if (stream != nullptr) {
        Lock(dirfd(stream.get()), use == Use::List ? LOCK_SH : LOCK_EX);
    }
    records = saved = ReadDatabase(PathOf(".trash.db"), use != Use::List);
}

std::string OpenTrash::NameOf(const std::string& path) const {
    return IsPathBelow(path, folder) ? path.substr(folder.size() + 1) : path;
}

std::set<std::string> OpenTrash::Names() const {
    std::set<std::string> names;
    for (const auto& listing : {GetFolderFiles(folder), GetFolderSubfolders(folder)}) {
        names.insert(listing.begin(), listing.end());
    }
    names.erase(".trash.db");
    return names;
}

std::pair<Records::iterator, Records::iterator> OpenTrash::RecordsBelow(const std::string& path) {
    return {records.lower_bound(path + '/'), records.lower_bound(path + '0')}; // "0" comes after "/"
}

bool OpenTrash::Forget(const std::string& path) {
    const std::size_t before = records.size();
    const auto [first, last] = RecordsBelow(path);
    records.erase(first, last);
    records.erase(path);
    return records.size() != before;
}

void OpenTrash::Settle() {
    Records found;
    try {
        found = ReadDatabase(PathOf(".trash.db"), false);
    } catch (const Refusal&) { // cut short by a full disk or the end of its writer
    }
    for (const auto& [path, record] : found) {
        const auto own = records.find(path);
        if (own == records.end() ? Exists(path) : own->second.origin == record.origin) {
            records[path] = record;
        }
    }
    if (found == records) {
        return;
    }
    try {
        Save();
    } catch (const Refusal&) { // no room for a second file: what was in the first one goes in its place
        for (auto entry = records.begin(); entry != records.end();) {
            entry = saved.count(entry->first) == 0 ? records.erase(entry) : std::next(entry);
        }
        WriteDatabase(PathOf(".trash.db"), records, true);
    }
}

void OpenTrash::ForEach(const std::vector<std::string>& items, const std::function<void(const std::string&)>& move) {
    std::exception_ptr failure;
    try {
        for (std::size_t done = 0; done < items.size(); ++done) {
            RefuseIf(interruption != 0, "interrupted after " + std::to_string(done) + " of the items");
            if (items.size() > 10) {
                ShowProgress(std::to_string(done) + " of " + std::to_string(items.size()) +
                             " (for each, the library saves all records anew)");
            }
            move(items[done]);
        }
    } catch (...) {
        failure = std::current_exception();
    }
    ShowProgress("");
    Settle();
    if (failure) {
        std::rethrow_exception(failure);
    }
}
