#include "benchmarks/Scratch.h"

#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <QDataStream>
#include <QFile>
#include <QMap>
#include <benchmark/benchmark.h>
#include <future>
#include <gio/gio.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string InTrash(const std::string& name) {
    return InScratch("Library/Application Support/Tolvex Studio 10/Trash/" + name);
}

const std::string database = InTrash(".trash.db");
const std::string inside = InTrash("song.wav"); ///< an item, and where it came from
const std::string outside = InScratch("song.wav");

struct Origin {
    long long added;
    std::string path;
};
using Records = std::map<std::string, Origin>; ///< by path in the trash

/// Returns the records of `count` files that are to be purged, and of the item.
Records MakeRecords(std::int64_t count) {
    Records records = {{inside, {1, outside}}};
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string name = "take " + std::to_string(10'000'000 + i) + ".wav";
        records[InTrash(name)] = {1, "/Users/someone/Music/Album/Audio/" + name};
    }
    return records;
}

template <class Number>
void PutNumber(std::ostream& file, Number number) {
    file.write(reinterpret_cast<const char*>(&number), sizeof number);
}

void PutString(std::ostream& file, const std::string& text) {
    PutNumber(file, static_cast<int>(text.size() + 1));
    file.write(text.c_str(), static_cast<std::streamsize>(text.size() + 1));
}

/// Writes the file that the library reads.
void SaveWithFstream(const std::string& path, const Records& records) {
    std::ofstream file(path, std::ios::binary);
    PutNumber(file, 2);
    PutNumber(file, static_cast<int>(records.size()));
    for (const auto& [name, origin] : records) {
        PutString(file, name);
        PutNumber(file, origin.added);
        PutString(file, origin.path);
    }
}

/// Puts a database with so many records, and that of the item, into the trash.
std::string PutDatabase(std::int64_t count) {
    const std::string original = InScratch(std::to_string(count) + ".db");
    if (!fs::exists(original)) {
        SaveWithFstream(original, MakeRecords(count));
    }
    fs::create_directories(InTrash(""));
    fs::copy_file(original, database, fs::copy_options::overwrite_existing);
    return database;
}

using QtRecords = QMap<QString, QPair<qint64, QString>>;

void SaveWithQt(const std::string& path, const QtRecords& records) {
    QFile file(path.c_str());
    file.open(QIODevice::WriteOnly);
    QDataStream stream(&file);
    stream << records;
}

QtRecords LoadWithQt(const std::string& path) {
    QtRecords records;
    QFile file(path.c_str());
    file.open(QIODevice::ReadOnly);
    QDataStream stream(&file);
    stream >> records;
    return records;
}

std::string PutQtDatabase(std::int64_t count) {
    QtRecords records;
    for (const auto& [name, origin] : MakeRecords(count)) {
        records.insert(name.c_str(), {origin.added, origin.path.c_str()});
    }
    SaveWithQt(InScratch("Qt.db"), records);
    return InScratch("Qt.db");
}

void ReadAndWriteBytes(const std::string& path) {
    std::string bytes(fs::file_size(path), '\0');
    std::FILE* const in = std::fopen(path.c_str(), "rb");
    benchmark::DoNotOptimize(std::fread(bytes.data(), 1, bytes.size(), in));
    std::fclose(in);
    std::FILE* const out = std::fopen(path.c_str(), "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), out);
    std::fclose(out);
}

// Reading all records into a map, and writing them back.

template <class Prepare, class Call>
void LoadAndSave(benchmark::State& state, Prepare prepare, Call call) {
    const std::string path = prepare(state.range());
    for (auto _ : state) {
        call(path);
    }
}

void Counts(benchmark::internal::Benchmark* job) { job->ArgName("records")->Arg(100)->Arg(1'000)->Arg(10'000); }

BENCHMARK_CAPTURE(LoadAndSave, FrameworkBase, PutDatabase, [](const std::string& /*path*/) {
    Tolvex::FileNames::CanPutBack(inside);
})->Apply(Counts);
BENCHMARK_CAPTURE(LoadAndSave, floor, PutDatabase, ReadAndWriteBytes)->Apply(Counts);
BENCHMARK_CAPTURE(LoadAndSave, QDataStream, PutQtDatabase, [](const std::string& path) {
    SaveWithQt(path, LoadWithQt(path));
})->Apply(Counts);

// Moving a file to a trash of so many other items. The peers' trash is their own, of as many items.

std::string InPeersTrash(const std::string& name) { return InScratch(".local/share/Trash/" + name); }

void FillPeersTrash(std::int64_t count) {
    fs::remove_all(InPeersTrash(""));
    fs::create_directories(InPeersTrash("files"));
    fs::create_directories(InPeersTrash("info"));
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string name = "take " + std::to_string(i) + ".wav";
        WriteBytes(InPeersTrash("files/" + name), "");
        WriteBytes(InPeersTrash("info/" + name + ".trashinfo"), "[Trash Info]\nPath=/" + name);
    }
}

template <class Call>
void MoveToTrash(benchmark::State& state, Call call) {
    FillPeersTrash(state.range());
    for (auto _ : state) {
        state.PauseTiming();
        PutDatabase(state.range());
        fs::remove(inside);
        fs::remove(InPeersTrash("files/song.wav"));
        fs::remove(InPeersTrash("info/song.wav.trashinfo"));
        WriteBytes(outside, "");
        state.ResumeTiming();
        call();
    }
}

void Items(benchmark::internal::Benchmark* job) { job->ArgName("items")->Arg(10)->Arg(100)->Arg(1'000); }

BENCHMARK_CAPTURE(MoveToTrash, FrameworkBase, [] {
    Tolvex::FileNames::DeleteFileToRecycleBin(outside, true);
})->Apply(Items);
BENCHMARK_CAPTURE(MoveToTrash, floor, [] {
    ReadAndWriteBytes(database);
    std::rename(outside.c_str(), inside.c_str());
})->Apply(Items);
BENCHMARK_CAPTURE(MoveToTrash, Qt, [] { QFile::moveToTrash(outside.c_str()); })->Apply(Items);
BENCHMARK_CAPTURE(MoveToTrash, GLib, [] {
    GFile* const file = g_file_new_for_path(outside.c_str());
    g_file_trash(file, nullptr, nullptr);
    g_object_unref(file);
})->Apply(Items);

// Deleting so many files that have been in the trash for too long.

template <class Call>
void Purge(benchmark::State& state, Call call) {
    const Records records = MakeRecords(state.range());
    for (auto _ : state) {
        state.PauseTiming();
        PutDatabase(state.range());
        for (const auto& [path, origin] : records) {
            WriteBytes(path, "");
        }
        state.ResumeTiming();
        call(records);
    }
}

void Files(benchmark::internal::Benchmark* job) {
    job->ArgName("files")->Arg(100)->Arg(1'000)->Arg(10'000)->MeasureProcessCPUTime(); // the library takes a thread
}

BENCHMARK_CAPTURE(Purge, FrameworkBase, [](auto& /*records*/) {
    std::promise<void> end;
    CleanupTrashFolder(false, [&end] { end.set_value(); });
    end.get_future().wait();
}) -> Apply(Files);
BENCHMARK_CAPTURE(Purge, floor, [](auto& records) {
    ReadAndWriteBytes(database);
    for (const auto& [path, origin] : records) {
        struct stat status {};
        lstat(path.c_str(), &status);
        unlink(path.c_str());
    }
}) -> Apply(Files);

} // namespace
