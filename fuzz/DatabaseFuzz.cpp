#include "fuzz/Support.h"
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <fstream>
#include <map>
#include <new>

// The input is a database file, mostly a damaged one. Strings of absurd lengths get no memory: clearing it takes time.

void* operator new[](std::size_t size) {
    if (size > std::size_t{1} << 24) {
        throw std::bad_alloc();
    }
    return ::operator new(size);
}

void operator delete[](void* memory) noexcept { ::operator delete(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { ::operator delete(memory); }

namespace {

using Records = std::map<std::string, std::pair<long long, std::string>>;

Records LoadedBy(TrashDB& database, const std::string& folder) {
    database.Load(folder);
    Records records;
    for (const auto& [path, value] : database.files) {
        records[path] = {value.first.ticks, value.second};
    }
    return records;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    std::ofstream(scratch.path + "/.trash.db", std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    TrashDB database;
    const Records loaded = LoadedBy(database, scratch.path);
    Require(LoadedBy(database, scratch.path) == loaded, "loading again changes nothing");
    database.Unload();
    Require(database.files.empty(), "saving forgets what is in memory");
    Require(LoadedBy(database, scratch.path) == loaded, "a saved database loads as what was saved");
    return 0;
}
