#include "TrashHost.h"

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>
#include <FrameworkBase/Trash/Trash.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

/// A file that is closed at the end of its scope, which the library leaves to its users.
struct File : FlapFiles::CFile {
    File(const std::string& path, unsigned int access, unsigned int disposition) {
        DoCreate(path.c_str(), access, FILE_SHARE_READ, disposition);
    }
    ~File() override { CFile::Close(); }
};

/// The text at the position of `file`. On a bad one the library's reader returns what it can; the number of bytes that
/// it took tells: 4 for the length, the text, and its one zero byte.
std::string ReadText(File& file) {
    const long long start = file.GetCurrentPosition();
    std::string text = DeSerializeString(file);
    if (file.GetCurrentPosition() - start != 4 + static_cast<long long>(text.size()) + 1) {
        throw TolvexException("bad text");
    }
    return text;
}

Records ReadDatabase(const std::string& path, int rights) {
    const fs::file_status status = fs::symlink_status(path);
    Records records;
    if (!exists(status)) {
        return records;
    }
    RefuseIf(!is_regular_file(status), "the trash database " + Shown(path) + " is not a file");
    CheckAccess(path, rights);
    try {
        File file(path, GENERIC_READ, OPEN_EXISTING);
        int version = 0;
        int count = 0;
        file.ReadData(version);
        file.ReadData(count);
        for (int i = 0; i < count; ++i) {
            auto& [added, origin] = records[ReadText(file)];
            file.ReadData(added);
            origin = version == 2 ? ReadText(file) : "";
        }
        if (version < 1 || version > 2 || static_cast<int>(records.size()) != count || file.GetSizeLeft() != 0) {
            throw TolvexException("bad version, count or size");
        }
        return records;
    } catch (const TolvexException& exception) {
        throw Refusal("the trash database " + Shown(path) + " is damaged (" + exception.message + "). Nothing was " +
                      "changed. docs/trash-database.md tells what can be saved from it; without it, purge starts anew");
    }
}

void WriteDatabase(const std::string& path, const Records& records) {
    try {
        File file(path, GENERIC_WRITE, CREATE_ALWAYS);
        const auto writeText = [&file](const std::string& text) {
            file.WriteData(static_cast<int>(text.size()) + 1);
            file.Write(text.c_str(), static_cast<long long>(text.size()) + 1);
        };
        file.WriteData(2);
        file.WriteData(static_cast<int>(records.size()));
        for (const auto& [item, record] : records) {
            writeText(item);
            file.WriteData(record.first);
            writeText(record.second);
        }
        if (!file.Close()) { // only now is it certain that the disk took it all
            throw TolvexException("Error writing to file");
        }
    } catch (const TolvexException& exception) {
        throw Refusal("the trash database " + Shown(path) + " cannot be written: " + exception.message);
    }
}

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
    const bool isAllowed = faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
    RefuseIf(!isAllowed,
             Shown(path) + " may not be " + ((rights & W_OK) != 0 ? "changed: " : "read: ") + std::strerror(errno));
}

std::vector<std::string> FilesOfDeletable(const std::string& folder) {
    std::vector<std::string> files;
    if (!IsFolder(folder)) {
        return files;
    }
    CheckAccess(folder, R_OK | W_OK | X_OK);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        std::error_code error;
        RefuseIf(interruption != 0, "interrupted; nothing was changed");
        RefuseIf(entry.is_symlink() && entry.is_directory(error),
                 Shown(entry.path()) + " is a link to a folder: a purge would empty the folder it leads to");
        if (IsFolder(entry.path())) {
            CheckAccess(entry.path(), R_OK | W_OK | X_OK);
        } else {
            files.push_back(entry.path());
        }
    }
    return files;
}

OpenTrash::OpenTrash(Use use) : folder(FindTrashFolder(use)), database(PathOf(".trash.db")), stream(nullptr, closedir) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) { // in the wrong moment they would cut the database
        if (use != Use::List) {
            std::signal(
                signal, signal == SIGPIPE ? SIG_IGN : [](int number) { interruption = number; });
        }
    }
    // Another run may make a folder of the chain just before this one does, and CreateDirectories then gives up. The
    // next attempt finds that folder and goes on below it.
    for (int attempt = 0; use == Use::Put && !CreateDirectories(folder); ++attempt) {
        RefuseIf(attempt == 100, "the folder " + Shown(folder) + " cannot be made");
    }
    constexpr unsigned long long roomForDatabase = 16'000'000;
    RefuseIf(use >= Use::Restore && GetAvailableSpace(folder) < roomForDatabase,
             "the disk is too full to save the trash database; a purge makes room");
    stream.reset(opendir(folder.c_str()));
    RefuseIf(stream == nullptr && errno != ENOENT, "the trash folder " + Shown(folder) + " cannot be opened");
    const int kind = (use == Use::List ? LOCK_SH : LOCK_EX) | LOCK_NB;
    for (int attempt = 0; stream != nullptr && flock(dirfd(stream.get()), kind) != 0; ++attempt) {
        RefuseIf(attempt == 100, "another run of this program has been at work in the trash for ten seconds");
        RefuseIf(interruption != 0, "interrupted; nothing was changed");
        usleep(100'000);
    }
    records = saved = ReadDatabase(database, use == Use::List ? R_OK : R_OK | W_OK);
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

std::pair<Records::iterator, Records::iterator> OpenTrash::RecordsOf(const std::string& path) {
    return IsFolder(path) ? std::pair(records.lower_bound(path + '/'), records.lower_bound(path + '0')) // '/' + 1
                          : records.equal_range(path);
}

bool OpenTrash::Forget(const std::string& path) {
    const std::size_t before = records.size();
    records.erase(records.lower_bound(path + '/'), records.lower_bound(path + '0'));
    records.erase(path);
    return records.size() != before;
}

void OpenTrash::Save() const {
    const std::string draft = ComposeNewFilenameAndCheckExists(database, ".new");
    try {
        WriteDatabase(draft, records);
        fs::rename(draft, database);
    } catch (const Refusal&) {
        fs::remove(draft);
        throw;
    }
}

void OpenTrash::Settle() {
    Records found;
    try {
        found = ReadDatabase(database, R_OK);
    } catch (const Refusal&) { // cut short by a full disk or the end of its writer
    }
    for (const auto& [path, record] : found) {
        const auto own = records.find(path);
        if (own == records.end() ? Exists(path) : own->second.second == record.second) {
            records[path] = record;
        }
    }
    try {
        if (found != records) {
            Save();
        }
    } catch (const Refusal&) { // no room for a second file: what was in the first one goes in its place
        for (auto entry = records.begin(); entry != records.end();) {
            entry = saved.count(entry->first) == 0 ? records.erase(entry) : std::next(entry);
        }
        WriteDatabase(database, records);
    }
}

void OpenTrash::ForEach(const std::vector<std::string>& items, const std::function<void(const std::string&)>& move) {
    const std::string total = " of " + std::to_string(items.size());
    try {
        for (std::size_t done = 0; done < items.size(); ++done) {
            RefuseIf(interruption != 0, "interrupted after " + std::to_string(done) + total);
            ShowProgress(std::to_string(done) + total + " (for each, the library saves all records anew)");
            move(items[done]);
        }
    } catch (...) {
        Settle();
        throw;
    }
    Settle();
}
