#include "benchmarks/Scratch.h"

#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>

#include <QDataStream>
#include <QFile>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <vector>

namespace {

using Values = std::vector<int>;

void Counts(benchmark::internal::Benchmark* job) { job->ArgName("values")->Arg(1'000)->Arg(100'000)->Arg(1'000'000); }

/// Writes values of a new file one by one, and closes it.
template <class Call>
void WriteInts(benchmark::State& state, Call call) {
    Values values(static_cast<std::size_t>(state.range()), 1);
    const std::string path = InScratch("written");
    for (auto _ : state) {
        call(path.c_str(), values);
    }
}

BENCHMARK_CAPTURE(WriteInts, FrameworkBase, [](const char* path, const Values& values) {
    FlapFiles::CFile file;
    file.DoCreate(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    for (const int value : values) {
        file.WriteData(value);
    }
    file.Close();
})->Apply(Counts);
BENCHMARK_CAPTURE(WriteInts, floor, [](const char* path, const Values& values) {
    std::FILE* const file = std::fopen(path, "wb");
    std::fwrite(values.data(), sizeof(int), values.size(), file);
    std::fclose(file);
})->Apply(Counts);
BENCHMARK_CAPTURE(WriteInts, std::fstream, [](const char* path, const Values& values) {
    std::ofstream file(path, std::ios::binary);
    for (const int& value : values) {
        file.write(reinterpret_cast<const char*>(&value), sizeof value);
    }
})->Apply(Counts);
BENCHMARK_CAPTURE(WriteInts, QDataStream, [](const char* path, const Values& values) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    QDataStream stream(&file);
    for (const int value : values) {
        stream << value;
    }
})->Apply(Counts);

/// Reads the values of a file one by one, and closes it.
template <class Call>
void ReadInts(benchmark::State& state, Call call) {
    Values values(static_cast<std::size_t>(state.range()));
    const std::string path = InScratch("read");
    WriteBytes(path, std::string(values.size() * sizeof(int), 'x'));
    for (auto _ : state) {
        call(path.c_str(), values);
    }
}

BENCHMARK_CAPTURE(ReadInts, FrameworkBase, [](const char* path, Values& values) {
    FlapFiles::CFile file;
    file.DoCreate(path, GENERIC_READ, 0, OPEN_EXISTING);
    for (int& value : values) {
        file.ReadData(value);
    }
    file.Close();
})->Apply(Counts);
BENCHMARK_CAPTURE(ReadInts, floor, [](const char* path, Values& values) {
    std::FILE* const file = std::fopen(path, "rb");
    benchmark::DoNotOptimize(std::fread(values.data(), sizeof(int), values.size(), file));
    std::fclose(file);
})->Apply(Counts);
BENCHMARK_CAPTURE(ReadInts, std::fstream, [](const char* path, Values& values) {
    std::ifstream file(path, std::ios::binary);
    for (int& value : values) {
        file.read(reinterpret_cast<char*>(&value), sizeof value);
    }
})->Apply(Counts);
BENCHMARK_CAPTURE(ReadInts, QDataStream, [](const char* path, Values& values) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QDataStream stream(&file);
    for (int& value : values) {
        stream >> value;
    }
})->Apply(Counts);

} // namespace
