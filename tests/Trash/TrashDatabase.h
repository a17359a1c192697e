#pragma once

#include <algorithm>
#include <chrono>
#include <map>
#include <sstream>
#include <string>
#include <utility>

// The file ".trash.db" as its format says, written and read without the library.

constexpr long long day = 864'000'000'000;

inline long long Now() {
    const std::chrono::nanoseconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return sinceEpoch.count() / 100 + 116'444'736'000'000'000;
}

/// When each item was added and where it came from.
using Entries = std::map<std::string, std::pair<long long, std::string>>;

inline std::string DatabaseBytes(const Entries& entries, int version = 2) {
    const auto bytesOf = [](auto value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); };
    const auto record = [bytesOf](const std::string& text) {
        return bytesOf(static_cast<int>(text.size() + 1)) + text + '\0';
    };
    std::string bytes = bytesOf(version) + bytesOf(static_cast<int>(entries.size()));
    for (const auto& [key, value] : entries) {
        bytes += record(key) + bytesOf(value.first) + (version < 2 ? "" : record(value.second));
    }
    return bytes;
}

/// The records until one ends before its time is complete. A text that is cut, or of a negative length, is empty.
inline Entries EntriesIn(const std::string& bytes, int* longest = nullptr) {
    std::istringstream in(bytes);
    const auto number = [&in](auto value) { return in.read(reinterpret_cast<char*>(&value), sizeof value), value; };
    const auto text = [&]() -> std::string {
        const int length = std::max(number(0), 0);
        longest != nullptr&&* longest < length ? * longest = length : 0;
        std::string taken(std::min(static_cast<std::size_t>(length), bytes.size() + 1), '\0');
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
