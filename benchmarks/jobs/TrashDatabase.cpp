#include "benchmarks/Inputs.h"
#include <FrameworkBase/Trash/TrashCleanup.h>
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <filesystem>
#include <unistd.h>

namespace {

using Files = decltype(TrashDB::files);

TrashDB database;

void Load(Files& map) {
    database.Load(TrashFolder());
    map.swap(database.files);
}

void Save(Files& map) {
    map.swap(database.files);
    database.folder = TrashFolder();
    database.Unload();
}

Records expired;
std::vector<std::string> paths;

/// Makes expired files in the trash, and their records in any map of them.
template <class Map>
void MakeExpired(long count, Map& map) {
    std::filesystem::create_directories(TrashFolder());
    map.clear();
    paths.clear();
    for (const auto& [path, value] : MakeRecords(count)) {
        WriteFileAtOnce(path, "");
        map.insert({path, {{value.first}, value.second}});
        paths.push_back(path);
    }
}

void PurgeByHand() {
    for (Path path : paths) {
        if (expired.find(path) != expired.end()) {
            unlink(path.c_str());
        }
    }
}

const Registration databases([] {
    OnDatabase<Files>(library, Load, Save);
    OnDatabase<Records>(limit, LoadByHand, SaveByHand);
    PreparedJob purge{"deleting/purge expired files", {2'000, 20'000}, [](long count) { MakeExpired(count, expired); }};
    Measure(purge, limit, PurgeByHand);
    purge.prepare = [](long count) { MakeExpired(count, trashDB.files); };
    Measure(purge, library, [] { CleanupTrashFolder(TrashFolder(), false); });
});

} // namespace
