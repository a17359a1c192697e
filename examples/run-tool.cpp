// Runs a tool with arguments, waits for it, but not without end, and looks at what it has made.

#include <FrameworkBase/FileNames/Processes.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

using namespace Tolvex::FileNames;

namespace {

pid_t ProcessOf(HANDLE process) { return static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)); }

/// Runs `program`, a full path, and ends it after the limit. Returns false if it could not be started or did not end by
/// itself. The library does not report how it ended: callers look at what the program was to make.
bool Run(const std::string& program, std::vector<std::string> arguments, int limitInMilliseconds) {
    arguments.insert(arguments.begin(), program); // by custom the first argument
    std::cout.flush();                            // or a child that cannot start the program may write it again
    HANDLE process = LaunchProcess(program, arguments);
    if (process == nullptr) {
        _exit(127); // this is the child, and it could not start the program
    }
    if (ProcessOf(process) == -1) {
        return false; // no process could be made; this handle must not be waited for
    }
    if (WaitForProcess(process, limitInMilliseconds)) {
        return true;
    }
    kill(ProcessOf(process), SIGKILL);
    WaitForProcess(process, limitInMilliseconds);
    return false;
}

} // namespace

int main() {
    const std::string copy = std::filesystem::current_path() / "a copy made by run-tool";
    const bool isRun = Run("/bin/cp", {"/etc/hosts", copy}, 5000); // a space needs no quotes
    const bool isMade = std::filesystem::exists(copy);
    std::cout << "cp " << (isRun && isMade ? "made " : "did not make ") << copy << '\n';
    const bool isOver = Run("/bin/sleep", {"60"}, 200);
    std::cout << "sleep " << (isOver ? "ended by itself" : "was ended after the limit") << '\n';
    std::filesystem::remove(copy);
    return isRun && isMade && !isOver ? 0 : 1;
}
