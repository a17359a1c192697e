#include "FrameworkBase/Trash/internal/TrashDB.h"
#include "fuzz/Support.h"
#include "tests/Faults/Allocations.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <new>
#include <string_view>

// The input is a database file. What the library makes of it is compared with a reader and a writer of the format that
// are written here anew, and it may ask for no more memory than a length in the file demands.

namespace {

using Entries = std::map<std::string, std::pair<long long, std::string>>;

/// Memory requests too large to be had in this process.
struct Refused {
    static constexpr std::size_t above = 1 << 20;
    std::size_t count = 0;
    std::size_t bytes = 0;
};

bool watching = false;
Refused refused;

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest(bytes) {}

    /// What is left of the number's bytes counts when some are missing, as in the library. Whether all were there.
    template <class Number>
    bool Read(Number& number) {
        const std::size_t count = std::min(sizeof number, rest.size());
        std::memcpy(&number, rest.data(), count);
        rest.remove_prefix(count);
        return count == sizeof number;
    }

    std::string ReadText() {
        int length = 0;
        Read(length);
        const auto size = static_cast<std::size_t>(length);
        if (length < 0) {
            return {};
        }
        if (size > Refused::above) {
            ++demanded.count;
            demanded.bytes += size;
            return {};
        }
        const std::string_view text = rest.substr(0, size);
        rest.remove_prefix(text.size());
        return text.size() == size ? std::string(text.substr(0, text.find('\0'))) : "";
    }

    Refused demanded; ///< the lengths read that no memory can be had for

private:
    std::string_view rest;
};

Entries ReadDatabase(Reader& reader) {
    int version = 0;
    int count = 0;
    reader.Read(version);
    Entries entries;
    for (count = reader.Read(count) ? count : 0; count > 0; --count) {
        std::string key = reader.ReadText();
        long long added = 0;
        if (!reader.Read(added)) {
            break;
        }
        entries[std::move(key)] = {added, version >= 2 ? reader.ReadText() : ""};
    }
    return entries;
}

template <class Number>
void Append(std::string& file, Number number) {
    file.append(reinterpret_cast<const char*>(&number), sizeof number);
}

std::string WriteDatabase(const Entries& entries) {
    std::string file;
    Append(file, 2);
    Append(file, static_cast<int>(entries.size()));
    for (const auto& [key, entry] : entries) {
        Append(file, static_cast<int>(key.size() + 1));
        file.append(key.c_str(), key.size() + 1);
        Append(file, entry.first);
        Append(file, static_cast<int>(entry.second.size() + 1));
        file.append(entry.second.c_str(), entry.second.size() + 1);
    }
    return file;
}

bool Holds(TrashDB& database, const Entries& entries) {
    return database.files.size() == entries.size() &&
           std::all_of(entries.begin(), entries.end(), [&database](const auto& expected) {
               TrashDB::DateTime added;
               std::string original = "untouched";
               const bool canPutBack = database.GetFileOriginalPath(expected.first, original);
               return database.GetFileAdded(expected.first, added) && added.ticks == expected.second.first &&
                      original == expected.second.second && canPutBack == !original.empty();
           });
}

} // namespace

void OnAllocate(std::size_t size) {
    if (watching && size > Refused::above) {
        ++refused.count;
        refused.bytes += size;
        throw std::bad_alloc();
    }
}

void OnRelease() noexcept {}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    static const std::string path = scratch.path / ".trash.db";
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::ofstream(path, std::ios::binary) << input;
    Reader reader(input);
    const Entries expected = ReadDatabase(reader);

    TrashDB database;
    refused = {};
    watching = true;
    database.Load(scratch.path);
    Require(refused.count == reader.demanded.count && refused.bytes == reader.demanded.bytes,
            "asks for the memory that the lengths demand, and for no more");
    Require(Holds(database, expected), "loads the records before the damage");
    database.Load(scratch.path);
    Require(Holds(database, expected), "loading again changes nothing");

    database.Unload();
    Require(database.files.empty(), "saving empties the map");
    std::ifstream file(path, std::ios::binary);
    const std::string saved{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    Require(saved == WriteDatabase(expected), "saves in the documented format");
    database.Load(scratch.path);
    Require(Holds(database, expected), "loads what it saved");
    for (const auto& entry : expected) {
        database.DeleteFile(entry.first);
    }
    Require(database.files.empty(), "forgets what it is told to");
    watching = false;
    return 0;
}
