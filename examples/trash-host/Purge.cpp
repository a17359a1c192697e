#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <future>
#include <iostream>
#include <memory>

namespace {

/// Runs the purge to its end on the library's own thread.
void RunCleanup(bool all) {
    const auto ended = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(all, [ended] { ended->set_value(); });
    if (ended->get_future().wait_for(std::chrono::minutes(10)) != std::future_status::ready) {
        std::cerr << "trash-host: the purge has been at work for ten minutes: given up\n";
        std::_Exit(1); // nothing may be destroyed while the thread goes on
    }
}

/// Prints how long the item stays, and how many files in it were not recorded `before`. A folder goes with the first of
/// its files to expire; its own record does not count.
void PrintStaying(const OpenTrash& trash, const std::string& name, const Records& before) {
    const std::string item = trash.PathOf(name);
    const bool isFolder = IsFolder(item);
    long long earliest = std::time(nullptr);
    int adopted = 0;
    for (const auto& [path, record] : trash.records) {
        if (isFolder ? Tolvex::FileNames::IsPathBelow(path, item) : path == item) {
            earliest = std::min(earliest, UnixTime(record.added));
            adopted += before.count(path) == 0 ? 1 : 0;
        }
    }
    const long long secondsLeft = earliest + 30 * secondsPerDay - std::time(nullptr);
    std::cout << "stays    " << Shown(name) << ", days left: " << (secondsLeft + secondsPerDay - 1) / secondsPerDay;
    if (adopted > 0) {
        std::cout << ", adopted (not recorded so far): " << adopted << (adopted == 1 ? " file" : " files");
    }
    std::cout << '\n';
}

} // namespace

void PurgeTrash(bool all) {
    OpenTrash trash(Use::Change);
    const std::vector<std::string> names = trash.Names();
    for (const std::string& name : names) {
        if (IsFolder(trash.PathOf(name))) {
            RefuseLinksToFolders(trash.PathOf(name));
        }
    }
    const Records before = trash.records;
    RunCleanup(all);
    trash.Reload();
    for (const auto& [path, record] : before) {
        Verify(!Exists(path) || trash.records[path] == record, Shown(path) + " is recorded as before");
    }
    for (const std::string& name : names) {
        if (!Exists(trash.PathOf(name))) {
            trash.Forget(trash.PathOf(name));
            std::cout << "gone     " << Shown(name) << '\n';
        }
    }
    for (const std::string& name : trash.Names()) {
        PrintStaying(trash, name, before);
    }
    if (names.empty()) {
        std::cout << "The trash is empty.\n";
    }
}
