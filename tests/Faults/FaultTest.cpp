#include "tests/Faults/Faults.h"
#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <future>
#include <iostream>
#include <memory>

// Each operation that changes the disk runs again and again, each time with another call to the system, or another
// allocation, failing, until it gets through without meeting the fault. Nothing may be lost but what is named.

namespace {

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;

struct Operation {
    const char* name;
    const char* before; ///< as DiskTest makes it
    void (*prepare)();
    std::string (*run)();    ///< its result
    const char* kept;        ///< the contents that no failing call may cost; failing allocations may cost none
    const char* after;       ///< what success leaves: in the folder, in the application folder, entries with an origin
    const char* success;     ///< the result that tells of it, or "done", which does not tell
    int textsLoaded = 0;     ///< of a database: a failed allocation for one empties it untold
    bool isThreaded = false; ///< a failed allocation ends the process
};

std::ostream& operator<<(std::ostream& out, const Operation& operation) { return out << operation.name; }

std::string In(const char* name) { return fs::absolute(name); }
std::string InTrash(const char* name) { return GetTrashFolderPath() + '/' + name; }
std::string Told(bool result, const char* name = "done") { return result ? name : ""; }
void Trash(const char* name) { DeleteFileToRecycleBin(In(name), true); }

std::string MakeTemporaryFile() {
    const std::string path = GetTempFilename("w");
    EXPECT_TRUE(fs::is_empty(path)) << "what another held is not appended to";
    return Told(path == In("tolvxtmp1.w"), "made");
}

std::string PurgeInBackground() {
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(false, [done] { done->set_value(); });
    return done->get_future().wait_for(std::chrono::seconds(10)) == std::future_status::ready ? "done" : "hangs";
}

const Operation operations[] = {
    {"copy_over", "a, b", [] {}, [] { return Told(CopyFile(In("a"), In("b"), false, nullptr), "copied"); }, "a",
     "a, b=a; ; 0", "copied"},
    {"copy_folder", "v/a, v/s/b", [] {}, [] { return CopyFolder(In("v"), In("w")), Told(true); }, "v/a, v/s/b",
     "v/, v/a, v/s/, v/s/b, w/, w/a=v/a, w/s/, w/s/b=v/s/b; ; 0", "done"},
    {"rename_file_apart", "a, v/b", [] { Faults::answers.volumesApart = true; },
     [] { return Rename(In("a"), In("v/b")), Told(true); }, "v/b", "a=v/b, v/, v/b; ; 0", "done"},
    {"rename_folder_apart", "v/s/b", [] { Faults::answers.volumesApart = true; },
     [] { return Rename(In("v"), In("w")), Told(true); }, "", "w/, w/s/, w/s/b=v/s/b; ; 0", "done"},
    {"create_folders", "a", [] {}, [] { return Told(CreateDirectories(In("x/y")), "made"); }, "a", "a, x/, x/y/; ; 0",
     "made"},
    {"temporary_file", "tolvxtmp0.w", [] {}, MakeTemporaryFile, "", "tolvxtmp0.w, tolvxtmp1.w=; ; 0", "made"},
    {"move_to_the_trash", "a, b", [] { Trash("a"); }, [] { return Trash("b"), Told(true); }, "a",
     "; Trash/, Trash/.trash.db, Trash/a=a, Trash/b=b; 2", "done", 2},
    {"put_back", "a", [] { Trash("a"); }, [] { return Told(PutBack(InTrash("a"))); }, "",
     "a; Trash/, Trash/.trash.db; 0", "done", 2},
    {"database", "a, b", [] { Trash("a"), Trash("b"); }, [] { return Told(CanPutBack(InTrash("a"))); }, "a, b",
     "; Trash/, Trash/.trash.db, Trash/a=a, Trash/b=b; 2", "done", 4},
    {"purge", "a, b",
     [] {
         Trash("a"), Trash("b");
         // The first entry gets the time 1, in the year 1601: behind version, count, and key with length and zero.
         const auto place = static_cast<long>(12 + InTrash("a").size() + 1);
         std::fstream(InTrash(".trash.db")).seekp(place).write("\1\0\0\0\0\0\0", 8);
         fs::create_directory(InTrash("empty"));
     },
     PurgeInBackground, "b", "; Trash/, Trash/.trash.db, Trash/b=b; 1", "done", 0, true}};

class FaultTest : public DiskTest, public testing::WithParamInterface<Operation> {
protected:
    void Prepare() const {
        MakeEmpty(folder);
        MakeEmpty(applicationFolder);
        fs::current_path(folder);
        Faults::answers = {};
        Make(GetParam().before);
        GetParam().prepare();
    }

    /// How many entries of the database have their origin.
    std::string CountKnown() const {
        const std::string path = applicationFolder + "/Trash/.trash.db";
        const Entries entries = EntriesIn(fs::exists(path) ? Content(path) : "");
        const auto isKnown = [](const auto& entry) { return !entry.second.second.empty(); };
        return std::to_string(std::count_if(entries.begin(), entries.end(), isKnown));
    }

    /// Runs the operation; its result, or what it threw.
    static std::string Run() {
        try {
            return GetParam().run();
        } catch (const std::bad_alloc&) {
            return "bad_alloc";
        } catch (const std::exception&) {
            return "exception";
        }
    }

    /// Has another thread load and save the database, which empties the map of what a failure left there.
    static void RequireFreeLocks() {
        auto loadAndSave = std::async(std::launch::async, [] { return CanPutBack("nothing"); });
        if (loadAndSave.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
            std::cerr << "a lock is still held" << std::endl;
            std::abort(); // nobody can end that thread
        }
    }

    void ExpectNothingLost(const std::string& result, bool hasStruck, const std::string& knownBefore) const {
        const std::string known = CountKnown();
        if (fs::exists(applicationFolder + "/Trash/.trash.db")) {
            MakeFile(applicationFolder + "/Trash/.trash.db", "Trash/.trash.db");
        }
        const std::string inTrash = ListWithContents(applicationFolder);
        const std::string disk = ListWithContents(folder) + "; " + inTrash + "; ";
        const std::vector<std::string> files = Cells(ListWithContents(folder) + ", " + inTrash);
        if (!hasStruck || (result == GetParam().success && result != "done")) {
            EXPECT_EQ(result, GetParam().success);
            EXPECT_EQ(disk + known, GetParam().after);
        }
        for (const std::string& name : Cells(result == "bad_alloc" ? GetParam().before : GetParam().kept)) {
            const auto isWhole = [&name](const std::string& entry) {
                return entry == name || entry.substr(entry.find('=') + 1) == name;
            };
            EXPECT_TRUE(name.empty() || std::any_of(files.begin(), files.end(), isWhole))
                << name << " is lost: " << disk;
        }
        EXPECT_TRUE(result != "bad_alloc" || known == knownBefore) << known;
    }

    /// Runs the operation with the fault. Whether that struck.
    bool Strike(const Faults::Fault& fault) {
        SCOPED_TRACE(std::string(std::strerror(fault.error)) + " at number " + std::to_string(fault.number));
        Prepare();
        const std::string known = CountKnown();
        std::string result;
        const Faults::Outcome outcome = Faults::Strike(fault, [&result] { result = Run(); });
        // A database that cannot be written keeps its stream.
        EXPECT_TRUE(CountOpenFiles() == openAtStart ||
                    (outcome.hasStruckWriting && CountOpenFiles() == openAtStart + 1));
        for (int descriptor = 3; CountOpenFiles() > openAtStart; ++descriptor) {
            close(descriptor);
        }
        ExpectNothingLost(result, outcome.hasStruck, known);
        untold += outcome.hasStruck && result != "bad_alloc" ? 1 : 0;
        fs::create_directory(applicationFolder + "/Trash");
        const Faults::Outcome afterwards = Faults::Strike({}, RequireFreeLocks);
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

    const EnvironmentVariable temporary{"TMPDIR", folder.c_str()};
    int untold = 0; ///< how often a fault struck and no bad_alloc came out
};

TEST_P(FaultTest, CostsMoreThanIsNamed) {
    Prepare();
    Run(); // what is made once is made now
    RequireFreeLocks();
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

TEST_F(CopyFaultTest, FailureIsNotToldOrTheCopyNotWhole) {
    const std::string content(5000, 'x'); // two pieces
    const std::string source = MakeFile("a", content);
    const std::string destination = Path("b");
    for (const auto& [error, survived] : {std::pair(EIO, 1), std::pair(EINTR, 3), std::pair(0, 5)}) {
        int left = survived; // closing the source; that, and both writes, which are repeated; all that move half
        bool hasStruck = true;
        for (int number = 1; hasStruck; ++number) {
            fs::remove(destination);
            std::pair<int, int> result;
            const auto copy = [&] { result = {cp(destination.c_str(), source.c_str()), errno}; };
            hasStruck = Faults::Strike({number, error, false, false}, copy).hasStruck;
            left -= hasStruck && result.first == 0 ? 1 : 0;
            EXPECT_TRUE(result.first == 0 ? Content(destination) == content : result.second == error) << number;
        }
        EXPECT_EQ(left, 0) << "errno " << error;
    }
}

} // namespace
