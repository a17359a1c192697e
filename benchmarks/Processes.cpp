#include <FrameworkBase/FileNames/Processes.h>

#include <QProcess>
#include <benchmark/benchmark.h>
#include <glib.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

char program[] = "/bin/true";
char* const arguments[] = {program, nullptr};

/// Starts a child and waits for its end, in a process that has so much memory in use.
template <class Call>
void StartChild(benchmark::State& state, Call call) {
    const std::vector<char> memory(static_cast<std::size_t>(state.range()) << 20, 'x');
    for (auto _ : state) {
        call();
    }
    benchmark::DoNotOptimize(memory.data());
}

void StartWithLibrary() {
    std::vector<std::string> strings = {program};
    Tolvex::FileNames::WaitForProcess(Tolvex::FileNames::LaunchProcess(program, strings), -1);
}

void RunChild(pid_t child) {
    if (child == 0) {
        execv(program, arguments);
        _exit(127);
    }
    waitpid(child, nullptr, 0);
}

void StartWithPosixSpawn() {
    pid_t child = 0;
    posix_spawn(&child, program, nullptr, nullptr, arguments, environ);
    waitpid(child, nullptr, 0);
}

void StartWithGlib() {
    std::vector<char*> list = {program, nullptr};
    g_spawn_sync(nullptr, list.data(), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

void Memory(benchmark::internal::Benchmark* job) { job->ArgName("MiB in use")->Arg(10)->Arg(100)->Arg(1'000); }

BENCHMARK_CAPTURE(StartChild, FrameworkBase, StartWithLibrary)->Apply(Memory);
BENCHMARK_CAPTURE(StartChild, floor, [] { RunChild(vfork()); })->Apply(Memory);
BENCHMARK_CAPTURE(StartChild, fork, [] { RunChild(fork()); })->Apply(Memory);
BENCHMARK_CAPTURE(StartChild, posix_spawn, StartWithPosixSpawn)->Apply(Memory);
BENCHMARK_CAPTURE(StartChild, Qt, [] { QProcess::execute(program, {}); })->Apply(Memory);
BENCHMARK_CAPTURE(StartChild, GLib, StartWithGlib)->Apply(Memory);

} // namespace
