#include "benchmarks/Jobs.h"
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Trash/TrashCleanup.h>
#include <FrameworkBase/Trash/internal/TrashDB.h>
#include <ctime>
#include <mutex>

[[gnu::noinline]] static std::string ComposeByHand(std::string folder, std::string name) {
    folder.reserve(folder.size() + 1 + name.size());
    if (!folder.empty() && folder.back() != '/') {
        folder += '/';
    }
    folder += name;
    return folder;
}
[[gnu::noinline]] static long long ClockByHand() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return 116'444'736'000'000'000 + now.tv_sec * 10'000'000 + now.tv_nsec / 100;
}
static auto& expired = trashDB.files; // the plainest code uses the library's map, but not its functions

/// Each access to the records takes the lock for itself.
static void PurgeByHand() {
    static std::recursive_mutex lock;
    for (Path name : ListByHand(TrashFolder(), false)) {
        const std::string path = TrashFolder() + '/' + name;
        std::unique_lock guard(lock);
        const auto record = expired.find(path);
        if (record != expired.end() && record->second.first.ticks < ClockByHand() - 25'920'000'000'000) {
            guard.unlock();
            unlink(path.c_str());
            guard.lock();
            expired.erase(path);
        } else if (record == expired.end() && name != ".trash.db") {
            expired[path].first.ticks = ClockByHand();
        }
    }
    ListByHand(TrashFolder(), true);
}
static void MakeExpired(long count) {
    fs::create_directories(TrashFolder());
    expired.clear();
    for (const auto& [path, value] : MakeRecords(count)) {
        WriteFileAtOnce(path, "");
        expired[path] = {{value.first}, value.second};
    }
}

const Registration internals([] {
    OnPath("compose", library, [](Parts parts) { return Tolvex::FileNames::ComposePath(parts.folder, parts.name); });
    OnPath("compose", plainest, [](Parts parts) { return ComposeByHand(parts.folder, parts.name); });
    const auto nothing = [](long size) { return size; };
    Measure("clock/time now", {1}, library, nothing, [](long) { return VarnelNative::Utility::DateTime::Now(); });
    Measure("clock/time now", {1}, plainest, nothing, [](long) { return ClockByHand(); });
    const auto load = [](auto& /*files*/) { trashDB.Load(TrashFolder()); };
    OnDatabase(library, trashDB.files, load, [](auto& /*files*/) { trashDB.Unload(); });
    static Records records;
    OnDatabase(plainest, records, LoadByHand, SaveByHand);
    for (const PreparedJob& purge :
         {PreparedJob{"deleting/purge expired files", {2'000, 20'000}, MakeExpired},
          PreparedJob{"growth/purge n expired files", {25'000, 50'000, 100'000}, MakeExpired}}) {
        Measure(purge, library, [] { CleanupTrashFolder(TrashFolder(), false); });
        Measure(purge, plainest, PurgeByHand);
    }
});
