#pragma once

#include "benchmarks/Harness.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

// The jobs with their sizes, and what they work on, so that a peer only says how it does them. A function named On...
// adds one way of doing a job at each of its sizes. What lies on disk is below workFolder.

using Path = const std::string&;

/// A path, its folder and its name, and two folders that share their first half.
struct PathParts {
    std::string path;
    std::string folder;
    std::string name;
    std::string from;
    std::string to;
};
using Parts = PathParts&;
PathParts MakePath(long length);

/// `call(parts)` of a path.
template <class Call>
void OnPath(const char* job, const char* who, Call call) {
    const auto input = [](long length) { return std::tuple(MakePath(length)); };
    Measure(std::string("paths/") + job, {20, 80, 320}, who, input, call);
}

/// A text of 20 characters in both forms.
struct Text {
    const char* kind;
    const char* utf8;
    const wchar_t* wide;
};
extern const Text texts[3];

/// `length` characters of `text`.
template <class Character>
std::basic_string<Character> Repeat(const Character* text, long length) {
    std::basic_string<Character> result;
    for (long i = 0; i < length; i += 20) {
        result += text;
    }
    return result;
}

/// `toWide(text)` of UTF-8, and `toUtf8(text)` of UTF-32.
template <class ToWide, class ToUtf8>
void OnTexts(const char* who, ToWide toWide, ToUtf8 toUtf8) {
    for (const Text& text : texts) {
        const auto add = [who, kind = text.kind](const std::string& job, const auto* characters, auto call) {
            Measure(
                "conversions/" + job + kind, {20, 200, 1500}, who,
                [characters](long length) { return std::tuple(Repeat(characters, length)); },
                [call](auto& repeated) { return call(repeated.data()); });
        };
        add("UTF-8 to wide, ", text.utf8, toWide);
        add("wide to UTF-8, ", text.wide, toUtf8);
    }
}

void WriteFileAtOnce(Path path, Path bytes);

/// The path of a folder with `count` empty files, made once.
std::string FolderWithFiles(long count);

/// `call(folder)` returns the names of the files in it.
template <class Call>
void OnListing(const char* who, Call call) {
    Measure(
        "listing/list", {1'000, 10'000, 100'000}, who, [](long count) { return std::tuple(FolderWithFiles(count)); },
        call);
}

/// Copies Original() to Copy(), where nothing is: a file of so many MiB, or a tree of so many small files.
std::string Original();
std::string Copy();
void PrepareFile(long mebibytes);
void PrepareTree(long files);
inline const PreparedJob copyFile{"copying/copy a file", {1, 10, 100}, PrepareFile};
inline const PreparedJob copyTree{"copying/copy small files", {200, 2'000}, PrepareTree};

/// Deletes Doomed(), a folder with subfolders of a hundred files each.
std::string Doomed();
void PrepareDoomed(long files);
inline const PreparedJob deletion{"deleting/delete files in folders", {2'000, 20'000}, PrepareDoomed};

/// The trash folder, its database file, and what that holds: by path in the trash, when an item came and from where.
std::string TrashFolder();
std::string DatabaseFile();
using Records = std::map<std::string, std::pair<long long, std::string>>;
Records MakeRecords(long count);

/// Makes an empty trash folder with a database of `count` records, unless that is there.
void MakeDatabase(long count);

/// Loads the database file by one read that is parsed into a map. For undamaged files.
void LoadByHand(Records& records);

/// Saves the database file through a buffer flushed in pieces of 128 KiB, and empties the map.
void SaveByHand(Records& records);

/// Writes a database field by field with `put(data, size)`.
template <class Put>
void WriteRecords(const Records& records, Put put) {
    const auto putNumber = [&put](const auto& number) { put(reinterpret_cast<const char*>(&number), sizeof number); };
    const auto putText = [&](Path text) {
        putNumber(static_cast<int>(text.size() + 1));
        put(text.c_str(), text.size() + 1);
    };
    putNumber(2);
    putNumber(static_cast<int>(records.size()));
    for (const auto& [path, value] : records) {
        putText(path);
        putNumber(value.first);
        putText(value.second);
    }
}

/// Reads a database field by field with `get(data, size)`.
template <class Get>
void ReadRecords(Records& records, Get get) {
    const auto getNumber = [&get](auto& number) { get(reinterpret_cast<char*>(&number), sizeof number); };
    const auto getText = [&] {
        int size = 0;
        getNumber(size);
        std::string text(static_cast<std::size_t>(size), '\0');
        get(text.data(), text.size());
        text.pop_back();
        return text;
    };
    int left = 0;
    getNumber(left); // the version
    for (getNumber(left); left > 0; --left) {
        std::string path = getText();
        long long added = 0;
        getNumber(added);
        records.insert_or_assign(std::move(path), std::pair(added, getText()));
    }
}

/// `load(map)` reads the database file into an empty map; `save(map)` writes it and empties the map.
template <class Map, class Load, class Save>
void OnDatabase(const char* who, Load load, Save save) {
    static Map map;
    const auto prepareLoad = [](long count) {
        MakeDatabase(count);
        map.clear();
    };
    const auto prepareSave = [load](long count) {
        MakeDatabase(count);
        load(map);
    };
    Measure(PreparedJob{"database/load", {1'000, 10'000, 100'000}, prepareLoad}, who, [load] { load(map); });
    Measure(PreparedJob{"database/save", {1'000, 10'000, 100'000}, prepareSave}, who, [save] { save(map); });
}

/// Moves ItemOutside() to the trash, and ItemInside() back to where it came from, with so many other items in the trash
/// and its database. A peer has a trash of its own, which is empty.
std::string ItemOutside();
std::string ItemInside();
void PrepareMove(long count);
void PreparePuttingBack(long count);
inline const PreparedJob moveToTrash{"trash/move to the trash", {0, 1'000, 10'000}, PrepareMove};
inline const PreparedJob moveToOwnTrash{"trash/move to the trash", {0}, PrepareMove};
inline const PreparedJob putBack{"trash/put back", {0, 1'000, 10'000}, PreparePuttingBack};

/// Starts a child and waits for its end, with so many MiB of touched memory in this process.
void TouchMemory(long mebibytes);
inline const PreparedJob startChild{"processes/start and reap a child", {50, 1024, 4096}, TouchMemory};

/// `write(path, values)` writes the values one by one, and `read(path, values)` reads as many.
template <class Write, class Read>
void OnStreams(const char* who, Write write, Read read) {
    const auto add = [who](const std::string& job, auto call, auto value) {
        const auto input = [value](long count) {
            const std::string path = workFolder + "/stream";
            WriteFileAtOnce(path, std::string(static_cast<std::size_t>(count) * sizeof value, '\1'));
            return std::tuple(path, std::vector(static_cast<std::size_t>(count), value));
        };
        Measure("streams/" + job, {10'000, 1'000'000}, who, input, [call](Path path, auto& values) {
            call(path, values);
            return values.data();
        });
    };
    add("write int", write, 1);
    add("write long long", write, 1LL);
    add("read int", read, 1);
    add("read long long", read, 1LL);
}
