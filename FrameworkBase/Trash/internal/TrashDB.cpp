#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Files/FileStream.h>
#include <FrameworkBase/Files/internal/ReadProbe.h>
#include <FrameworkBase/Files/internal/TextField.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <utility>

TrashDB trashDB;

namespace {

using Guard = std::lock_guard<Tolvex::Sync::CCritSec>;

constexpr int databaseVersion = 2;
constexpr int firstVersionWithOriginalPath = 2;

/// Reads the fields of a database file, and closes it at the end. Reads a block at a time; each field is the same as if
/// it were read from the file itself.
class RecordReader {
public:
    explicit RecordReader(const std::string& path) {
        file.DoCreate(path.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    }
    ~RecordReader() { file.Close(); }
    RecordReader(const RecordReader&) = delete;
    RecordReader& operator=(const RecordReader&) = delete;

    template <class Number>
    Number ReadNumber() {
        Number number = 0;
        if (Read(&number, sizeof number) != static_cast<long long>(sizeof number)) {
            throw TolvexException("Error reading data");
        }
        return number;
    }

    std::string ReadText() { return ReadTextField(*this); }

    /// Reads up to `size` bytes and returns their number, as CFile::Read does.
    long long Read(void* data, long long size) {
        auto* to = static_cast<char*>(data);
        long long left = size;
        while (left > 0 && (next != end || ReadBlock())) {
            const long long count = std::min(left, end - next);
            std::memcpy(to, block.data() + next, static_cast<std::size_t>(count));
            next += count;
            to += count;
            left -= count;
        }
        return size - left;
    }

private:
    /// Returns false if nothing could be read, and once after each short block: the field that reaches beyond the end
    /// of the file, or an error, is cut there, and the next field tries again.
    bool ReadBlock() {
        if (std::exchange(blockWasShort, false)) {
            return false;
        }
        constexpr auto size = static_cast<long long>(std::tuple_size_v<decltype(block)>);
        next = 0;
        end = file.Read(block.data(), size);
        blockWasShort = end > 0 && end < size;
        return end > 0;
    }

    FlapFiles::CFile file;
    std::array<char, 4096> block;
    long long next = 0; ///< the position of the next byte in the block
    long long end = 0;  ///< the number of bytes in the block
    bool blockWasShort = false;
};

/// Writes a database file. The fields of a record are written to the stream at once, or in a few pieces that are
/// smaller than its block: so the disk gets the same bytes, and errors show at the same places, as if each field were
/// written by itself. The destructor does not close the file.
class RecordWriter {
public:
    explicit RecordWriter(const std::string& path) {
        file.DoCreate(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS);
    }

    template <class Number>
    void PutNumber(Number number) {
        Put(&number, sizeof number);
    }

    /// Writes the length, which includes the zero byte, the string, and that zero byte.
    void PutText(const std::string& text) {
        PutNumber(static_cast<int>(text.size() + 1));
        Put(text.data(), text.size());
        Put("", 1);
    }

    void EndRecord() {
        file.Write(record.data(), static_cast<long long>(used));
        used = 0;
    }

    void Close() { file.Close(); }

private:
    void Put(const void* field, std::size_t size) {
        if (size > record.size() - used) {
            EndRecord();
        }
        if (size > record.size()) {
            file.Write(field, static_cast<long long>(size));
            return;
        }
        std::memcpy(record.data() + used, field, size);
        used += size;
    }

    FlapFiles::CFile file;
    std::array<char, 500> record; ///< smaller than any stream's block
    std::size_t used = 0;
};

} // namespace

std::string TrashDB::GetDBFile() const { return Tolvex::FileNames::ComposePath(folder, ".trash.db"); }

void TrashDB::Load(std::string trashFolder) {
    folder = std::move(trashFolder);
    const std::string path = GetDBFile();
    if (!OpensForReading(path)) {
        return;
    }
    try {
        RecordReader records(path);
        const int version = records.ReadNumber<int>();
        int count = records.ReadNumber<int>();
        const Guard guard(lock);
        for (; count > 0; --count) {
            std::string key = records.ReadText();
            const DateTime added{records.ReadNumber<long long>()};
            std::string original = version >= firstVersionWithOriginalPath ? records.ReadText() : "";
            // The file is sorted, so the position is nearly always the end.
            files.insert_or_assign(files.end(), std::move(key), std::pair(added, std::move(original)));
        }
    } catch (const TolvexException&) {
        // The records before the damage count.
    }
}

void TrashDB::Unload() {
    try {
        RecordWriter records(GetDBFile());
        const Guard guard(lock);
        records.PutNumber(databaseVersion);
        records.PutNumber(static_cast<int>(files.size()));
        records.EndRecord();
        for (const auto& [key, value] : files) {
            records.PutText(key);
            records.PutNumber(value.first.ticks);
            records.PutText(value.second);
            records.EndRecord();
        }
        records.Close();
        files.clear();
    } catch (const TolvexException&) {
        // The map is left unchanged, and the stream open; see the declaration.
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
