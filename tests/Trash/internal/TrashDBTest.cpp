#include <FrameworkBase/Trash/internal/TrashDB.h>

#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/Trash/Trash.h>

#include <functional>
#include <future>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using namespace std::string_literals;
using namespace Tolvex::FileNames;

namespace {

class TrashDBTest : public DiskTest {
protected:
    TrashDBTest() { trashDB.files.clear(); }

    /// What is in memory.
    Entries Loaded() const {
        Entries entries;
        for (const auto& [path, value] : database.files) {
            entries[path] = {value.first.ticks, value.second};
        }
        return entries;
    }

    TrashDB database;
};

TEST_F(TrashDBTest, FileHasVersionCountAndRecordsInOrder) {
    database.Load(folder);
    database.files["/t/b"] = {TrashDB::DateTime{258}, "/o/b"};
    database.files["/t/a"] = {TrashDB::DateTime{-1}, ""};
    database.Unload();
    EXPECT_EQ(database.files.size(), 0U);
    EXPECT_EQ(Content(Path(".trash.db")), "\2\0\0\0\2\0\0\0"
                                          "\5\0\0\0/t/a\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\1\0\0\0\0"
                                          "\5\0\0\0/t/b\0\2\1\0\0\0\0\0\0\5\0\0\0/o/b\0"s);
}

TEST_F(TrashDBTest, LoadsStringsOfAnyLength) {
    Entries entries; // at whose bounds those of the blocks that are read fall at every place
    for (std::size_t size = 1; size <= 400; ++size) {
        entries[std::string(size, 'k')] = {static_cast<long long>(size), std::string((size * size) % 5000, 'o')};
    }
    MakeFile(".trash.db", DatabaseBytes(entries));
    database.Load(folder);
    EXPECT_EQ(Loaded(), entries);
}

TEST_F(TrashDBTest, LoadsVersion1WithoutOrigins) {
    MakeFile(".trash.db", DatabaseBytes({{"a", {1, ""}}, {"b", {2, ""}}}, 1));
    database.Load(folder);
    EXPECT_EQ(Loaded(), (Entries{{"a", {1, ""}}, {"b", {2, ""}}}));
}

TEST_F(TrashDBTest, LoadsTheRecordsBeforeTheDamage) {
    const std::string bytes = DatabaseBytes({{"a", {1, "one"}}, {"b", {2, "two"}}});
    const std::string first = DatabaseBytes({{"a", {1, "one"}}});
    MakeFile(".trash.db", bytes.substr(0, bytes.size() - 1));
    database.Load(folder);
    EXPECT_EQ(Loaded(), (Entries{{"a", {1, "one"}}, {"b", {2, ""}}})) << "cut in the last origin";
    database.files.clear();
    MakeFile(".trash.db", bytes.substr(0, first.size() + 10));
    database.Load(folder);
    EXPECT_EQ(Loaded(), (Entries{{"a", {1, "one"}}})) << "cut in the second time";
}

TEST_F(TrashDBTest, EachCallTakesARecursiveLockAndLetsItGo) {
    MakeFile(".trash.db", DatabaseBytes({{"a", {1, "b"}}}));
    database.folder = folder;
    TrashDB::DateTime added;
    std::string origin;
    const std::function<void()> calls[] = {[&] { database.Load(folder); },
                                           [&] { database.Unload(); },
                                           [&] { database.InsertFile("a", "b"); },
                                           [&] { database.GetFileOriginalPath("a", origin); },
                                           [&] { database.GetFileAdded("a", added); },
                                           [&] { database.DeleteFile("a"); }};
    for (const auto& call : calls) {
        SCOPED_TRACE(&call - calls);
        database.lock.lock();
        call(); // its holder may take it again
        auto other = std::async(std::launch::async, call);
        EXPECT_EQ(other.wait_for(20ms), std::future_status::timeout);
        database.lock.unlock();
        EXPECT_EQ(other.wait_for(10s), std::future_status::ready);
        auto attempt = std::async(std::launch::async, [this] {
            const std::unique_lock free(database.lock, std::try_to_lock);
            return free.owns_lock();
        });
        EXPECT_TRUE(attempt.get()) << "it is held still";
    }
}

} // namespace
