#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>
#include <FrameworkBase/Files/internal/BufferedFile.h>
#include <FrameworkBase/Files/internal/ReadProbe.h>

#include <memory>
#include <mutex>

TrashDB trashDB;

namespace {

using Guard = std::lock_guard<Tolvex::Sync::CCritSec>;

constexpr int databaseVersion = 2;
constexpr int firstVersionWithOriginalPath = 2;

struct CloseFile {
    void operator()(FlapFiles::CFile* file) const { file->Close(); }
};

void SerializeString(FlapFiles::CFileBase& file, const std::string& text) {
    const std::size_t size = text.size() + 1; // the terminating zero is part of the record
    file.WriteData(static_cast<int>(size));
    file.Write(text.c_str(), static_cast<long long>(size));
}

} // namespace

std::string TrashDB::GetDBFile() const { return Tolvex::FileNames::ComposePath(folder, ".trash.db"); }

void TrashDB::Load(std::string trashFolder) {
    folder = std::move(trashFolder);
    const std::string path = GetDBFile();
    if (!OpensForReading(path)) {
        return;
    }
    try {
        FlapFiles::CFile file;
        BufferedFile records(file);
        file.DoCreate(path.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
        const std::unique_ptr<FlapFiles::CFile, CloseFile> closeAtEnd(&file);
        int version = 0;
        records.ReadData(version);
        int count = 0;
        records.ReadData(count);
        const Guard guard(lock);
        for (; count > 0; --count) {
            std::string key = records.ReadString();
            DateTime added;
            records.ReadData(added.ticks);
            std::string original;
            if (version >= firstVersionWithOriginalPath) {
                original = records.ReadString();
            }
            // The file is sorted, so the place is nearly always the end.
            files.insert_or_assign(files.end(), std::move(key), std::pair(added, std::move(original)));
        }
    } catch (const TolvexException&) {
        // What was read before the damage counts.
    }
}

void TrashDB::Unload() {
    try {
        FlapFiles::CFile file;
        BufferedFile records(file);
        file.DoCreate(GetDBFile().c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      CREATE_ALWAYS);
        const Guard guard(lock);
        records.WriteData(databaseVersion);
        records.WriteData(static_cast<int>(files.size()));
        for (const auto& [key, value] : files) {
            SerializeString(records, key);
            records.WriteData(value.first.ticks);
            SerializeString(records, value.second);
        }
        records.Close();
        files.clear();
    } catch (const TolvexException&) {
        // The map stays, and so does the stream; see the declaration.
    }
}

void TrashDB::InsertFile(std::string trashPath, std::string originalPath) {
    const Guard guard(lock);
    files.insert_or_assign(std::move(trashPath), std::pair(DateTime::Now(), std::move(originalPath)));
}

bool TrashDB::GetFileOriginalPath(std::string trashPath, std::string& originalPath) {
    const Guard guard(lock);
    const auto entry = files.find(trashPath);
    if (entry == files.end()) {
        return false;
    }
    originalPath = entry->second.second;
    return !originalPath.empty();
}

bool TrashDB::GetFileAdded(std::string trashPath, DateTime& added) {
    const Guard guard(lock);
    const auto entry = files.find(trashPath);
    if (entry == files.end()) {
        return false;
    }
    added = entry->second.first;
    return true;
}

void TrashDB::DeleteFile(std::string trashPath) {
    const Guard guard(lock);
    files.erase(trashPath);
}
