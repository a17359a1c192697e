#pragma once

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <malloc.h>
#include <map>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

// The jobs with their sizes, and what they work on, so that whoever does one only says how. A benchmark is called
// group/job/who/size. What lies on disk is below the home folder, which scripts/bench has made for this run. Copies are
// made of Original() at Copy(), where nothing is; Doomed() is deleted.

namespace fs = std::filesystem;
using Path = const std::string&;
using Sizes = std::vector<std::int64_t>;
/// Who does a job, besides the peers: the library, and the least code that keeps the same promises.
inline constexpr const char* library = "FrameworkBase";
inline constexpr const char* plainest = "plainest code";

/// Calls `addJobs` before main, as in `const Registration clocks([] { Measure(...); });`.
struct Registration {
    explicit Registration(void (*addJobs)()) { addJobs(); }
};
/// Measures `call(input(size))`; the input is made once.
template <class Input, class Call>
void Measure(const std::string& job, const Sizes& sizes, const char* who, Input input, Call call) {
    const auto run = [input, call](benchmark::State& state) {
        auto made = input(state.range());
        for (auto _ : state) {
            benchmark::DoNotOptimize(call(made));
        }
    };
    benchmark::RegisterBenchmark((job + '/' + who).c_str(), run)->ArgsProduct({sizes});
}
/// A job that has to be prepared each time, which is not measured.
struct PreparedJob {
    std::string name;
    Sizes sizes;
    std::function<void(long size)> prepare;
};
/// Jobs of the group "growth" are done once, from a trimmed heap, with the peak of the memory and the shape of growth.
template <class Call>
void Measure(const PreparedJob& job, const char* who, Call call) {
    const bool isGrowth = job.name.find("growth/") == 0;
    const auto run = [prepare = job.prepare, isGrowth, call](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            prepare(state.range());
            if (isGrowth) {
                malloc_trim(0);
                std::ofstream("/proc/self/clear_refs") << 5; // the peak begins anew
            }
            state.ResumeTiming();
            call();
        }
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        state.counters["MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
        state.SetComplexityN(state.range());
    };
    auto* const added = benchmark::RegisterBenchmark((job.name + '/' + who).c_str(), run)->ArgsProduct({job.sizes});
    if (isGrowth) {
        added->Iterations(1)->Complexity();
    }
}
/// A path of `length` bytes, its folder and its name, and two folders that share their first half.
struct PathParts {
    explicit PathParts(long length) {
        while (folder.size() < 320) {
            folder += "/Songs/Album two/Audio files";
        }
        folder.replace(static_cast<std::size_t>(length) - 11, folder.size(), "x");
        path = folder + '/' + name;
        to = from = folder + '/';
        std::replace_if(
            &to[to.size() / 2], &to.back(), [](char each) { return each != '/'; }, 'z');
    }
    std::string name = "take1.wav", folder, path, from, to;
};
using Parts = PathParts&;
template <class Call>
void OnPath(const std::string& job, const char* who, Call call) {
    const auto input = [](long length) { return PathParts(length); };
    Measure("paths/" + job, {20, 80, 320}, who, input, call);
}
/// `toWide(text)` of UTF-8, and `toUtf8(text)` of UTF-32.
template <class ToWide, class ToUtf8>
void OnTexts(const char* who, ToWide toWide, ToUtf8 toUtf8) {
    const auto add = [who](const std::string& job, auto text, auto call) {
        const auto repeat = [text](long length) {
            auto result = text;
            for (long i = 20; i < length; i += 20) {
                result += text;
            }
            return result;
        };
        Measure("conversions/" + job, {20, 200, 1500}, who, repeat, [call](auto& whole) { return call(whole.data()); });
    };
    add("UTF-8 to wide, ASCII", std::string("take 12 - lead guit."), toWide);
    add("UTF-8 to wide, Latin", std::string("Über die Brücke, çà!"), toWide);
    add("UTF-8 to wide, CJK with emoji", std::string("夜想曲第二番変ホ長調🎹作品九の二ショパン"), toWide);
    add("wide to UTF-8, ASCII", std::wstring(L"take 12 - lead guit."), toUtf8);
    add("wide to UTF-8, Latin", std::wstring(L"Über die Brücke, çà!"), toUtf8);
    add("wide to UTF-8, CJK with emoji", std::wstring(L"夜想曲第二番変ホ長調🎹作品九の二ショパン"), toUtf8);
}
inline std::string Below(Path name) { return std::getenv("HOME") + ('/' + name); }
inline std::string Original() { return Below("original"); }
inline std::string Copy() { return Below("copy"); }
inline std::string Doomed() { return Below("doomed"); }
inline std::string TrashFolder() { return Below("Library/Application Support/Tolvex Studio 10/Trash"); }
inline std::string DatabaseFile() { return TrashFolder() + "/.trash.db"; }
inline std::string ItemOutside() { return Below("song.wav"); }
inline std::string ItemInside() { return TrashFolder() + "/song.wav"; }
inline void WriteFileAtOnce(Path path, Path bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}
/// A folder with `count` empty files, made once.
inline std::string FolderWithFiles(long count) {
    std::string folder = Below("names " + std::to_string(count));
    for (long i = fs::create_directory(folder) ? 0 : count; i < count; ++i) {
        WriteFileAtOnce(folder + "/take " + std::to_string(i) + " of the day.wav", "");
    }
    return folder;
}
/// `call(folder)` returns the names of the files in it.
template <class Call>
void OnListing(const char* who, Call call) {
    Measure("listing/list", {1'000, 10'000, 100'000}, who, FolderWithFiles, call);
    static std::string folder;
    const auto prepare = [](long count) { folder = FolderWithFiles(count); };
    Measure({"growth/list n names", {250'000, 500'000, 1'000'000}, prepare}, who, [call] { call(folder); });
}
inline void MakeTree(Path folder, long files, Path bytes) {
    for (long i = 0; i < files; ++i) {
        const std::string subfolder = folder + "/Audio " + std::to_string(i / 100);
        fs::create_directories(subfolder);
        WriteFileAtOnce(subfolder + "/take " + std::to_string(i) + ".wav", bytes);
    }
}
inline void PrepareFile(long mebibytes) {
    fs::remove_all(Copy());
    fs::remove_all(Original());
    WriteFileAtOnce(Original(), std::string(static_cast<std::size_t>(mebibytes) << 20, 'x'));
}
inline void PrepareTree(long files) {
    PrepareFile(0);
    fs::remove(Original());
    MakeTree(Original(), files, std::string(1000, 'x'));
}
inline void PrepareDoomed(long files) { MakeTree(Doomed(), files, ""); }
inline const PreparedJob copyFile{"copying/copy a file of MiB", {1, 10, 100}, PrepareFile};
inline const PreparedJob copyTree{"copying/copy small files", {200, 2'000}, PrepareTree};
inline const PreparedJob deletion{"deleting/delete files in folders", {2'000, 20'000}, PrepareDoomed};

/// `open(path, reads)` returns a file that closes itself; `put(file, value)` and `get(file, value)` pass one value.
template <class Open, class Put, class Get>
void OnStreams(const char* who, Open open, Put put, Get get) {
    const auto add = [who, open](const std::string& job, bool reads, auto call, auto value) {
        const auto input = [value](long count) {
            WriteFileAtOnce(Below("stream"), std::string(static_cast<std::size_t>(count) * sizeof value, '\1'));
            return std::vector(static_cast<std::size_t>(count), value);
        };
        Measure("streams/" + job, {10'000, 1'000'000}, who, input, [open, reads, call](auto& values) {
            auto file = open(Below("stream").c_str(), reads);
            std::for_each(values.begin(), values.end(), [&](auto& each) { call(file, each); });
            return values.data();
        });
    };
    add("write int", false, put, 1);
    add("write long long", false, put, 1LL);
    add("read int", true, get, 1);
    add("read long long", true, get, 1LL);
}
/// What a database holds: by path in the trash, when an item came and from where.
using Records = std::map<std::string, std::pair<long long, std::string>>;
inline Records MakeRecords(long count) {
    Records records;
    for (long i = 0; i < count; ++i) {
        const std::string name = std::to_string(10'000'000 + i) + ".wav";
        records[TrashFolder() + "/take " + name] = {1, "/Users/someone/Music/Album/Audio/" + name};
    }
    return records;
}
/// Writes a database with one `put(data, size)` for each record, and empties the map.
template <class Put>
void WriteRecords(Records& records, Put put) {
    const std::array<int, 2> head = {2, static_cast<int>(records.size())};
    put(reinterpret_cast<const char*>(head.data()), sizeof head);
    std::string bytes;
    char* out = nullptr;
    const auto addNumber = [&out](auto number) {
        std::memcpy(out, &number, sizeof number);
        out += sizeof number;
    };
    const auto addText = [&](Path text) {
        addNumber(static_cast<int>(text.size() + 1));
        out = std::copy_n(text.c_str(), text.size() + 1, out);
    };
    for (const auto& [path, value] : records) {
        bytes.resize(path.size() + value.second.size() + 18);
        out = bytes.data();
        addText(path);
        addNumber(value.first);
        addText(value.second);
        put(bytes.data(), bytes.size());
    }
    records.clear();
}
/// Reads a database field by field with `get(data, size)`, which is false at the end. What is before a damage counts.
/// An absurd length does not cost its memory, which nothing clears.
template <class Get>
void ReadRecords(Records& records, Get get) {
    const auto getNumber = [&get](auto& number) { return get(reinterpret_cast<char*>(&number), sizeof number); };
    const auto getText = [&] {
        int length = 0;
        const auto size = getNumber(length) && length > 0 ? static_cast<std::size_t>(length) : 0;
        std::array<char, 256> few;
        const std::unique_ptr<char[]> many(size > few.size() ? new char[size] : nullptr);
        char* const text = many != nullptr ? many.get() : few.data();
        return get(text, size) ? std::string(text, strnlen(text, size)) : std::string();
    };
    int version = 0;
    int left = 0;
    long long added = 0;
    for (getNumber(version), getNumber(left); left > 0; --left) {
        std::string path = getText();
        if (!getNumber(added)) {
            break;
        }
        records.insert_or_assign(records.end(), std::move(path), std::pair(added, version >= 2 ? getText() : ""));
    }
}
/// Puts a database of `count` records, and of ItemInside(), into the trash folder.
inline void PutDatabase(long count) {
    const std::string image = Below(std::to_string(count) + ".db");
    if (!fs::exists(image)) {
        Records records = MakeRecords(count);
        records[ItemInside()] = {1, ItemOutside()};
        std::ofstream file(image, std::ios::binary);
        WriteRecords(records, [&](auto data, auto size) { file.write(data, static_cast<std::streamsize>(size)); });
    }
    fs::create_directories(TrashFolder());
    fs::copy_file(image, DatabaseFile(), fs::copy_options::overwrite_existing);
}
/// `load(map)` reads the database file into the empty map; `save(map)` writes it and empties the map.
template <class Map, class Load, class Save>
void OnDatabase(const char* who, Map& map, Load load, Save save) {
    const auto prepareLoad = [&map](long count) { PutDatabase(count), map.clear(); };
    const auto prepareSave = [&map, prepareLoad, load](long count) { prepareLoad(count), load(map); };
    Measure({"database/load", {1'000, 10'000, 100'000}, prepareLoad}, who, [&map, load] { load(map); });
    Measure({"database/save", {1'000, 10'000, 100'000}, prepareSave}, who, [&map, save] { save(map); });
    Measure({"growth/load a database of n records", {250'000, 500'000, 1'000'000}, prepareLoad}, who,
            [&map, load] { load(map); });
}
/// Moves ItemOutside() to the trash, or ItemInside() back to where it came from, with so many other records in the
/// database. A peer has a trash of its own, which is empty.
inline void PrepareMove(long count) {
    fs::remove(ItemInside());
    fs::remove_all(Below(".local/share/Trash"));
    PutDatabase(count);
    WriteFileAtOnce(ItemOutside(), "");
}
inline const PreparedJob moveToTrash{"trash/move to the trash", {0, 1'000, 10'000}, PrepareMove};
inline const PreparedJob moveToOwnTrash{"trash/move to the trash", {0}, PrepareMove};
inline void PreparePuttingBack(long count) { PrepareMove(count), fs::rename(ItemOutside(), ItemInside()); }
inline const PreparedJob putBack{"trash/put back", {0, 1'000, 10'000}, PreparePuttingBack};

/// `call(memory)` starts a child and waits for its end, with so many MiB of touched memory in this process.
template <class Call>
void OnChild(const char* who, Call call) {
    const auto touch = [](long mebibytes) { return std::vector<char>(static_cast<std::size_t>(mebibytes) << 20); };
    Measure("processes/start and reap a child", {50, 1024}, who, touch, call);
}

// The plainest code for what several jobs need.
inline bool IsDots(const char* name) { return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0; }

inline std::vector<std::string> ListByHand(Path folder, bool folders) {
    std::vector<std::string> names;
    DIR* const stream = opendir(folder.c_str());
    while (const dirent* const entry = readdir(stream)) {
        struct stat status {};
        const bool isFolder =
            entry->d_type == DT_DIR ||
            (entry->d_type == DT_UNKNOWN && fstatat(dirfd(stream), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
             S_ISDIR(status.st_mode));
        if (isFolder == folders && !IsDots(entry->d_name)) {
            names.emplace_back(entry->d_name);
        }
    }
    closedir(stream);
    return names;
}
inline bool OpensByHand(Path path) {
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    return file != nullptr && std::fclose(file) == 0;
}
inline void LoadByHand(Records& records) {
    if (!OpensByHand(DatabaseFile())) {
        return;
    }
    std::FILE* const file = std::fopen(DatabaseFile().c_str(), "rb");
    std::array<char, 4096> piece;
    const char* next = piece.data();
    std::size_t left = 0;
    ReadRecords(records, [&](char* to, std::size_t size) {
        while (size > left) {
            to = std::copy_n(next, left, to);
            size -= left;
            next = piece.data();
            left = std::fread(piece.data(), 1, piece.size(), file);
            if (left == 0) {
                return false;
            }
        }
        std::memcpy(to, next, size);
        next += size;
        left -= size;
        return true;
    });
    std::fclose(file);
}
inline void SaveByHand(Records& records) {
    std::FILE* const file = std::fopen(DatabaseFile().c_str(), "w+b");
    WriteRecords(records, [file](auto data, auto size) { benchmark::DoNotOptimize(std::fwrite(data, size, 1, file)); });
    std::fclose(file);
}
