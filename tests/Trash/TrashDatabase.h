#pragma once

#include <chrono>
#include <map>
#include <string>
#include <utility>

// The file ".trash.db" as its format says, written without the library.

constexpr long long day = 864'000'000'000;

inline long long Now() {
    const std::chrono::nanoseconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return sinceEpoch.count() / 100 + 116'444'736'000'000'000;
}

/// When each item was added, and where it came from, by its path in the trash.
using Entries = std::map<std::string, std::pair<long long, std::string>>;

inline std::string DatabaseBytes(const Entries& entries, int version = 2) {
    std::string bytes;
    const auto addNumber = [&bytes](auto value) { bytes.append(reinterpret_cast<const char*>(&value), sizeof value); };
    const auto addString = [&bytes, addNumber](const std::string& string) {
        addNumber(static_cast<int>(string.size() + 1));
        bytes += string + '\0';
    };
    addNumber(version);
    addNumber(static_cast<int>(entries.size()));
    for (const auto& [path, value] : entries) {
        addString(path);
        addNumber(value.first);
        if (version == 2) {
            addString(value.second);
        }
    }
    return bytes;
}
