#include "FrameworkBase/Trash/internal/TrashDB.h"
#include "fuzz/Support.h"
#include "tests/Faults/Allocations.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <new>
#include <string_view>

// The input is a database file. What the library makes of it is compared with a reader of the format written here anew,
// and it may ask for no more memory than a length in the file demands.

namespace {

constexpr std::size_t mostMemory = 1 << 20; ///< larger requests are refused
bool isLibraryAtWork = false;
std::size_t mostDemanded = 0; ///< the largest length in the file

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest(bytes) {}

    /// Whether all bytes of the number were there. Those that were count, as in the library.
    template <class Number>
    bool Read(Number& number) {
        const std::string_view bytes = Take(sizeof number);
        std::memcpy(&number, bytes.data(), bytes.size());
        return bytes.size() == sizeof number;
    }

    std::string ReadText() {
        int length = 0;
        Read(length);
        const auto size = static_cast<std::size_t>(std::max(length, 0));
        mostDemanded = std::max(mostDemanded, size);
        if (size > mostMemory) {
            return {};
        }
        const std::string_view text = Take(size);
        return text.size() == size ? std::string(text.substr(0, text.find('\0'))) : "";
    }

private:
    std::string_view Take(std::size_t size) {
        const std::string_view taken = rest.substr(0, size);
        rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest;
};

using Entries = std::map<std::string, std::pair<long long, std::string>>;

Entries ReadDatabase(std::string_view file) {
    Reader reader(file);
    int version = 0;
    int count = 0;
    long long added = 0;
    reader.Read(version);
    Entries entries;
    for (count = reader.Read(count) ? count : 0; count > 0; --count) {
        std::string key = reader.ReadText();
        if (!reader.Read(added)) {
            break;
        }
        entries[std::move(key)] = {added, version >= 2 ? reader.ReadText() : ""};
    }
    return entries;
}

bool Holds(const TrashDB& database, const Entries& entries) {
    return std::equal(database.files.begin(), database.files.end(), entries.begin(), entries.end(),
                      [](const auto& entry, const auto& expected) {
                          return entry.first == expected.first && entry.second.first.ticks == expected.second.first &&
                                 entry.second.second == expected.second.second;
                      });
}

} // namespace

void OnAllocate(std::size_t size) {
    if (!isLibraryAtWork) {
        return;
    }
    Require(size <= std::max(mostMemory, mostDemanded), "asks for no more memory than a length demands");
    if (size > mostMemory) {
        throw std::bad_alloc();
    }
}

void OnRelease() noexcept {}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::ofstream(scratch.path + "/.trash.db", std::ios::binary) << input;
    mostDemanded = 0;
    const Entries expected = ReadDatabase(input);

    isLibraryAtWork = true;
    TrashDB database;
    database.Load(scratch.path);
    Require(Holds(database, expected), "loads the records before the damage");
    database.Load(scratch.path);
    Require(Holds(database, expected), "loading again changes nothing");
    database.Unload();
    Require(database.files.empty(), "saving empties the map");
    database.Load(scratch.path);
    Require(Holds(database, expected), "loads what it saved");
    for (const auto& [key, entry] : expected) {
        std::string original;
        Require(database.GetFileOriginalPath(key, original) == !entry.second.empty(), "knows where an item came from");
        database.DeleteFile(key);
    }
    Require(database.files.empty(), "forgets what it is told to");
    isLibraryAtWork = false;
    return 0;
}
