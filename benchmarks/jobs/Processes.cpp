#include <FrameworkBase/FileNames/Processes.h>

#include "benchmarks/Inputs.h"

#include <sys/wait.h>
#include <unistd.h>

namespace {

char program[] = "/bin/true";
char* const arguments[] = {program, nullptr};

[[noreturn]] void Execute() {
    execv(program, arguments);
    _exit(127);
}

const Registration children([] {
    Measure(startChild, library, [] {
        std::vector<std::string> texts = {program};
        Tolvex::FileNames::WaitForProcess(Tolvex::FileNames::LaunchProcess(program, texts), -1);
    });
    Measure(startChild, limit, [] {
        const pid_t child = vfork();
        if (child == 0) {
            Execute();
        }
        waitpid(child, nullptr, 0);
    });
    Measure(startChild, "fork", [] {
        const pid_t child = fork();
        if (child == 0) {
            Execute();
        }
        waitpid(child, nullptr, 0);
    });
});

} // namespace
