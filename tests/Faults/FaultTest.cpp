#include "tests/Faults/Faults.h"
#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <cerrno>
#include <future>
#include <gmock/gmock.h>
#include <iostream>

// Each operation that changes the disk runs again and again, each time with another call to the system, or another
// allocation, failing, until it gets through without meeting the fault. Nothing may be lost but what is named.

namespace {

using namespace Tolvex::FileNames;

/// A file's content in the trees below is the name of a recording, which is longer than the blocks of a copy and
/// repeats itself nowhere.
std::string Recording(const std::string& name) {
    std::string bytes;
    for (int number = 0; bytes.size() < 10000; ++number) {
        bytes += name + std::to_string(number);
    }
    return bytes;
}

Tree WithRecordings(Tree tree) {
    for (auto& [path, content] : tree) {
        content = content.empty() ? "" : Recording(content);
    }
    return tree;
}

Tree WithNames(Tree tree) {
    for (auto& [path, content] : tree) {
        const std::string name = content.substr(0, 1);
        content = content.empty() || content == Recording(name) ? name : "damaged";
    }
    return tree;
}

struct Operation {
    const char* name;
    Tree before;
    void (*prepare)();
    bool (*run)();
    std::vector<std::string> kept; ///< the recordings that no failing call may cost; failing allocations may cost none
    Tree after;                    ///< what success leaves in the folder
    Tree trash;                    ///< and in the trash, where each item is recorded
    bool reportsFailure = false;   ///< by its result, which is always true otherwise
    int stringsLoaded = 0;         ///< of a database: a failed allocation for one is not reported
    bool isThreaded = false;       ///< so that a failed allocation ends the process

    friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};

std::string In(const char* name) { return std::filesystem::absolute(name); }
std::string InTrash(const char* name) { return GetTrashFolderPath() + '/' + name; }

void Nothing() {}
void SetVolumesApart() { Faults::answers.volumesApart = true; }
void DeleteA() { DeleteFileToRecycleBin(In("a"), true); }
void DeleteB() { DeleteFileToRecycleBin(In("b"), true); }

void DeleteAAndB() {
    DeleteA();
    DeleteB();
}

void DeleteAInTheYear1601AndB() {
    DeleteAAndB();
    const std::string file = InTrash(".trash.db");
    Entries entries = EntriesIn(Content(file));
    entries[InTrash("a")].first = 1;
    std::ofstream(file, std::ios::binary) << DatabaseBytes(entries);
    std::filesystem::create_directory(InTrash("empty"));
}

bool MakeTemporaryFile() {
    const std::string path = GetTempFilename("w");
    EXPECT_TRUE(std::filesystem::is_empty(path)) << "what another held is not appended to";
    return path == In("tolvxtmp1.w");
}

bool ListFiles() {
    std::string path = In(".");
    void* listing = nullptr;
    GetFolderFiles(path.data(), nullptr, 0, &listing);
    while (GetFolderFiles(nullptr, path.data(), 1, &listing) >= 0) {
    }
    return true;
}

bool PurgeInBackground() {
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(false, [done] { done->set_value(); });
    return done->get_future().wait_for(std::chrono::seconds(10)) == std::future_status::ready;
}

template <auto function>
bool Succeeds() {
    function();
    return true;
}

void CopyFolderV() { CopyFolder(In("v"), In("w")); }
void RenameA() { Rename(In("a"), In("v/b")); }
void RenameV() { Rename(In("v"), In("w")); }

const Tree both = {{"a", "a"}, {"b", "b"}};

// Name, before, preparation, operation, what is kept, what success leaves in the folder and in the trash.
const Operation operations[] = {
    {"ListFiles", both, Nothing, ListFiles, {"a", "b"}, both, {}},
    {"CopyFileOverAnother",
     both,
     Nothing,
     [] { return CopyFile(In("a"), In("b"), false, nullptr); },
     {"a"},
     {{"a", "a"}, {"b", "a"}},
     {},
     true},
    {"CopyFolder",
     {{"v/a", "a"}, {"v/s/b", "b"}},
     Nothing,
     Succeeds<CopyFolderV>,
     {"a", "b"},
     {{"v/", ""}, {"v/a", "a"}, {"v/s/", ""}, {"v/s/b", "b"}, {"w/", ""}, {"w/a", "a"}, {"w/s/", ""}, {"w/s/b", "b"}},
     {}},
    {"RenameFileToAnotherVolume",
     {{"a", "a"}, {"v/b", "b"}},
     SetVolumesApart,
     Succeeds<RenameA>,
     {"b"},
     {{"a", "b"}, {"v/", ""}, {"v/b", "b"}},
     {}},
    {"RenameFolderToAnotherVolume",
     {{"v/s/b", "b"}},
     SetVolumesApart,
     Succeeds<RenameV>,
     {},
     {{"w/", ""}, {"w/s/", ""}, {"w/s/b", "b"}},
     {}},
    {"DeleteFile", both, Nothing, [] { return DeleteFileA(In("a").c_str()) == 0; }, {"b"}, {{"b", "b"}}, {}, true},
    {"CreateFolders",
     {{"a", "a"}},
     Nothing,
     [] { return CreateDirectories(In("x/y")); },
     {"a"},
     {{"a", "a"}, {"x/", ""}, {"x/y/", ""}},
     {},
     true},
    {"CreateTemporaryFile",
     {{"tolvxtmp0.w", "a"}},
     Nothing,
     MakeTemporaryFile,
     {},
     {{"tolvxtmp0.w", "a"}, {"tolvxtmp1.w", ""}},
     {},
     true},
    {"NameTemporaryFile",
     {{"tolvxtmp0.fld", "a"}},
     Nothing,
     [] { return GetTempFilenameNoCreate() == In("tolvxtmp1.fld"); },
     {},
     {{"tolvxtmp0.fld", "a"}},
     {}},
    {"MoveToTheTrash", both, DeleteA, Succeeds<DeleteB>, {"a"}, {}, both, false, 2},
    {"PutBack", {{"a", "a"}}, DeleteA, [] { return PutBack(InTrash("a")); }, {}, {{"a", "a"}}, {}, false, 2},
    {"AskTheDatabase", both, DeleteAAndB, [] { return CanPutBack(InTrash("a")); }, {"a", "b"}, {}, both, false, 4},
    {"Purge", both, DeleteAInTheYear1601AndB, PurgeInBackground, {"b"}, {}, {{"b", "b"}}, false, 0, true},
};

class FaultTest : public DiskTest, public testing::WithParamInterface<Operation> {
protected:
    void Prepare() const {
        MakeEmpty(folder);
        MakeEmpty(applicationFolder);
        std::filesystem::current_path(folder);
        Faults::answers = {};
        MakeTree(folder, WithRecordings(GetParam().before));
        GetParam().prepare();
    }

    Tree Items() const {
        Tree items = std::filesystem::exists(trash) ? TreeOf(trash) : Tree();
        items.erase(".trash.db");
        return WithNames(items);
    }

    /// The recorded items of the trash. The database must be whole.
    std::vector<std::string> RecordedItems() const {
        std::vector<std::string> names;
        if (std::filesystem::exists(trash + "/.trash.db")) {
            for (const auto& [path, value] : EntriesIn(Content(trash + "/.trash.db"))) {
                EXPECT_NE(value.second, "") << path;
                names.push_back(path.substr(trash.size() + 1));
            }
        }
        return names;
    }

    void ExpectSuccess() const {
        EXPECT_EQ(WithNames(TreeOf(folder)), GetParam().after);
        EXPECT_EQ(Items(), GetParam().trash);
        std::vector<std::string> names;
        for (const auto& [name, content] : GetParam().trash) {
            names.push_back(name);
        }
        EXPECT_EQ(RecordedItems(), names);
    }

    void ExpectOnDisk(const std::string& recording) const {
        const auto isWhole = testing::Contains(testing::Pair(testing::_, recording));
        EXPECT_THAT((std::array{WithNames(TreeOf(folder)), Items()}), testing::Contains(isWhole));
    }

    /// Runs the operation with the fault. Returns whether it struck.
    bool Strike(const Faults::Fault& fault) {
        SCOPED_TRACE("errno " + std::to_string(fault.error) + " at number " + std::to_string(fault.number));
        Prepare();
        const std::vector<std::string> recordedBefore = RecordedItems();
        bool result = false;
        bool isOutOfMemory = false;
        const Faults::Outcome outcome = Faults::Strike(fault, [&] {
            try {
                result = GetParam().run();
            } catch (const std::bad_alloc&) {
                isOutOfMemory = true;
            } catch (const std::exception&) {
            }
        });
        ExpectNoDescriptorLost(outcome.hasStruckWriting);
        if (!outcome.hasStruck || (result && GetParam().reportsFailure)) {
            ExpectSuccess();
        }
        if (isOutOfMemory) {
            EXPECT_EQ(RecordedItems(), recordedBefore);
        } else if (outcome.hasStruck) {
            ++strikesNotReportedAsOutOfMemory;
        }
        for (const std::string& recording : GetParam().kept) {
            ExpectOnDisk(recording);
        }
        for (const auto& [path, recording] : isOutOfMemory ? GetParam().before : Tree()) {
            ExpectOnDisk(recording);
        }
        EXPECT_TRUE(fault.error != 0 || result) << "what moves half of its bytes goes on";
        ExpectNothingHeld(outcome);
        return outcome.hasStruck;
    }

    /// Expects that all files are closed, but for a database that could not be written.
    void ExpectNoDescriptorLost(bool mayLoseOne) const {
        EXPECT_LE(CountOpenFiles(), openAtStart + (mayLoseOne ? 1 : 0));
        for (int descriptor = 3; CountOpenFiles() > openAtStart; ++descriptor) {
            close(descriptor);
        }
    }

    /// Expects that another thread gets the lock, which it waits for without end, and that no memory is lost when that
    /// thread has emptied the map.
    void ExpectNothingHeld(const Faults::Outcome& outcome) const {
        MakeFile(trash + "/.trash.db");
        const Faults::Outcome afterwards =
            Faults::Strike({}, [] { std::async(std::launch::async, [] { return CanPutBack("nothing"); }).get(); });
        EXPECT_EQ(outcome.allocationsLeft + afterwards.allocationsLeft, 0) << "memory lost";
    }

    /// Lets the fault strike at every place, at each alone and from each on. Returns how often it struck.
    int StrikeEverywhere(int error, bool inMemory) {
        int strikes = 0;
        for (const bool onwards : {false, true}) {
            const bool isEndless = error == EINTR && onwards; // waited for without end, as callers know
            for (int number = 1; !isEndless && Strike({number, error, onwards, inMemory}); ++number) {
                ++strikes;
            }
        }
        return strikes;
    }

    const std::string trash = applicationFolder + "/Trash";
    const EnvironmentVariable temporary{"TMPDIR", folder.c_str()};
    int strikesNotReportedAsOutOfMemory = 0;
};

TEST_P(FaultTest, CostsNoMoreThanIsNamed) {
    Prepare();
    Faults::Strike({}, [] { // what is made once is made now
        GetParam().run();
        CanPutBack("nothing");
    });
    int calls = 0;
    for (const int error : {ENOSPC, EMFILE, EINTR, 0}) {
        calls += StrikeEverywhere(error, false);
    }
    strikesNotReportedAsOutOfMemory = 0;
    const int allocations = GetParam().isThreaded ? 0 : StrikeEverywhere(ENOMEM, true);
    EXPECT_EQ(strikesNotReportedAsOutOfMemory, GetParam().stringsLoaded);
    std::cout << GetParam().name << ": " << calls << " failed calls, " << allocations << " failed allocations\n";
}

INSTANTIATE_TEST_SUITE_P(Fault, FaultTest, testing::ValuesIn(operations),
                         [](const auto& tested) { return tested.param.name; });

using CopyFaultTest = DiskTest;

TEST_F(CopyFaultTest, InterruptedWriteIsRepeated) {
    const std::string source = MakeFile("a", "content");
    int survived = 0;
    bool hasStruck = true;
    for (int number = 1; hasStruck; ++number) {
        std::filesystem::remove(Path("b"));
        int result = 0;
        const auto copy = [&] { result = cp(Path("b").c_str(), source.c_str()); };
        hasStruck = Faults::Strike({number, EINTR, false, false}, copy).hasStruck;
        survived += hasStruck && result == 0 ? 1 : 0;
    }
    EXPECT_EQ(survived, 2) << "the write, and closing the source";
}

} // namespace
