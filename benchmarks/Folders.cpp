#include "benchmarks/Scratch.h"

#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>

#include <QDir>
#include <QFile>
#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <boost/filesystem.hpp>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using Path = const std::string&;

// The names of the files in a folder that holds nothing else.

template <class Call>
void ListFiles(benchmark::State& state, Call call) {
    const std::string folder = InScratch("names " + std::to_string(state.range()));
    if (fs::create_directory(folder)) {
        for (std::int64_t i = 0; i < state.range(); ++i) {
            WriteBytes(folder + "/take " + std::to_string(i) + " of the day.wav", "");
        }
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(folder));
    }
}

long ReadFolder(Path folder) {
    DIR* const stream = opendir(folder.c_str());
    long count = 0;
    while (readdir(stream) != nullptr) {
        ++count;
    }
    closedir(stream);
    return count;
}

std::vector<fs::path> ListWithStd(Path folder) {
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (!entry.is_directory()) {
            names.push_back(entry.path().filename());
        }
    }
    return names;
}

QStringList ListWithQt(Path folder) {
    return QDir(folder.c_str()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Unsorted);
}

void Names(benchmark::internal::Benchmark* job) { job->ArgName("names")->Arg(1'000)->Arg(10'000)->Arg(100'000); }

BENCHMARK_CAPTURE(ListFiles, FrameworkBase, [](Path folder) {
    return Tolvex::FileNames::GetFolderFiles(folder);
})->Apply(Names);
BENCHMARK_CAPTURE(ListFiles, floor, ReadFolder)->Apply(Names);
BENCHMARK_CAPTURE(ListFiles, std::filesystem, ListWithStd)->Apply(Names);
BENCHMARK_CAPTURE(ListFiles, Qt, ListWithQt)->Apply(Names);

// Copying one file to a place where there is none.

template <class Call>
void CopyOneFile(benchmark::State& state, Call call) {
    const std::string from = InScratch("original");
    const std::string to = InScratch("copy");
    WriteBytes(from, std::string(static_cast<std::size_t>(state.range()) << 20, 'x'));
    for (auto _ : state) {
        call(from, to);
        state.PauseTiming();
        fs::remove(to);
        state.ResumeTiming();
    }
}

void CopyInBlocks(Path from, Path to) {
    const int in = open(from.c_str(), O_RDONLY);
    const int out = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    std::array<char, 4096> block;
    ssize_t size = 0;
    while ((size = read(in, block.data(), block.size())) > 0) {
        benchmark::DoNotOptimize(write(out, block.data(), static_cast<std::size_t>(size)));
    }
    close(in);
    close(out);
}

void CopyInTheSystem(Path from, Path to) {
    const int in = open(from.c_str(), O_RDONLY);
    const int out = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    while (copy_file_range(in, nullptr, out, nullptr, SSIZE_MAX, 0) > 0) {
    }
    close(in);
    close(out);
}

void Sizes(benchmark::internal::Benchmark* job) { job->ArgName("MiB")->Arg(1)->Arg(10)->Arg(100); }

BENCHMARK_CAPTURE(CopyOneFile, FrameworkBase, [](Path from, Path to) {
    Tolvex::FileNames::CopyFile(from, to, false, nullptr);
})->Apply(Sizes);
BENCHMARK_CAPTURE(CopyOneFile, floor, CopyInBlocks)->Apply(Sizes);
BENCHMARK_CAPTURE(CopyOneFile, copy_file_range, CopyInTheSystem)->Apply(Sizes);
BENCHMARK_CAPTURE(CopyOneFile, std::filesystem, [](Path from, Path to) { fs::copy_file(from, to); })->Apply(Sizes);
BENCHMARK_CAPTURE(CopyOneFile, Boost, [](Path from, Path to) { boost::filesystem::copy_file(from, to); })->Apply(Sizes);
BENCHMARK_CAPTURE(CopyOneFile, Qt, [](Path from, Path to) { QFile::copy(from.c_str(), to.c_str()); })->Apply(Sizes);

// Copying a folder of files of 1,000 bytes.

template <class Call>
void CopySmallFiles(benchmark::State& state, Call call) {
    const std::string from = InScratch("tree " + std::to_string(state.range()));
    const std::string to = InScratch("copy");
    if (!fs::exists(from)) {
        MakeTree(from, state.range(), 1000);
    }
    for (auto _ : state) {
        call(from, to);
        state.PauseTiming();
        fs::remove_all(to);
        state.ResumeTiming();
    }
}

void CopyEachInBlocks(Path from, Path to) {
    fs::create_directory(to);
    for (const auto& entry : fs::directory_iterator(from)) {
        const std::string name = '/' + entry.path().filename().string();
        if (entry.is_directory()) {
            CopyEachInBlocks(from + name, to + name);
        } else {
            CopyInBlocks(from + name, to + name);
        }
    }
}

void Files(benchmark::internal::Benchmark* job) { job->ArgName("files")->Arg(100)->Arg(1'000)->Arg(10'000); }

BENCHMARK_CAPTURE(CopySmallFiles, FrameworkBase, Tolvex::FileNames::CopyFolder)->Apply(Files);
BENCHMARK_CAPTURE(CopySmallFiles, floor, CopyEachInBlocks)->Apply(Files);
BENCHMARK_CAPTURE(CopySmallFiles, std::filesystem, [](Path from, Path to) {
    fs::copy(from, to, fs::copy_options::recursive);
})->Apply(Files);
// Deleting a folder of empty files. The calls get all paths below it as well, with those of a folder's files before its
// own.

template <class Call>
void DeleteFolder(benchmark::State& state, Call call) {
    const std::string folder = InScratch("doomed");
    for (auto _ : state) {
        state.PauseTiming();
        MakeTree(folder, state.range(), 0);
        std::vector<std::string> paths = {folder};
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            paths.push_back(entry.path());
        }
        std::reverse(paths.begin(), paths.end());
        state.ResumeTiming();
        call(folder, paths);
    }
}

void RemoveEach(Path /*folder*/, const std::vector<std::string>& paths) {
    for (Path path : paths) {
        struct stat status {};
        lstat(path.c_str(), &status);
        std::remove(path.c_str());
    }
}

BENCHMARK_CAPTURE(DeleteFolder, FrameworkBase, [](Path folder, auto&) { remove_dir_content(folder.c_str(), 0); })
    -> Apply(Files);
BENCHMARK_CAPTURE(DeleteFolder, floor, RemoveEach)->Apply(Files);
BENCHMARK_CAPTURE(DeleteFolder, std::filesystem, [](Path folder, auto&) { fs::remove_all(folder); }) -> Apply(Files);
BENCHMARK_CAPTURE(DeleteFolder, Boost, [](Path folder, auto&) { boost::filesystem::remove_all(folder); })
    -> Apply(Files);
BENCHMARK_CAPTURE(DeleteFolder, Qt, [](Path folder, auto&) { QDir(folder.c_str()).removeRecursively(); })
    -> Apply(Files);

} // namespace
