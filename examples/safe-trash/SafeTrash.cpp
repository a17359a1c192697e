#include "SafeTrash.h"

#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <stdexcept>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

namespace {

/// The time an item arrived, in units of 100 nanoseconds since 1601, and its origin.
using Record = std::pair<long long, std::string>;
/// The records of the database, by the item's full path in the trash.
using Records = std::map<std::string, Record>;

struct Failure : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Throws `what` with the reason that the system gave for the failure of the last call.
[[noreturn]] void Fail(const std::string& what) {
    const int error = errno;
    throw Failure(what + ": " + (error == EXDEV ? "they are on different volumes" : std::strerror(error)));
}

/// Returns true if anything is at `path`, a link that leads nowhere included, or if the system does not say.
bool Exists(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

/// Returns true for a folder, and not for a link to one.
bool IsFolder(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Moves the whole item or, returning false with `errno`, leaves it at `from`. Replaces nothing: a file gets a second
/// name, which fails where there is something, and loses the first; a folder takes the place of an empty one made here.
bool Move(const std::string& from, const std::string& to) {
    if (IsFolder(from)) {
        if (mkdir(to.c_str(), 0777) != 0) {
            return false;
        }
        if (rename(from.c_str(), to.c_str()) == 0) {
            return true;
        }
    } else {
        if (linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), 0) != 0) {
            return false;
        }
        if (unlink(from.c_str()) == 0) {
            return true;
        }
    }
    const int error = errno;
    if (Exists(from)) {
        std::remove(to.c_str());
    }
    errno = error;
    return false;
}

/// A file of the library's that is closed at the end of its scope.
struct File : FlapFiles::CFile {
    File(const std::string& path, unsigned int access, unsigned int disposition) {
        DoCreate(path.c_str(), access, FILE_SHARE_READ, disposition);
    }
    ~File() override { CFile::Close(); }
};

/// Reads a string. Where the database is damaged the library's reader returns what it can; how far it got shows that:
/// 4 bytes for the length, the string, and its one zero byte.
std::string ReadString(File& file) {
    const long long start = file.GetCurrentPosition();
    std::string string = DeSerializeString(file);
    if (file.GetCurrentPosition() - start != 4 + static_cast<long long>(string.size()) + 1) {
        throw TolvexException("bad string");
    }
    return string;
}

/// Reads a whole database. The library would read a damaged one up to the damage, and save only that.
Records ReadDatabase(const std::string& path) {
    Records records;
    if (!Exists(path)) {
        return records;
    }
    if (!fs::is_regular_file(fs::symlink_status(path))) {
        throw Failure("the trash database " + path + " is not a file");
    }
    if (access(path.c_str(), R_OK) != 0) {
        Fail(path + " may not be read");
    }
    try {
        File file(path, GENERIC_READ, OPEN_EXISTING);
        int version = 0;
        int count = 0;
        file.ReadData(version);
        file.ReadData(count);
        for (int i = 0; i < count; ++i) {
            auto& [added, origin] = records[ReadString(file)];
            file.ReadData(added);
            origin = version == 2 ? ReadString(file) : "";
        }
        if (version < 1 || version > 2 || static_cast<int>(records.size()) != count || file.GetSizeLeft() != 0) {
            throw TolvexException("bad version, count or size");
        }
        return records;
    } catch (const TolvexException& exception) {
        throw Failure("the trash database " + path + " is damaged (" + exception.message + "). Nothing was changed");
    }
}

void WriteString(File& file, const std::string& string) {
    const auto size = static_cast<int>(string.size()) + 1;
    file.WriteData(size);
    file.Write(string.c_str(), size);
}

void WriteDatabase(const std::string& path, const Records& records) {
    try {
        File file(path, GENERIC_WRITE, CREATE_ALWAYS);
        file.WriteData(2);
        file.WriteData(static_cast<int>(records.size()));
        for (const auto& [item, record] : records) {
            WriteString(file, item);
            file.WriteData(record.first);
            WriteString(file, record.second);
        }
        if (!file.Close()) { // only now is it certain that the disk took it all
            throw TolvexException("Error writing data");
        }
    } catch (const TolvexException& exception) {
        throw Failure("the disk is too full to save the trash database (" + exception.message + ")");
    }
}

/// The trash folder, which no other user of this module enters meanwhile, and the records of its database.
class Trash {
public:
    Trash() : folder(GetTrashFolderPath()), database(folder + "/.trash.db"), copy(folder + ".db.copy") {
        lock = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (lock < 0 || flock(lock, LOCK_EX) != 0) {
            const int error = errno;
            close(lock);
            errno = error;
            Fail("the trash folder " + folder + " cannot be opened");
        }
        try {
            Read();
        } catch (...) {
            close(lock);
            throw;
        }
    }
    ~Trash() {
        if (!isCopyNeeded) {
            unlink(copy.c_str());
        }
        close(lock);
    }
    Trash(const Trash&) = delete;
    Trash& operator=(const Trash&) = delete;

    /// Makes a copy of the database for Restore. Forgets the files that have vanished from the trash, which the library
    /// does not: a later item of the same name, or of one that differs in letter case where the volume ignores that,
    /// would be purged by their dates.
    void Protect() {
        for (auto entry = records.begin(); entry != records.end();) {
            const bool hasVanished = IsPathBelow(entry->first, folder) && !Exists(entry->first);
            entry = hasVanished ? records.erase(entry) : std::next(entry);
        }
        WriteDatabase(copy, records);
        if (records != saved) {
            Restore();
            WriteDatabase(copy, records);
        }
    }

    /// Puts the copy into the place of the database.
    void Restore() {
        isCopyNeeded = rename(copy.c_str(), database.c_str()) != 0;
        if (isCopyNeeded) {
            Fail("the trash database cannot be saved; what it has to hold is in " + copy);
        }
    }

    /// Returns true if the database has all the records of items that are still there.
    bool IsKept() const {
        try {
            const Records now = ReadDatabase(database);
            return std::all_of(records.begin(), records.end(), [&now](const auto& entry) {
                const auto found = now.find(entry.first);
                return (found != now.end() && found->second == entry.second) || !Exists(entry.first);
            });
        } catch (const Failure&) {
            return false;
        }
    }

    const std::string folder;
    const std::string database;
    const std::string copy; ///< beside the trash folder, in which a purge would take it for an item
    Records records;

private:
    /// Reads the copy if the database is damaged because a process ended while it was saved.
    void Read() {
        try {
            records = ReadDatabase(database);
        } catch (const Failure&) {
            if (!Exists(copy)) {
                throw;
            }
            records = ReadDatabase(copy);
            Restore();
        }
        saved = records;
    }

    Records saved; ///< as the database has them
    bool isCopyNeeded = false;
    int lock = -1;
};

/// Returns what in `folder` the purge would follow to other folders: a link to a folder, or paths that it cuts.
std::string HazardIn(const std::string& folder) {
    constexpr std::size_t longestPath = 1039;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_symlink() && fs::is_directory(fs::status(entry.path()))) {
            return entry.path().string() + " is a link to a folder: a purge would empty the folder it leads to";
        }
        if (entry.path().native().size() > longestPath) {
            return entry.path().string() + " is too long a path";
        }
    }
    return "";
}

/// Has the library record that an item came from `path`, where nothing is, by moving an empty folder from there into
/// the trash. Returns the path in the trash that it gave to this item.
std::string RecordOrigin(const Trash& trash, const std::string& path) {
    if (mkdir(path.c_str(), 0777) != 0) {
        Fail("no folder can be made in its place");
    }
    DeleteFileToRecycleBin(path, true);
    const Records now = ReadDatabase(trash.database);
    std::string target;
    for (const auto& [item, record] : now) {
        if (record.second == path && trash.records.count(item) == 0) {
            target = item;
        }
    }
    if (target.empty() || !trash.IsKept()) {
        throw Failure("the trash database could not be saved");
    }
    return target;
}

/// An empty folder in the trash for one item. Removed at the end, if it is empty again.
struct Holder {
    explicit Holder(const std::string& trash) : path(trash + "/arriving-XXXXXX") {
        if (mkdtemp(path.data()) == nullptr) {
            Fail("nothing can be put into " + trash);
        }
    }
    ~Holder() { rmdir(path.c_str()); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    std::string path;
};

/// Has the library forget the item that was at `trashPath` and is at its origin again. With nothing at `trashPath` the
/// library would copy a file from its origin into the trash; an empty folder there it cannot move onto the file, and
/// deletes it. A folder is not copied.
void Forget(Trash& trash, const std::string& trashPath, const std::string& origin) {
    if (!IsFolder(origin) && mkdir(trashPath.c_str(), 0777) != 0) {
        Fail("its record stays in the trash database");
    }
    PutBack(trashPath);
    rmdir(trashPath.c_str());
    if (!trash.IsKept()) {
        trash.Restore();
    }
}

} // namespace

std::string SafeTrash::ProblemOf(const std::string& path) {
    try {
        const std::string name = GetFilenameWithoutPath(path);
        if (path.empty() || path.front() != '/' || name.empty() || name == "." || name == ".." || !Exists(path)) {
            return "it is not the full path of an existing file or folder";
        }
        const fs::file_status status = fs::symlink_status(path);
        if (!is_regular_file(status) && !is_directory(status) && !is_symlink(status)) {
            return "it is neither a file nor a folder";
        }
        if (IsPathBelow(NormalizePath(path_rimuovifilename(path)) + '/', NormalizePath(GetTrashFolderPath()))) {
            return "it is there already";
        }
        return is_directory(status) ? HazardIn(path) : "";
    } catch (const fs::filesystem_error& error) {
        return error.what();
    }
}

SafeTrash::Report SafeTrash::Put(const std::string& path) {
    Report report{false, path, ProblemOf(path)};
    if (!report.message.empty()) {
        return report;
    }
    try {
        CreateDirectories(GetTrashFolderPath());
        Trash trash;
        trash.Protect();
        const Holder holder(trash.folder);
        const std::string held = holder.path + '/' + GetFilenameWithoutPath(path);
        if (!Move(path, held)) {
            Fail("it cannot be moved into the trash");
        }
        std::string target;
        try {
            if (Exists(holder.path + "/.trash.db")) { // under this name, or under one that the volume takes for it
                throw Failure("it would replace " + trash.database);
            }
            target = RecordOrigin(trash, path);
            rmdir(target.c_str()); // the empty folder
            if (!Move(held, target)) {
                Fail("it cannot be moved to " + target);
            }
            return {true, target, ""};
        } catch (const std::exception& exception) {
            rmdir(path.c_str()); // the empty folder again
            report.path = Move(held, path) ? path : held;
            report.message = exception.what();
            trash.Restore();
        }
    } catch (const std::exception& exception) {
        report.message = exception.what();
    }
    return report;
}

SafeTrash::Report SafeTrash::PutBack(const std::string& trashPath) {
    Report report{false, trashPath, ""};
    try {
        Trash trash;
        const auto found = trash.records.find(trashPath);
        if (found == trash.records.end()) {
            throw Failure("it is not recorded in the trash");
        }
        const std::string origin = found->second.second;
        const std::string name = GetFilenameWithoutPath(trashPath);
        if (trashPath != trash.folder + '/' + name || name == "." || name == ".." || name == ".trash.db") {
            throw Failure("it is not an item of this trash by itself");
        }
        if (origin.empty() || origin.front() != '/') {
            throw Failure("the trash database does not say where it came from");
        }
        if (!Exists(trashPath)) {
            throw Failure("it has vanished from the trash");
        }
        trash.Protect();
        if (!Move(trashPath, origin)) {
            if (errno == EEXIST) {
                throw Failure("something else is at " + origin);
            }
            if (errno == ENOENT) {
                throw Failure("the folder " + path_rimuovifilename(origin) + " is gone");
            }
            Fail("it cannot be moved to " + origin);
        }
        report = {true, origin, ""};
        Forget(trash, trashPath, origin);
    } catch (const std::exception& exception) {
        report.message = exception.what();
    }
    return report;
}

SafeTrash::Contents SafeTrash::List() {
    constexpr long long ticksPerSecond = 10'000'000;
    constexpr long long secondsFrom1601To1970 = 11'644'473'600;
    Contents contents;
    try {
        if (!Exists(GetTrashFolderPath())) {
            return contents;
        }
        const Trash trash;
        for (const fs::directory_entry& entry : fs::directory_iterator(trash.folder)) {
            Item item{entry.path(), "", 0};
            const auto found = trash.records.find(item.path);
            if (found != trash.records.end()) {
                item.origin = found->second.second;
                item.arrived = static_cast<std::time_t>(found->second.first / ticksPerSecond - secondsFrom1601To1970);
            }
            if (item.path != trash.database) {
                contents.items.push_back(item);
            }
        }
        const auto isBefore = [](const Item& a, const Item& b) { return a.path < b.path; };
        std::sort(contents.items.begin(), contents.items.end(), isBefore);
    } catch (const std::exception& exception) {
        contents.message = exception.what();
    }
    return contents;
}

SafeTrash::Report SafeTrash::Purge(bool all) {
    Report report{false, GetTrashFolderPath(), ""};
    try {
        if (!Exists(report.path)) {
            report.isDone = true;
            return report;
        }
        Trash trash;
        if (access(trash.folder.c_str(), W_OK) != 0) {
            Fail(trash.folder + " may not be changed");
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(trash.folder)) {
            const std::string hazard = IsFolder(entry.path()) ? HazardIn(entry.path()) : "";
            if (!hazard.empty()) {
                throw Failure(hazard);
            }
        }
        bool isProtected = false;
        try {
            trash.Protect();
            isProtected = true;
        } catch (const Failure&) { // a full disk, which this purge helps against
            if (!all) {
                throw;
            }
        }
        const auto ended = std::make_shared<std::promise<void>>();
        CleanupTrashFolder(all, [ended] { ended->set_value(); });
        ended->get_future().wait();
        if (isProtected && !trash.IsKept()) {
            trash.Restore();
        }
        for (const auto& [path, record] : trash.records) {
            if (all && Exists(path)) {
                throw Failure(path + " cannot be deleted");
            }
        }
        report.isDone = true;
    } catch (const std::exception& exception) {
        report.message = exception.what();
    }
    return report;
}
