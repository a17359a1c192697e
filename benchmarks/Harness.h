#pragma once

#include <benchmark/benchmark.h>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

// A job of the library is named by its group and itself, with a slash between. All who do it at one size are measured
// one after the other, in an order shuffled anew for every process. A job is measured where the library's own way of
// doing it is linked in.

using Sizes = std::vector<long>;

/// Who does a job, besides the peers. The limit is the barest code that does it; it is measured twice, and the
/// difference is the noise. Promised steps are those that callers rely on and that cost more than the bare job.
inline constexpr const char* library = "FrameworkBase";
inline constexpr const char* limit = "limit";
inline constexpr const char* limitWithSteps = "limit with promised steps";

/// The folder for all that is measured on disk; the home folder of this process too.
inline std::string workFolder;

/// Adds a way of doing `job` at `size`.
void Add(const std::string& job, long size, const std::string& who, std::function<void(benchmark::State&)> run);

/// Adds `call` at each size, with the arguments that `input(size)` returns as a tuple. Its result is kept from the
/// optimiser.
template <class Input, class Call>
void Measure(const std::string& job, const Sizes& sizes, const char* who, Input input, Call call) {
    for (const long size : sizes) {
        Add(job, size, who, [input, size, call](benchmark::State& state) mutable {
            auto arguments = input(size);
            for (auto _ : state) {
                benchmark::DoNotOptimize(std::apply(call, arguments));
            }
        });
    }
}

/// A job that has to be prepared each time, which is not measured.
struct PreparedJob {
    const char* name;
    Sizes sizes;
    std::function<void(long size)> prepare;
};

/// Adds `call()` at each size.
template <class Call>
void Measure(const PreparedJob& job, const char* who, Call call) {
    for (const long size : job.sizes) {
        Add(job.name, size, who, [prepare = job.prepare, size, call](benchmark::State& state) {
            for (auto _ : state) {
                state.PauseTiming();
                prepare(size);
                state.ResumeTiming();
                call();
            }
        });
    }
}

/// Calls `addJobs` before main, as in `const Registration clocks([] { Measure(...); });`.
class Registration {
public:
    explicit Registration(void (*addJobs)()) { addJobs(); }
};
