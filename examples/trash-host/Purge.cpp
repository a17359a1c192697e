#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr long long expiryAge = 30 * ticksPerDay;

/// Whether the purge deletes the item at `path`. A folder goes with the first of its files to expire; its own record does
/// not count.
bool IsDue(OpenTrash& trash, const std::string& path, bool all) {
    const bool isFolder = IsFolder(path);
    const auto [first, last] = isFolder ? trash.RecordsBelow(path) : trash.records.equal_range(path);
    return (all && isFolder) || std::any_of(first, last, [all](const auto& file) {
               const bool isExpired = file.second.added >= 0 && file.second.added < Now() - expiryAge;
               return (all || isExpired) && Exists(file.first);
           });
}

/// Deletes `links` and has the library purge, on its own thread, which nobody can stop.
[[noreturn]] void CleanUp(bool all, const std::vector<std::string>& links) {
    try {
        std::for_each(links.begin(), links.end(), [](const auto& link) { std::filesystem::remove(link); });
        std::promise<void> ended;
        CleanupTrashFolder(all, [&ended] { ended.set_value(); });
        ended.get_future().wait();
        std::_Exit(0);
    } catch (const std::exception&) {
        std::_Exit(1); // the parent looks at what is gone
    }
}

/// Runs CleanUp in a process of its own, which an interruption ends.
void RunCleanUp(const OpenTrash& trash, bool all, const std::vector<std::string>& links) {
    ShowProgress("purging");
    const pid_t child = fork();
    RefuseIf(child < 0, "no process can be started for the purge");
    if (child == 0) {
        CleanUp(all, links);
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
    const std::string item = trash.PathOf(name);
    const auto [first, last] = IsFolder(item) ? trash.RecordsBelow(item) : trash.records.equal_range(item);
    long long earliest = Now();
    int adopted = 0;
    for (auto file = first; file != last; ++file) {
        earliest = std::min(earliest, file->second.added);
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
    std::vector<std::string> links;
    for (const std::string& name : names) {
        const std::string path = trash.PathOf(name);
        std::vector<std::string> files = FilesOfDeletable(path, path);
        if (IsDue(trash, path, all)) {
            due.push_back(path);
            // The library's purge leaves links that lead nowhere, also those to files that it has just deleted.
            std::copy_if(files.begin(), files.end(), std::back_inserter(links),
                         [](const std::string& file) { return std::filesystem::is_symlink(file); });
        }
        if (!all && !IsFolder(path)) {
            files.push_back(path);
        }
        // The library would record these now, but for those in folders that go. Once they are recorded, a folder that
        // an interruption left half deleted is known by its missing files.
        for (const std::string& file : files) {
            trash.records.try_emplace(file, Record{Now(), ""});
        }
    }
    try {
        trash.Save();
    } catch (const Refusal&) { // a full disk, which is what the purge helps against
        if (due.empty()) {
            throw;
        }
    }
    RunCleanUp(trash, all, links);
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
