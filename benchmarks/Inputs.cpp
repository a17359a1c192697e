#include "benchmarks/Inputs.h"

#include <array>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

PathParts MakePath(long length) {
    PathParts parts;
    parts.name = "take1.wav";
    const std::size_t folderLength = static_cast<std::size_t>(length) - parts.name.size() - 1;
    while (parts.folder.size() < folderLength) {
        parts.folder += "/Songs/Album two/Audio files";
    }
    parts.folder.resize(folderLength - 1);
    parts.folder += 'x';
    parts.path = parts.folder + '/' + parts.name;
    parts.from = parts.folder + '/';
    parts.to = parts.from;
    for (std::size_t i = parts.to.find('/', folderLength / 2 - 3); i < folderLength; ++i) {
        parts.to[i] = parts.to[i] == '/' ? '/' : 'z';
    }
    return parts;
}

const Text texts[3] = {
    {"ASCII", "take 12 - lead guit.", L"take 12 - lead guit."},
    {"Latin", "Über die Brücke, çà!", L"Über die Brücke, çà!"},
    {"CJK with emoji", "夜想曲第二番変ホ長調🎹作品九の二ショパン", L"夜想曲第二番変ホ長調🎹作品九の二ショパン"}};

void WriteFileAtOnce(Path path, Path bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string FolderWithFiles(long count) {
    std::string folder = workFolder + "/names " + std::to_string(count);
    if (fs::create_directory(folder)) {
        for (long i = 0; i < count; ++i) {
            WriteFileAtOnce(folder + "/take " + std::to_string(i) + " of the day.wav", "");
        }
    }
    return folder;
}

static void MakeTree(Path folder, long files, std::size_t size) {
    const std::string bytes(size, 'x');
    for (long i = 0; i < files; ++i) {
        const std::string subfolder = folder + "/Audio " + std::to_string(i / 100);
        if (i % 100 == 0) {
            fs::create_directories(subfolder);
        }
        WriteFileAtOnce(subfolder + "/take " + std::to_string(i) + ".wav", bytes);
    }
}

std::string Original() { return workFolder + "/original"; }
std::string Copy() { return workFolder + "/copy"; }
std::string Doomed() { return workFolder + "/doomed"; }

/// Removes the copy, and makes the original with `make(size)` unless it is there.
static void PrepareCopying(long size, void (*make)(long size)) {
    fs::remove_all(Copy());
    if (static long made = 0; std::exchange(made, size) != size) {
        fs::remove_all(Original());
        make(size);
    }
}

void PrepareFile(long mebibytes) {
    PrepareCopying(mebibytes, [](long size) {
        WriteFileAtOnce(Original(), std::string(static_cast<std::size_t>(size) << 20, 'x'));
    });
}

void PrepareTree(long files) {
    PrepareCopying(files, [](long size) { MakeTree(Original(), size, 1000); });
}

void PrepareDoomed(long files) { MakeTree(Doomed(), files, 0); }

std::string TrashFolder() { return workFolder + "/Library/Application Support/Tolvex Studio 10/Trash"; }
std::string DatabaseFile() { return TrashFolder() + "/.trash.db"; }

Records MakeRecords(long count) {
    Records records;
    for (long i = 0; i < count; ++i) {
        std::string number = std::to_string(i);
        number.insert(0, 6 - number.size(), '0');
        records.insert(
            {TrashFolder() + "/take " + number + ".wav", {1, "/Users/someone/Music/Album/Audio/" + number + ".wav"}});
    }
    return records;
}

template <class Number>
static Number Take(const char*& next) {
    Number number;
    std::memcpy(&number, next, sizeof number);
    next += sizeof number;
    return number;
}

static std::string TakeText(const char*& next) {
    const auto length = static_cast<std::size_t>(Take<int>(next));
    const char* const text = next;
    next += length;
    return {text, strnlen(text, length)};
}

void LoadByHand(Records& records) {
    const int file = open(DatabaseFile().c_str(), O_RDONLY);
    struct stat status {};
    fstat(file, &status);
    const auto size = static_cast<std::size_t>(status.st_size);
    const std::unique_ptr<char[]> bytes(new char[size]);
    if (read(file, bytes.get(), size) != status.st_size) {
        std::abort();
    }
    close(file);
    const char* next = bytes.get() + sizeof(int);
    for (int left = Take<int>(next); left > 0; --left) {
        std::string key = TakeText(next);
        const auto added = Take<long long>(next);
        records.insert_or_assign(records.end(), std::move(key), std::pair(added, TakeText(next)));
    }
}

void SaveByHand(Records& records) {
    const int file = open(DatabaseFile().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    std::array<char, std::size_t{128} << 10> buffer;
    std::size_t filled = 0;
    const auto flush = [&] {
        if (write(file, buffer.data(), std::exchange(filled, 0)) < 0) {
            std::abort();
        }
    };
    WriteRecords(records, [&](const char* data, std::size_t size) {
        if (size > buffer.size() - filled) {
            flush();
        }
        std::memcpy(buffer.data() + filled, data, size);
        filled += size;
    });
    flush();
    close(file);
    records.clear();
}

void MakeDatabase(long count) {
    if (static long made = -1; std::exchange(made, count) == count) {
        return;
    }
    fs::remove_all(TrashFolder());
    fs::create_directories(TrashFolder());
    Records records = MakeRecords(count);
    SaveByHand(records);
}

std::string ItemOutside() { return workFolder + "/song.wav"; }
std::string ItemInside() { return TrashFolder() + "/song.wav"; }

static void PrepareTrash(long count, bool isInside) {
    if (static long made = -1; made != count) {
        MakeDatabase(made = count);
        Records records = MakeRecords(count);
        for (const auto& record : records) {
            WriteFileAtOnce(record.first, "");
        }
        fs::copy_file(DatabaseFile(), workFolder + "/outside.db", fs::copy_options::overwrite_existing);
        records.insert({ItemInside(), {1, ItemOutside()}});
        SaveByHand(records);
        fs::copy_file(DatabaseFile(), workFolder + "/inside.db", fs::copy_options::overwrite_existing);
    }
    fs::remove_all(workFolder + "/.local/share/Trash/files/song.wav"); // where desktops have their trash
    fs::remove_all(workFolder + "/.local/share/Trash/info/song.wav.trashinfo");
    fs::remove(isInside ? ItemOutside() : ItemInside());
    WriteFileAtOnce(isInside ? ItemInside() : ItemOutside(), "");
    fs::copy_file(workFolder + (isInside ? "/inside.db" : "/outside.db"), DatabaseFile(),
                  fs::copy_options::overwrite_existing);
}

void PrepareMove(long count) { PrepareTrash(count, false); }
void PreparePuttingBack(long count) { PrepareTrash(count, true); }

void TouchMemory(long mebibytes) {
    static std::vector<char> memory;
    if (const std::size_t size = static_cast<std::size_t>(mebibytes) << 20; memory.size() != size) {
        memory = std::vector<char>(); // before there is more
        memory = std::vector<char>(size);
    }
}
