#include "fuzz/Support.h"
#include "tests/Trash/TrashDatabase.h"
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <algorithm>
#include <fstream>

// The input is a database file. What the library makes of it is compared with the tests' own reader of the format.

namespace {

bool Holds(const TrashDB& database, const Entries& entries) {
    return std::equal(database.files.begin(), database.files.end(), entries.begin(), entries.end(),
                      [](const auto& entry, const auto& expected) {
                          return entry.first == expected.first && entry.second.first.ticks == expected.second.first &&
                                 entry.second.second == expected.second.second;
                      });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    const std::string input(reinterpret_cast<const char*>(data), size);
    std::ofstream(scratch.path + "/.trash.db", std::ios::binary) << input;
    int longest = 0;
    const Entries expected = EntriesIn(input, &longest);
    if (longest > 1 << 24) {
        return 0; // a test of its own tries what takes much memory, and time
    }
    TrashDB database;
    database.Load(scratch.path);
    Require(Holds(database, expected), "loads the records before the damage");
    database.Load(scratch.path);
    Require(Holds(database, expected), "loading again changes nothing");
    database.Unload();
    Require(database.files.empty(), "saving empties the map");
    database.Load(scratch.path);
    Require(Holds(database, expected), "loads what it saved");
    return 0;
}
