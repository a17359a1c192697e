#pragma once

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <utility>

// The file ".trash.db" as its format says, written and read without the library.

constexpr long long day = 864'000'000'000;

/// The time now in the database's unit.
inline long long Now() {
    using Ticks = std::chrono::duration<long long, std::ratio<1, 10'000'000>>;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<Ticks>(sinceEpoch).count() + 116'444'736'000'000'000;
}

/// When each item was added and where it came from.
using Entries = std::map<std::string, std::pair<long long, std::string>>;

template <class Integer>
std::string Bytes(Integer value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

inline std::string DatabaseBytes(const Entries& entries, int version = 2) {
    const auto record = [](const std::string& text) { return Bytes(static_cast<int>(text.size() + 1)) + text + '\0'; };
    std::string bytes = Bytes(version) + Bytes(static_cast<int>(entries.size()));
    for (const auto& [key, value] : entries) {
        bytes += record(key) + Bytes(value.first) + (version < 2 ? "" : record(value.second));
    }
    return bytes;
}

/// What a reader gets: the records until one ends before its time is complete. A text that is not complete, or of a
/// negative length, is empty, and one with a zero byte in it ends there. A text for which there is no memory, as it is
/// longer than `memory`, is empty and not read. `longest` becomes the greatest length.
inline Entries EntriesIn(const std::string& bytes, int memory = std::numeric_limits<int>::max(),
                         int* longest = nullptr) {
    std::istringstream in(bytes);
    const auto number = [&in](auto value) {
        in.read(reinterpret_cast<char*>(&value), sizeof value);
        return value;
    };
    const auto text = [&]() -> std::string {
        const int length = std::max(number(0), 0);
        if (longest != nullptr) {
            *longest = std::max(*longest, length);
        }
        std::string taken(length > memory ? 0 : std::min(static_cast<std::size_t>(length), bytes.size() + 1), '\0');
        return in.read(taken.data(), static_cast<std::streamsize>(taken.size())) ? std::string(taken.c_str()) : "";
    };
    Entries entries;
    const int version = number(0);
    for (int count = number(0); count > 0; --count) {
        const std::string key = text();
        const long long added = number(0LL);
        if (!in) {
            break;
        }
        entries[key] = {added, version < 2 ? "" : text()};
    }
    return entries;
}
