#pragma once

#include <map>
#include <string>

/// What the trash database knows of an item.
struct Record {
    long long added = 0; ///< in 100 nanoseconds since 1601
    std::string origin;  ///< empty for files that a purge found and recorded

    bool operator==(const Record& other) const { return added == other.added && origin == other.origin; }
};

/// By the item's full path in the trash.
using Records = std::map<std::string, Record>;

/// The records of the database file `path`; none when there is no such file. Refuses a file that may not be read and,
/// with `toChange`, written, and one that is damaged anywhere: the library reads such a file up to the damage and saves
/// only that, so the rest would be lost.
Records ReadDatabase(const std::string& path, bool toChange);

/// Replaces the file as a whole or refuses. With `inPlace`, for full disks, the new one takes the old one's room; then a
/// refusal leaves a part of it.
void WriteDatabase(const std::string& path, const Records& records, bool inPlace = false);
