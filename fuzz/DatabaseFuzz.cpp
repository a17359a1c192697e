#include "fuzz/Support.h"
#include "tests/Faults/Allocations.h"
#include "tests/Trash/TrashDatabase.h"
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <algorithm>
#include <fstream>
#include <new>

// The input is a database file. What the library makes of it is compared with the tests' own reader of the format,
// and it may ask for no more memory than a length in the file demands.

namespace {

constexpr int mostMemory = 1 << 20; ///< larger requests are refused
bool isLibraryAtWork = false;
int mostDemanded = 0; ///< the largest length in the file

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
    Require(size <= static_cast<std::size_t>(std::max(mostMemory, mostDemanded)),
            "asks for no more memory than a length demands");
    if (size > mostMemory) {
        throw std::bad_alloc();
    }
}

void OnRelease() noexcept {}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    const std::string input(reinterpret_cast<const char*>(data), size);
    std::ofstream(scratch.path + "/.trash.db", std::ios::binary) << input;
    mostDemanded = 0;
    const Entries expected = EntriesIn(input, mostMemory, &mostDemanded);

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
