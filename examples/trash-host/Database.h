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

enum class Use { Read, Change };

/// The records of the database file `path`; none when there is no such file. Refuses a file that is damaged anywhere:
/// the library reads such a file up to the damage and saves only that, so the rest would be lost. With Use::Change the
/// file must be open to writing, too.
Records ReadDatabase(const std::string& path, Use use);

/// Replaces the file as a whole or not at all.
void WriteDatabase(const std::string& path, const Records& records);
