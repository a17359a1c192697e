#include "TrashHost.h"

#include <FrameworkBase/Trash/TrashCleanup.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr long long expiryAge = 30 * ticksPerDay;

/// Whether the purge deletes the item at `path`. A folder goes with the first of its files to expire.
bool IsDue(OpenTrash& trash, const std::string& path, bool all) {
    const auto [first, last] = trash.RecordsOf(path);
    return (all && IsFolder(path)) || std::any_of(first, last, [all](const auto& file) {
               const long long added = file.second.first;
               return (all || (added >= 0 && added < Now() - expiryAge)) && Exists(file.first);
           });
}

/// Has the library purge, on its own thread, and deletes what it left of `due`: links that lead nowhere, also to files
/// that it had just deleted, and what lies more than 20 folders deep.
[[noreturn]] void CleanUp(bool all, const std::vector<std::string>& due) noexcept {
    std::promise<void> ended;
    CleanupTrashFolder(all, [&ended] { ended.set_value(); });
    ended.get_future().wait();
    for (const std::string& path : due) {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }
    std::_Exit(0);
}

/// Runs CleanUp in a process of its own, which an interruption ends: the library's thread cannot be stopped.
void RunCleanUp(const OpenTrash& trash, bool all, const std::vector<std::string>& due) {
    const pid_t child = fork();
    RefuseIf(child < 0, "no process can be started for the purge");
    if (child == 0) {
        CleanUp(all, due);
    }
    for (int waits = 1; waitpid(child, nullptr, WNOHANG) == 0; ++waits) {
        if (interruption != 0) {
            kill(child, SIGKILL);
        }
        if (waits % 20 == 0) {
            ShowProgress("purging, items left in the trash: " + std::to_string(trash.Names().size()));
        }
        usleep(20'000);
    }
}

/// Prints how long the item stays, and how many files in it were not recorded at first.
void PrintStaying(OpenTrash& trash, const std::string& name) {
    long long earliest = Now();
    int adopted = 0;
    const auto [first, last] = trash.RecordsOf(trash.PathOf(name));
    for (auto file = first; file != last; ++file) {
        earliest = std::min(earliest, file->second.first);
        adopted += trash.saved.count(file->first) == 0 ? 1 : 0;
    }
    const long long daysLeft = (earliest + expiryAge - Now() + ticksPerDay - 1) / ticksPerDay;
    Say("stays    " + Shown(name) + ", days left: " + std::to_string(daysLeft) +
        (adopted == 0 ? "" : ", adopted (files not recorded so far): " + std::to_string(adopted)));
}

} // namespace

void PurgeTrash(bool all) {
    OpenTrash trash(Use::Purge);
    const std::set<std::string> names = trash.Names();
    if (names.empty()) {
        return Say("The trash is empty.");
    }
    CheckAccess(trash.folder, R_OK | W_OK | X_OK);
    std::vector<std::string> due;
    for (const std::string& name : names) {
        const std::string path = trash.PathOf(name);
        std::vector<std::string> files = FilesOfDeletable(path);
        if (IsDue(trash, path, all)) {
            due.push_back(path);
        }
        if (!all && !IsFolder(path)) {
            files.push_back(path);
        }
        // The library would record these now, but for those in folders that go. Once they are recorded, a folder that
        // an interruption left half deleted is known by its missing files.
        for (const std::string& file : files) {
            trash.records.try_emplace(file, Now(), "");
        }
    }
    try {
        trash.Save();
    } catch (const Refusal&) { // a full disk, which is what the purge helps against
        RefuseIf(due.empty(), "the disk is too full to save the trash database, and nothing is due to be purged");
    }
    RunCleanUp(trash, all, due);
    const std::set<std::string> staying = trash.Names();
    for (const std::string& name : names) {
        if (staying.count(name) == 0) {
            trash.Forget(trash.PathOf(name));
        }
    }
    trash.Settle();
    for (const std::string& name : names) {
        staying.count(name) != 0 ? PrintStaying(trash, name) : Say("gone     " + Shown(name));
    }
    RefuseIf(interruption != 0, "interrupted; what stays is recorded as before");
    for (const std::string& path : due) {
        RefuseIf(Exists(path), Shown(path) + " cannot be deleted; it is recorded as before");
    }
}
