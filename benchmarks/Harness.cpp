#include "benchmarks/Harness.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>

namespace {

using Run = std::function<void(benchmark::State&)>;

/// Who does a job at one size, and how.
using Ways = std::vector<std::pair<std::string, Run>>;

/// By group, name and size, with slashes between.
std::map<std::string, Ways>& Jobs() {
    static std::map<std::string, Ways> jobs;
    return jobs;
}

/// Hands everything over in the order in which it is to be measured: the ways of each job `passes` times.
void RegisterShuffled(unsigned long seed, unsigned long passes) {
    std::mt19937_64 random(seed);
    std::vector<std::pair<std::string, Ways>> jobs(Jobs().begin(), Jobs().end());
    std::shuffle(jobs.begin(), jobs.end(), random);
    for (auto& [job, ways] : jobs) {
        const bool isHere = std::any_of(ways.begin(), ways.end(), [](const auto& way) { return way.first == library; });
        for (unsigned long pass = 0; isHere && pass < passes; ++pass) {
            std::shuffle(ways.begin(), ways.end(), random);
            for (const auto& [who, run] : ways) {
                benchmark::RegisterBenchmark((job + '/' + who).c_str(), run);
            }
        }
    }
}

} // namespace

void Add(const std::string& job, long size, const std::string& who, Run run) {
    Ways& ways = Jobs()[job + '/' + std::to_string(size)];
    if (who == limit) {
        ways.emplace_back("limit again", run);
    }
    ways.emplace_back(who, std::move(run));
}

/// Arguments, besides Google Benchmark's: the folder to work in, the seed of the shuffling, how often each way is
/// measured, and how much heap to take from the system first, in MiB, so that nobody pays for its first touch. It stays
/// in the process where the environment raises malloc's thresholds.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 5) {
        return 2;
    }
    const auto number = [argv](int i) { return std::strtoul(argv[i], nullptr, 10); };
    workFolder = argv[1];
    setenv("HOME", argv[1], 1);
    benchmark::DoNotOptimize(std::vector<char>(number(4) << 20).data());
    RegisterShuffled(number(2), number(3));
    benchmark::RunSpecifiedBenchmarks();
}
