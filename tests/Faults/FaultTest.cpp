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
#include <iostream>

// Each operation that changes the disk runs again and again, each time with another call to the system, or another
// allocation, failing, until it gets through without meeting the fault. Nothing may be lost but what is named.

namespace {

using namespace Tolvex::FileNames;

struct Operation {
    const char* name;
    const char* before; ///< as DiskTest makes it
    void (*prepare)();
    bool (*run)();
    const char* kept;        ///< the contents that no failing call may cost; failing allocations may cost none
    const char* after;       ///< what success leaves: in the folder, in the application folder, entries with an origin
    bool tellsFailure;       ///< or its result is always true
    int textsLoaded = 0;     ///< of a database: a failed allocation for one empties it untold
    bool isThreaded = false; ///< a failed allocation ends the process
    friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};

std::string In(const char* name) { return std::filesystem::absolute(name); }
std::string InTrash(const char* name) { return GetTrashFolderPath() + '/' + name; }
bool Trash(const char* name) { return DeleteFileToRecycleBin(In(name), true), true; }

bool MakeTemporaryFile() {
    const std::string path = GetTempFilename("w");
    EXPECT_TRUE(std::filesystem::is_empty(path)) << "what another held is not appended to";
    return path == In("tolvxtmp1.w");
}

bool PurgeInBackground() {
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(false, [done] { done->set_value(); });
    return done->get_future().wait_for(std::chrono::seconds(10)) == std::future_status::ready;
}

bool ListFiles() {
    std::string text = In(".");
    void* listing = nullptr;
    GetFolderFiles(text.data(), nullptr, 0, &listing);
    while (GetFolderFiles(nullptr, text.data(), 1, &listing) >= 0) {
    }
    return true;
}

const Operation operations[] = {
    {"listing", "a, b", [] {}, ListFiles, "a, b", "a, b; ; 0", false},
    {"copy_over", "a, b", [] {}, [] { return CopyFile(In("a"), In("b"), false, nullptr); }, "a", "a, b=a; ; 0", true},
    {"copy_folder", "v/a, v/s/b", [] {}, [] { return CopyFolder(In("v"), In("w")), true; }, "v/a, v/s/b",
     "v/, v/a, v/s/, v/s/b, w/, w/a=v/a, w/s/, w/s/b=v/s/b; ; 0", false},
    {"rename_file_apart", "a, v/b", [] { Faults::answers.volumesApart = true; },
     [] { return Rename(In("a"), In("v/b")), true; }, "v/b", "a=v/b, v/, v/b; ; 0", false},
    {"rename_folder_apart", "v/s/b", [] { Faults::answers.volumesApart = true; },
     [] { return Rename(In("v"), In("w")), true; }, "", "w/, w/s/, w/s/b=v/s/b; ; 0", false},
    {"create_folders", "a", [] {}, [] { return CreateDirectories(In("x/y")); }, "a", "a, x/, x/y/; ; 0", true},
    {"temporary_file", "tolvxtmp0.w", [] {}, MakeTemporaryFile, "", "tolvxtmp0.w, tolvxtmp1.w=; ; 0", true},
    {"move_to_the_trash", "a, b", [] { Trash("a"); }, [] { return Trash("b"); }, "a",
     "; Trash/, Trash/.trash.db, Trash/a=a, Trash/b=b; 2", false, 2},
    {"put_back", "a", [] { Trash("a"); }, [] { return PutBack(InTrash("a")); }, "", "a; Trash/, Trash/.trash.db; 0",
     false, 2},
    {"database", "a, b", [] { Trash("a"), Trash("b"); }, [] { return CanPutBack(InTrash("a")); }, "a, b",
     "; Trash/, Trash/.trash.db, Trash/a=a, Trash/b=b; 2", false, 4},
    {"purge", "a, b",
     [] {
         Trash("a"), Trash("b");
         // The first entry gets the time 1, in the year 1601: behind version, count, and key with length and zero.
         const auto place = static_cast<long>(12 + InTrash("a").size() + 1);
         std::fstream(InTrash(".trash.db")).seekp(place).write("\1\0\0\0\0\0\0", 8);
         std::filesystem::create_directory(InTrash("empty"));
     },
     PurgeInBackground, "b", "; Trash/, Trash/.trash.db, Trash/b=b; 1", false, 0, true}};

class FaultTest : public DiskTest, public testing::WithParamInterface<Operation> {
protected:
    void Prepare() const {
        MakeEmpty(folder);
        MakeEmpty(applicationFolder);
        std::filesystem::current_path(folder);
        Faults::answers = {};
        Make(GetParam().before);
        GetParam().prepare();
    }

    std::string CountKnown() const {
        const Entries entries = EntriesIn(std::filesystem::exists(database) ? Content(database) : "");
        const auto isKnown = [](const auto& entry) { return !entry.second.second.empty(); };
        return std::to_string(std::count_if(entries.begin(), entries.end(), isKnown));
    }

    void ExpectNothingLost(bool isDone, bool isOutOfMemory, const std::string& knownBefore) const {
        const std::string known = CountKnown();
        EXPECT_TRUE(!isOutOfMemory || known == knownBefore) << known;
        std::filesystem::exists(database) ? MakeFile(database, "Trash/.trash.db") : "";
        const std::string disk = List(folder, true) + "; " + List(applicationFolder, true) + "; " + known;
        EXPECT_TRUE(!isDone || disk == GetParam().after) << disk;
        const std::vector<std::string> files = Cells(List(folder, true) + ", " + List(applicationFolder, true));
        for (const std::string& name : Cells(isOutOfMemory ? GetParam().before : GetParam().kept)) {
            const auto isWhole = [&](auto& file) { return file == name || file.substr(file.find('=') + 1) == name; };
            EXPECT_TRUE(name.empty() || std::any_of(files.begin(), files.end(), isWhole))
                << name << " is not in " << disk;
        }
    }

    /// Runs the operation with the fault, then another thread that empties the map of what it left. Whether it struck.
    bool Strike(const Faults::Fault& fault) {
        SCOPED_TRACE("errno " + std::to_string(fault.error) + " at number " + std::to_string(fault.number));
        Prepare();
        const std::string known = CountKnown();
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
        // A database that cannot be written keeps its stream.
        EXPECT_LE(CountOpenFiles(), openAtStart + (outcome.hasStruckWriting ? 1 : 0)) << "descriptors lost";
        for (int descriptor = 3; CountOpenFiles() > openAtStart; ++descriptor) {
            close(descriptor);
        }
        ExpectNothingLost(!outcome.hasStruck || (result && GetParam().tellsFailure), isOutOfMemory, known);
        untold += outcome.hasStruck && !isOutOfMemory ? 1 : 0;
        EXPECT_TRUE(fault.error != 0 || result) << "what moves half of its bytes goes on";
        MakeFile(database);
        const Faults::Outcome afterwards = Faults::Strike({}, [] { // which waits without end for a lock that is held
            std::async(std::launch::async, [] { return CanPutBack("nothing"); }).get();
        });
        EXPECT_EQ(outcome.allocationsLeft + afterwards.allocationsLeft, 0) << "memory lost";
        return outcome.hasStruck;
    }

    /// Lets the fault strike at every place, at each alone and from each on. How often it struck.
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

    const std::string database = applicationFolder + "/Trash/.trash.db";
    const EnvironmentVariable temporary{"TMPDIR", folder.c_str()};
    int untold = 0; ///< how often a fault struck and no bad_alloc came out
};

TEST_P(FaultTest, CostsMoreThanIsNamed) {
    Prepare();
    Faults::Strike({}, [] { GetParam().run(), CanPutBack("nothing"); }); // what is made once is made now
    int calls = 0;
    for (const int error : {ENOSPC, EMFILE, EINTR, 0}) {
        calls += StrikeEverywhere(error, false);
    }
    untold = 0;
    const int allocations = GetParam().isThreaded ? 0 : StrikeEverywhere(ENOMEM, true);
    EXPECT_EQ(untold, GetParam().textsLoaded) << "swallowed";
    std::cout << GetParam().name << ": " << calls << " failed calls, " << allocations << " failed allocations\n";
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTest, testing::ValuesIn(operations),
                         [](const auto& tested) { return tested.param.name; });

using CopyFaultTest = DiskTest;

TEST_F(CopyFaultTest, InterruptedWriteEndsTheCopy) {
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
