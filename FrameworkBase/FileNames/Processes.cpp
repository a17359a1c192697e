#include <FrameworkBase/FileNames/Processes.h>

#include <FrameworkBase/Base/internal/DateTime.h>

#include <cerrno>
#include <cstdint>
#include <sys/wait.h>
#include <unistd.h>

namespace Tolvex::FileNames {

namespace {

using VarnelNative::Utility::DateTime;

/// Starts `program` in a child that borrows the caller's memory until the program runs. Sets `failed` if the child
/// could not start the program; it has ended then.
pid_t StartSharingMemory(const char* program, char* const* arguments, volatile bool& failed) {
    const pid_t child = vfork();
    if (child == 0) {
        execv(program, arguments);
        failed = true; // the caller sees it: the memory is shared
        _exit(127);
    }
    return child;
}

HANDLE HandleOf(pid_t process) { return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(process)); }

bool HasEnded(pid_t process) {
    int status = 0;
    return waitpid(process, &status, WNOHANG) == process;
}

double MillisecondsSince(DateTime start) { return static_cast<double>(DateTime::Now().ticks - start.ticks) / 10000.0; }

} // namespace

HANDLE LaunchProcess(std::string program, std::vector<std::string>& arguments) {
    std::vector<char*> argumentPointers;
    argumentPointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
        argumentPointers.push_back(argument.data());
    }
    argumentPointers.push_back(nullptr);

    volatile bool failed = false;
    pid_t child = StartSharingMemory(program.c_str(), argumentPointers.data(), failed);
    if (failed) {
        // A child that shares the caller's stack must not return to the caller. One with its own stack may.
        while (waitpid(child, nullptr, 0) == -1 && errno == EINTR) {
        }
        child = fork();
        if (child == 0) {
            execv(program.c_str(), argumentPointers.data());
        }
    }
    return HandleOf(child);
}

bool WaitForProcess(HANDLE process, int timeoutMs) {
    if (process == nullptr) {
        return false;
    }
    const auto id = static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process));
    if (timeoutMs == -1) {
        int status = 0;
        while (wait(&status) != id) {
        }
        return true;
    }
    const DateTime start = DateTime::Now();
    if (HasEnded(id)) {
        return true;
    }
    constexpr int passesPerLookAtTheClock = 200;
    for (int pass = 1;; pass = pass % passesPerLookAtTheClock + 1) {
        usleep(1000);
        if (pass == passesPerLookAtTheClock && MillisecondsSince(start) > timeoutMs) {
            return false;
        }
        if (HasEnded(id)) {
            return true;
        }
    }
}

} // namespace Tolvex::FileNames
