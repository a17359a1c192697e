#include "FrameworkBase/FileNames/FileOperations.h"
#include "FrameworkBase/FileNames/KnownFolders.h"
#include "FrameworkBase/Trash/Trash.h"
#include "FrameworkBase/Trash/TrashCleanup.h"
#include "tests/Faults/Faults.h"
#include "tests/support/DiskTest.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <iostream>
#include <iterator>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <thread>

// Each operation that changes the disk runs again and again, each time with another call to the system, or another
// allocation, failing, until it gets through without meeting the fault. states.txt beside this file lists the states
// that the disk may be left in: all of them occur, and no other.

namespace {

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;
using namespace std::chrono_literals;

const std::string content(5000, 'x'); // more than the library copies at once

std::size_t CountEntries(const char* folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

/// What the file system of `path` lies on.
dev_t Device(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_dev;
}

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

/// Removes a text of a database record and `more` bytes from the front of `file`. Whether they were there.
bool Skip(std::string_view& file, std::size_t more) {
    int length = 0;
    std::memcpy(&length, file.data(), std::min(file.size(), sizeof length));
    const std::size_t size = sizeof length + static_cast<std::size_t>(length) + more;
    const bool isThere = size <= file.size();
    file.remove_prefix(isThere ? size : 0);
    return isThere;
}

std::string DescribeDatabase(std::string_view file) {
    int count = 0;
    if (file.size() < 2 * sizeof count) {
        return file.empty() ? "(empty)" : "(part)";
    }
    std::memcpy(&count, file.data() + sizeof count, sizeof count);
    file.remove_prefix(2 * sizeof count);
    int whole = 0;
    while (Skip(file, sizeof(long long)) && Skip(file, 0)) {
        ++whole;
    }
    return "(" + std::to_string(whole) + " of " + std::to_string(count) + ")";
}

std::string DescribeFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (path.filename() == ".trash.db") {
        return DescribeDatabase(text);
    }
    if (text == content || text.empty()) {
        return text.empty() ? "(empty)" : "";
    }
    return content.compare(0, text.size(), text) == 0 ? "(part)" : "(" + text + ")";
}

struct Operation {
    std::string name;
    std::function<void()> prepare;
    std::function<std::string()> run; ///< its result, in a few characters
    int textsLoaded = 0;              ///< texts of a database: a failed allocation for one empties it and is not told
    bool allocates = true;            ///< on this thread alone, where bad_alloc comes out
};

class FaultTest : public DiskTest {
protected:
    FaultTest() {
        for (const char* candidate : {"/dev/shm", "/var/tmp"}) {
            if (!hasOtherVolume && fs::exists(candidate) && Device(candidate) != Device(folder)) {
                volume = candidate;
                hasOtherVolume = true;
            }
        }
        volume += "/faults-XXXXXX";
        EXPECT_NE(mkdtemp(volume.data()), nullptr);
        roots = {folder, volume, temporaryFolder, applicationFolder};
    }

    void Clear() const {
        for (const std::string& root : roots) {
            fs::remove_all(root);
            fs::create_directory(root);
        }
        Faults::SetVolumesApart(false);
    }

    static void Write(const std::string& path, const std::string& text = content) { std::ofstream(path) << text; }

    static void WriteTree(const std::string& root) {
        fs::create_directories(root + "/sub");
        Write(root + "/sub/b");
    }

    /// Moves a new file of that name to the trash.
    std::string Trash(const std::string& name) const {
        Write(Path(name));
        DeleteFileToRecycleBin(Path(name), true);
        return trash + '/' + name;
    }

    /// Shifts the time of the first item in the trash database.
    void MakeFirstOlder(int days) const {
        const std::string database = Content(trash + "/.trash.db");
        int length = 0;
        std::memcpy(&length, database.data() + 8, sizeof length);
        long long added = 0;
        const auto place = 12 + static_cast<std::size_t>(length);
        std::memcpy(&added, database.data() + place, sizeof added);
        added -= days * 864'000'000'000;
        std::fstream(trash + "/.trash.db")
            .seekp(static_cast<std::streamoff>(place))
            .write(reinterpret_cast<const char*>(&added), sizeof added);
    }

    std::string DescribeDisk() const {
        std::set<std::string> names;
        for (const std::string& root : roots) {
            for (const auto& entry : fs::recursive_directory_iterator(root)) {
                const std::string name = entry.path().lexically_relative(root).string();
                names.insert(entry.is_symlink()     ? name + "@"
                             : entry.is_directory() ? name + "/"
                                                    : name + DescribeFile(entry.path()));
            }
        }
        std::string description;
        for (const std::string& name : names) {
            description += name + ' ';
        }
        return description;
    }

    /// Has another thread load and save the database, and with that empty the map of what a failure left there.
    static void RequireFreeLocks() {
        auto loadAndSave = std::async(std::launch::async, [] { return CanPutBack("nothing"); });
        if (loadAndSave.wait_for(10s) != std::future_status::ready) {
            std::cerr << "a lock is still held" << std::endl;
            std::abort(); // nobody can end that thread
        }
    }

    struct Result {
        bool hasStruck = false;
        bool hasThrown = false;
        std::string state;
    };

    Result Run(const Operation& operation, const Faults::Fault& fault) const {
        Clear();
        operation.prepare();
        const std::size_t descriptors = CountEntries("/proc/self/fd");
        const std::size_t threads = CountEntries("/proc/self/task");
        Result result;
        std::string returned;
        Faults::Arm(fault);
        try {
            returned = operation.run();
        } catch (const std::bad_alloc&) {
            result.hasThrown = true;
            returned = "bad_alloc";
        } catch (const std::system_error&) {
            returned = "system_error";
        } catch (const std::exception&) {
            returned = "exception";
        }
        const Faults::Outcome outcome = Faults::Disarm();
        for (int i = 0; i < 10000 && CountEntries("/proc/self/task") > threads; ++i) {
            std::this_thread::sleep_for(1ms);
        }
        const std::ptrdiff_t leftByOperation = Faults::AllocationsLeft();
        // A database that cannot be written whole keeps its stream.
        EXPECT_LE(outcome.streamsLeftOpen, outcome.hasStruckWriting ? 1U : 0U);
        result.hasStruck = outcome.hasStruck;
        result.state = DescribeDisk() + "-> " + returned;

        fs::create_directory(trash);
        Faults::Arm({});
        RequireFreeLocks();
        Faults::Disarm();
        EXPECT_EQ(leftByOperation + Faults::AllocationsLeft(), 0) << "memory lost";
        EXPECT_EQ(CountEntries("/proc/self/fd"), descriptors) << "descriptors lost";
        return result;
    }

    /// Lets the fault strike the first call, then the second and so on. How often it struck and nothing was thrown.
    int StrikeEach(const Operation& operation, Faults::Fault fault) {
        int returned = 0;
        for (Result result{true, false, ""}; result.hasStruck;) {
            ++fault.number;
            SCOPED_TRACE(std::string(std::strerror(fault.error)) + " at number " + std::to_string(fault.number));
            result = Run(operation, fault);
            states.insert(result.state);
            struck += result.hasStruck ? 1 : 0;
            returned += result.hasStruck && !result.hasThrown ? 1 : 0;
        }
        return returned;
    }

    void Check(const Operation& operation) {
        fs::create_directory(applicationFolder);
        Clear();
        operation.prepare();
        operation.run(); // what is made once is made now
        RequireFreeLocks();
        for (const bool onwards : {false, true}) {
            for (const int error : {ENOSPC, EIO, EACCES, EMFILE, ENOMEM, EINTR, 0}) {
                if (error != EINTR || !onwards) { // an endless interruption is waited for without end
                    StrikeEach(operation, {Faults::Target::Calls, 0, error, onwards});
                }
            }
        }
        const int calls = struck;
        if (operation.allocates) {
            EXPECT_EQ(StrikeEach(operation, {Faults::Target::Allocations, 0, ENOMEM, false}), operation.textsLoaded);
            StrikeEach(operation, {Faults::Target::Allocations, 0, ENOMEM, true});
        }
        EXPECT_EQ(states, AllowedStates(operation.name));
        std::cout << operation.name << ": " << calls << " failed calls, " << struck - calls << " failed allocations, "
                  << states.size() << " states\n";
        for (const std::string& state : states) {
            std::cout << "    " << state << '\n';
        }
        Clear();
        fs::remove_all(volume);
    }

    const std::string trash = applicationFolder + "/Trash";
    std::string volume = fs::path(folder).parent_path(); ///< a folder on another file system than `folder`...
    bool hasOtherVolume = false;                         ///< ...if there is one
    std::vector<std::string> roots;
    std::set<std::string> states; ///< seen
    int struck = 0;
};

std::string CopyResult(const std::string& from, const std::string& to) {
    CopyFileError error{};
    return CopyFile(from, to, false, &error) ? "true" : std::to_string(error);
}

TEST_F(FaultTest, Copy) {
    Check({"copy", [&] { Write(Path("a")); }, [&] { return CopyResult(Path("a"), Path("b")); }});
}

TEST_F(FaultTest, CopyOver) {
    const auto prepare = [&] {
        Write(Path("a"));
        Write(Path("b"), "old");
    };
    Check({"copy over", prepare, [&] { return CopyResult(Path("a"), Path("b")); }});
}

TEST_F(FaultTest, CopyFolder) {
    const auto run = [&] {
        Tolvex::FileNames::CopyFolder(Path("from"), Path("to"));
        return "done";
    };
    const auto prepare = [&] {
        WriteTree(Path("from"));
        Write(Path("from/a"));
    };
    Check({"copy folder", prepare, run});
}

TEST_F(FaultTest, Rename) {
    const auto run = [&] {
        Tolvex::FileNames::Rename(Path("a"), Path("b"));
        return "done";
    };
    Check({"rename", [&] { Write(Path("a")); }, run});
}

TEST_F(FaultTest, RenameToOtherVolume) {
    const auto run = [&] {
        Tolvex::FileNames::Rename(Path("a"), volume + "/b");
        return "done";
    };
    const auto prepare = [&] {
        Write(Path("a"));
        Write(volume + "/b", "old");
        Faults::SetVolumesApart(!hasOtherVolume);
    };
    Check({"rename onto a file on another volume", prepare, run});
}

TEST_F(FaultTest, RenameFolderToOtherVolume) {
    const auto run = [&] {
        Tolvex::FileNames::Rename(Path("from"), volume + "/to");
        return "done";
    };
    const auto prepare = [&] {
        WriteTree(Path("from"));
        Faults::SetVolumesApart(!hasOtherVolume);
    };
    Check({"rename folder to another volume", prepare, run});
}

TEST_F(FaultTest, DeleteFolder) {
    const auto run = [&] {
        remove_dir_content(Path("tree").c_str(), 0);
        return "done";
    };
    Check({"delete folder", [&] { WriteTree(Path("tree")); }, run});
}

TEST_F(FaultTest, CreateFolders) {
    Check({"create folders", [] {}, [&] { return CreateDirectories(Path("x/y/z")) ? "true" : "false"; }});
}

TEST_F(FaultTest, TemporaryFile) {
    const auto run = [&] { return GetTempFilename("wav").substr(temporaryFolder.size() + 1); };
    Check({"temporary file", [&] { Write(temporaryFolder + "/tolvxtmp0.wav"); }, run});
}

TEST_F(FaultTest, TemporaryName) {
    const auto run = [&] { return GetTempFilenameNoCreate().substr(temporaryFolder.size() + 1); };
    Check({"temporary name", [] {}, run});
}

TEST_F(FaultTest, MoveToTrash) {
    const auto prepare = [&] {
        Trash("a");
        Write(Path("a"), "new");
    };
    const auto run = [&] {
        DeleteFileToRecycleBin(Path("a"), true);
        return "done";
    };
    Check({"move to the trash", prepare, run, 2});
}

TEST_F(FaultTest, MoveFolderToTrash) {
    const auto run = [&] {
        DeleteFolderWithContents(Path("from").c_str(), true, false);
        return "done";
    };
    Check({"move folder to the trash", [&] { WriteTree(Path("from")); }, run});
}

TEST_F(FaultTest, PutBack) {
    const auto run = [&] { return Tolvex::FileNames::PutBack(trash + "/a") ? "true" : "false"; };
    Check({"put back", [&] { Trash("a"); }, run, 2});
}

TEST_F(FaultTest, LoadAndSave) {
    const auto prepare = [&] {
        Trash("a");
        Trash("b");
    };
    Check({"database load and save", prepare, [&] { return CanPutBack(trash + "/a") ? "true" : "false"; }, 4});
}

TEST_F(FaultTest, Purge) {
    const auto prepare = [&] {
        Trash("a");
        MakeFirstOlder(31);
        Trash("b");
        fs::create_directory(trash + "/empty");
    };
    const auto run = [] {
        std::promise<void> done;
        CleanupTrashFolder(false, [&done] { done.set_value(); });
        return done.get_future().wait_for(10s) == std::future_status::ready ? "done" : "hangs";
    };
    Check({"purge", prepare, run, 0, false});
}

TEST_F(FaultTest, PurgeFolder) {
    const auto prepare = [&] {
        WriteTree(trash);
        Write(trash + "/a");
    };
    const auto run = [&] { return CleanupTrashFolder(trash, true) ? "true" : "false"; };
    Check({"purge a folder", prepare, run});
}

} // namespace
