#include "tests/Faults/Faults.h"
#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <iterator>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <thread>

// Each operation that changes the disk runs again and again, each time with another call to the system, or another
// allocation, failing, until it gets through without meeting the fault. states.txt beside this file lists the states
// that the disk may be left in: all of them occur, and no other.

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using namespace Tolvex::FileNames;
using Faults::Target;

const std::string content(5000, 'x'); // more than the library copies at once

class FaultTest;

struct Operation {
    const char* name;
    void (*prepare)(const FaultTest& test);
    std::string (*run)(const FaultTest& test); ///< its result, in a few characters
    int textsLoaded = 0;                       ///< of a database: a failed allocation for one empties it untold
    bool throwsBadAlloc = true;                ///< to the caller, as it runs on the caller's thread
};

std::ostream& operator<<(std::ostream& out, const Operation& operation) { return out << operation.name; }

/// How many entries have their origin, of how many.
std::string DescribeDatabase(const std::string& file) {
    int count = 0;
    if (file.size() < 2 * sizeof count) {
        return file.empty() ? "(empty)" : "(part)";
    }
    std::memcpy(&count, file.data() + sizeof count, sizeof count);
    const Entries entries = EntriesIn(file);
    const auto known =
        std::count_if(entries.begin(), entries.end(), [](auto& entry) { return !entry.second.second.empty(); });
    return "(" + std::to_string(known) + " of " + std::to_string(count) + ")";
}

std::string Describe(const fs::directory_entry& entry) {
    if (entry.is_directory()) {
        return "/";
    }
    const std::string text = Content(entry.path());
    if (entry.path().filename() == ".trash.db") {
        return DescribeDatabase(text);
    }
    if (text.empty() || text == content) {
        return text.empty() ? "(empty)" : "";
    }
    return text.front() == content.front() ? "(part)" : "(" + text + ")";
}

dev_t Device(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_dev : 0;
}

/// A new folder on another file system than `folder`, or beside it when there is none.
std::string MakeVolume(const std::string& folder) {
    std::string volume = fs::path(folder).parent_path();
    for (const char* candidate : {"/var/tmp", "/dev/shm"}) {
        if (Device(candidate) != 0 && Device(candidate) != Device(folder)) {
            volume = candidate;
        }
    }
    volume += "/faults-XXXXXX";
    EXPECT_NE(mkdtemp(volume.data()), nullptr);
    return volume;
}

std::size_t CountEntries(const char* folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

class FaultTest : public DiskTest, public testing::WithParamInterface<Operation> {
public:
    static void Write(const std::string& path, const std::string& text = content) {
        fs::create_directories(fs::path(path).parent_path());
        std::ofstream(path) << text;
    }
    std::string In(const char* name) const { return Path(name); }
    void SetVolumesApart() const { Faults::SetVolumesApart(Device(volume) == Device(folder)); } // if they are not

    void Trash(const char* name) const {
        Write(Path(name));
        DeleteFileToRecycleBin(Path(name), true);
    }

    const std::string trash = applicationFolder + "/Trash";
    const std::string temporary = temporaryFolder;
    const std::string volume = MakeVolume(folder); ///< a folder on another file system, if there is one

protected:
    void Clear() const {
        for (const std::string& root : roots) {
            fs::remove_all(root);
            fs::create_directory(root);
        }
        Faults::SetVolumesApart(false);
    }

    std::string DescribeDisk() const {
        std::set<std::string> names;
        for (const std::string& root : roots) {
            for (const auto& entry : fs::recursive_directory_iterator(root)) {
                names.insert(entry.path().lexically_relative(root).string() + Describe(entry));
            }
        }
        std::string description;
        for (const std::string& name : names) {
            description += name + ' ';
        }
        return description;
    }

    /// Has another thread load and save the database, which empties the map of what a failure left there.
    static void RequireFreeLocks() {
        auto loadAndSave = std::async(std::launch::async, [] { return CanPutBack("nothing"); });
        if (loadAndSave.wait_for(10s) != std::future_status::ready) {
            std::cerr << "a lock is still held" << std::endl;
            std::abort(); // nobody can end that thread
        }
    }

    /// Waits for the threads that an operation has started: they may still release memory after their last report.
    void AwaitThreads() const {
        for (int i = 0; i < 10000 && CountEntries("/proc/self/task") > threads; ++i) {
            std::this_thread::sleep_for(1ms);
        }
    }

    /// Runs the operation; its result, or what it threw.
    std::string Run() const {
        try {
            return GetParam().run(*this);
        } catch (const std::bad_alloc&) {
            return "bad_alloc";
        } catch (const std::system_error&) {
            return "system_error";
        } catch (const std::exception&) {
            return "exception";
        }
    }

    /// Runs the operation with the fault. Whether that struck.
    bool Strike(const Faults::Fault& fault) {
        SCOPED_TRACE(std::string(std::strerror(fault.error)) + " at number " + std::to_string(fault.number));
        Clear();
        GetParam().prepare(*this);
        const std::size_t descriptors = CountEntries("/proc/self/fd");
        Faults::Arm(fault);
        const std::string result = Run();
        const Faults::Outcome outcome = Faults::Disarm();
        AwaitThreads();
        const std::ptrdiff_t leftByOperation = Faults::AllocationsLeft();
        // A database that cannot be written whole keeps its stream.
        EXPECT_LE(outcome.streamsLeftOpen, outcome.hasStruckWriting ? 1U : 0U);
        states.insert(DescribeDisk() + "-> " + result);
        untold += outcome.hasStruck && result != "bad_alloc" ? 1 : 0;

        fs::create_directory(trash);
        Faults::Arm({});
        RequireFreeLocks();
        Faults::Disarm();
        EXPECT_EQ(leftByOperation + Faults::AllocationsLeft(), 0) << "memory lost";
        EXPECT_EQ(CountEntries("/proc/self/fd"), descriptors) << "descriptors lost";
        return outcome.hasStruck;
    }

    /// Lets the fault strike at every place, at each alone and from each on. How often it struck.
    int StrikeEverywhere(Target target, int error) {
        int strikes = 0;
        for (const bool onwards : {false, true}) {
            const bool isEndless = error == EINTR && onwards; // waited for without end, as callers know
            for (int number = 1; !isEndless && Strike({target, number, error, onwards}); ++number) {
                ++strikes;
            }
        }
        return strikes;
    }

    const std::vector<std::string> roots{folder, applicationFolder, temporaryFolder, volume};
    /// Those of the process while no operation runs: the thread sanitizer has one of its own.
    const std::size_t threads = dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr ? 2 : 1;
    std::set<std::string> states; ///< seen
    int untold = 0;               ///< how often a fault struck and no bad_alloc came out
};

/// The lines of states.txt below the name of the operation.
std::set<std::string> AllowedStates(const std::string& operation) {
    std::ifstream file(fs::path(__FILE__).replace_filename("states.txt"));
    std::set<std::string> states;
    std::string line;
    while (std::getline(file, line) && line != operation) {
    }
    while (std::getline(file, line) && line.rfind(' ', 0) == 0) {
        states.insert(line.substr(line.find_first_not_of(' ')));
    }
    return states;
}

std::string CopyResult(const FaultTest& test) {
    CopyFileError error{};
    return CopyFile(test.In("a"), test.In("b"), false, &error) ? "true" : std::to_string(error);
}

std::string Told(bool result) { return result ? "true" : "false"; }

std::string PurgeResult(const FaultTest& /*test*/) {
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(false, [done] { done->set_value(); });
    return done->get_future().wait_for(10s) == std::future_status::ready ? "done" : "hangs";
}

// Folders hold one file or one folder, or are read in a known order: the states must not hang on the disk's order.
const Operation operations[] = {
    {"copy", [](const FaultTest& test) { test.Write(test.In("a")); }, CopyResult},
    {"copy over",
     [](const FaultTest& test) {
         test.Write(test.In("a"));
         test.Write(test.In("b"), "old");
     },
     CopyResult},
    {"copy folder",
     [](const FaultTest& test) {
         test.Write(test.In("from/a"));
         test.Write(test.In("from/sub/b"));
     },
     [](const FaultTest& test) { return CopyFolder(test.In("from"), test.In("to")), std::string("done"); }},
    {"rename", [](const FaultTest& test) { test.Write(test.In("a")); },
     [](const FaultTest& test) { return Rename(test.In("a"), test.In("b")), std::string("done"); }},
    {"rename onto a file on another volume",
     [](const FaultTest& test) {
         test.Write(test.In("a"));
         test.Write(test.volume + "/b", "old");
         test.SetVolumesApart();
     },
     [](const FaultTest& test) { return Rename(test.In("a"), test.volume + "/b"), std::string("done"); }},
    {"rename folder to another volume",
     [](const FaultTest& test) {
         test.Write(test.In("from/sub/b"));
         test.SetVolumesApart();
     },
     [](const FaultTest& test) { return Rename(test.In("from"), test.volume + "/to"), std::string("done"); }},
    {"delete folder", [](const FaultTest& test) { test.Write(test.In("tree/sub/b")); },
     [](const FaultTest& test) { return remove_dir_content(test.In("tree").c_str(), 0), std::string("done"); }},
    {"create folders", [](const FaultTest& /*test*/) {},
     [](const FaultTest& test) { return Told(CreateDirectories(test.In("x/y/z"))); }},
    {"temporary file", [](const FaultTest& test) { test.Write(test.temporary + "/tolvxtmp0.wav"); },
     [](const FaultTest& test) { return GetTempFilename("wav").substr(test.temporary.size() + 1); }},
    {"temporary name", [](const FaultTest& /*test*/) {},
     [](const FaultTest& test) { return GetTempFilenameNoCreate().substr(test.temporary.size() + 1); }},
    {"move to the trash",
     [](const FaultTest& test) {
         test.Trash("a");
         test.Write(test.In("a"), "new");
     },
     [](const FaultTest& test) { return DeleteFileToRecycleBin(test.In("a"), true), std::string("done"); }, 2},
    {"move folder to the trash", [](const FaultTest& test) { test.Write(test.In("from/sub/b")); },
     [](const FaultTest& test) {
         return DeleteFolderWithContents(test.In("from").c_str(), true, false), std::string("done");
     }},
    {"put back", [](const FaultTest& test) { test.Trash("a"); },
     [](const FaultTest& test) { return Told(PutBack(test.trash + "/a")); }, 2},
    {"database load and save",
     [](const FaultTest& test) {
         test.Trash("a");
         test.Trash("b");
     },
     [](const FaultTest& test) { return Told(CanPutBack(test.trash + "/a")); }, 4},
    {"purge",
     [](const FaultTest& test) {
         test.Trash("a");
         test.Trash("b");
         // The first entry gets the time 1, in the year 1601: behind version, count, and key with length and zero.
         const std::size_t place = 12 + test.trash.size() + 3;
         std::fstream(test.trash + "/.trash.db").seekp(static_cast<long>(place)).write("\1\0\0\0\0\0\0", 8);
         fs::create_directory(test.trash + "/empty");
     },
     PurgeResult, 0, false},
    {"purge a folder",
     [](const FaultTest& test) {
         test.Write(test.trash + "/a");
         test.Write(test.trash + "/sub/b");
     },
     [](const FaultTest& test) { return Told(CleanupTrashFolder(test.trash, true)); }},
};

TEST_P(FaultTest, LeavesNothingWorseThanAllowed) {
    Clear();
    GetParam().prepare(*this);
    Run(); // what is made once is made now
    RequireFreeLocks();
    AwaitThreads();

    int calls = 0;
    for (const int error : {ENOSPC, EIO, EACCES, EMFILE, ENOMEM, EINTR, 0}) {
        calls += StrikeEverywhere(Target::Calls, error);
    }
    untold = 0;
    const int allocations = GetParam().throwsBadAlloc ? StrikeEverywhere(Target::Allocations, ENOMEM) : 0;
    EXPECT_EQ(untold, GetParam().textsLoaded) << "swallowed";
    EXPECT_EQ(states, AllowedStates(GetParam().name));
    std::cout << GetParam().name << ": " << calls << " failed calls, " << allocations << " failed allocations, "
              << states.size() << " states\n";
    Clear();
    fs::remove_all(volume);
}

using CopyFaultTest = DiskTest;

TEST_F(CopyFaultTest, OnlyWhatDoesNoHarmIsSurvived) {
    const std::string source = MakeFile("a", content); // two pieces
    const std::string destination = MakeFile("b");
    constexpr std::pair<int, int> survivals[] = {
        {EIO, 1},   // closing the source
        {EINTR, 3}, // that, and both writes, which are repeated
        {0, 5},     // all calls that read or write, which move half
    };
    for (const auto& [error, expected] : survivals) {
        int survived = 0;
        bool hasStruck = true;
        for (int number = 1; hasStruck; ++number) {
            fs::remove(destination);
            Faults::Arm({Target::Calls, number, error, false});
            const bool copied = cp(destination.c_str(), source.c_str()) == 0;
            const int cause = errno;
            hasStruck = Faults::Disarm().hasStruck;
            survived += hasStruck && copied ? 1 : 0;
            EXPECT_TRUE(copied ? Content(destination) == content : cause == error) << error << " at " << number;
        }
        EXPECT_EQ(survived, expected) << "errno " << error;
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultTest, testing::ValuesIn(operations), [](const auto& tested) {
    std::string name = tested.param.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

} // namespace
