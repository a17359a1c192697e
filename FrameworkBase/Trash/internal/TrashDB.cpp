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

/// Reads the fields of a database file, which is closed at the end. A block is read at a time, and each field comes out
/// as it would from the file itself.
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

    /// Up to `size` bytes, and how many came, as CFile::Read does.
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
    /// False when nothing came, and once after each short block: the field that reaches beyond the end, or a fault, of
    /// the file comes short, and the next one tries again.
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
    long long next = 0; ///< the place in the block from which the next byte comes
    long long end = 0;  ///< the number of bytes in the block
    bool blockWasShort = false;
};

/// Writes a database file. The fields of a record reach the stream as one write, or a few, smaller than its own block:
/// so the disk gets the same bytes, and an error shows, at the same places as if the stream took each field by itself.
/// Left open unless it is closed.
class RecordWriter {
public:
    explicit RecordWriter(const std::string& path) {
        file.DoCreate(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS);
    }

    template <class Number>
    void PutNumber(Number number) {
        Put(&number, sizeof number);
    }

    /// The length with the terminating zero, the text, and that zero.
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
            // The file is sorted, so the place is nearly always the end.
            files.insert_or_assign(files.end(), std::move(key), std::pair(added, std::move(original)));
        }
    } catch (const TolvexException&) {
        // What was read before the damage counts.
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
