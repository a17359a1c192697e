#include "examples/safe-trash/SafeTrash.h"
#include "tests/Faults/Faults.h"
#include "tests/support/Tree.h"
#include <FrameworkBase/Trash/Trash.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <functional>
#include <grp.h>
#include <gtest/gtest.h>
#include <iostream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// Every run is a process of its own, of an ordinary user, with files made for it. The library keeps records in memory
// that it could not save; the next run must not have them.

namespace {

namespace fs = std::filesystem;

constexpr uid_t ordinaryUser = 65534;

/// A folder for this process, in which every run makes its own "home" and "files".
fs::path sandbox;

struct SandboxEnvironment : testing::Environment {
    void SetUp() override {
        std::string path = fs::temp_directory_path() / "safe-trash-XXXXXX";
        ASSERT_NE(mkdtemp(path.data()), nullptr);
        sandbox = path;
        fs::permissions(sandbox, fs::perms::all);
        setenv("HOME", (sandbox / "home").c_str(), 1);
    }
    void TearDown() override { fs::remove_all(sandbox); }
};
const auto* const environment = testing::AddGlobalTestEnvironment(new SandboxEnvironment); // NOLINT

/// The text of the file at `path`, or what the folder holds; nothing if there is nothing.
Tree At(const fs::path& path) {
    if (is_directory(symlink_status(path))) {
        return TreeOf(path);
    }
    std::ifstream file(path);
    return file.is_open() ? Tree{{"", {std::istreambuf_iterator<char>(file), {}}}} : Tree{};
}

const Tree take{{"", "a take"}};
const Tree audio{{"bass.wav", "a bass"}, {"old/", ""}, {"old/x", "x"}, {"empty/", ""}};
const Tree otherFile{{"", "another"}};
const Tree otherFolder{{"bass.wav", "another"}};

/// What is done with which item.
struct Case {
    const char* name;
    bool isPutBack;
    const char* item; ///< its path in "files", before it is put into the trash
    Tree whole;
    const char* file;   ///< a file that is in the trash already, unrecorded
    const char* folder; ///< a recorded folder

    friend void PrintTo(const Case& tested, std::ostream* out) { *out << tested.name; }
};

const Case cases[] = {{"PutFile", false, "take.wav", take, "a", "b"},
                      {"PutFolder", false, "Audio", audio, "a", "b"},
                      {"PutFileWithATakenName", false, "take.wav", take, "take.wav", "take1.wav"},
                      {"PutFolderWithATakenName", false, "Audio", audio, "Audio", "Audio1"},
                      {"PutBackFile", true, "take.wav", take, "a", "b"},
                      {"PutBackFolder", true, "Audio", audio, "a", "b"},
                      {"PutBackEmptyFolder", true, "Audio/empty", {}, "a", "b"}};

/// The files of one run, which are made anew.
class World {
public:
    explicit World(const Case& run) : tested(run), old(sandbox / "files" / run.item), before(old) {
        fs::remove_all(sandbox / "home");
        fs::remove_all(sandbox / "files");
        fs::create_directory(sandbox / "home");
        MakeTree(sandbox / "files/Audio", audio);
        MakeTree(sandbox / "files/other" / tested.folder, otherFolder);
        std::ofstream(sandbox / "files/take.wav") << "a take";
        folder = SafeTrash::Put(sandbox / "files/other" / tested.folder).path;
        file = Tolvex::FileNames::GetTrashFolderPath() + '/' + tested.file;
        std::ofstream(file) << "another";
        if (tested.isPutBack) {
            before = SafeTrash::Put(old).path;
        }
    }

    SafeTrash::Report Run() const { return tested.isPutBack ? SafeTrash::PutBack(before) : SafeTrash::Put(before); }

    /// Expects the item whole at `where`, and the others in the trash, with their origins.
    void ExpectAllWhole(const std::string& where) const {
        EXPECT_EQ(At(where), tested.whole) << where;
        EXPECT_TRUE(fs::exists(fs::symlink_status(where))) << where;
        EXPECT_EQ(At(file), otherFile);
        EXPECT_EQ(At(folder), otherFolder);
        EXPECT_EQ(OriginOf(file), "");
        EXPECT_EQ(OriginOf(folder), sandbox / "files/other" / tested.folder);
    }

    static std::string OriginOf(const std::string& path) {
        const SafeTrash::Contents trash = SafeTrash::List();
        EXPECT_EQ(trash.message, "");
        for (const SafeTrash::Item& item : trash.items) {
            if (item.path == path) {
                return item.origin;
            }
        }
        return "not in the trash";
    }

    const Case& tested;
    const std::string old;
    std::string before;
    std::string file;
    std::string folder;
};

enum Verdict : int { AsExpected, Unexpected, NotStruck };

void BecomeOrdinaryUser() {
    if (geteuid() == 0) {
        ASSERT_EQ(setgroups(0, nullptr), 0);
        ASSERT_EQ(setgid(ordinaryUser), 0);
        ASSERT_EQ(setuid(ordinaryUser), 0);
    }
}

/// Lets `run` happen in a process of its own, which becomes an ordinary user by itself.
Verdict InProcess(const std::function<Verdict()>& run) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr unsigned int secondsUntilItHangs = 30;
        alarm(secondsUntilItHangs);
        const Verdict verdict = run();
        std::cout.flush();
        _exit(testing::Test::HasFailure() ? Unexpected : verdict);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? static_cast<Verdict>(WEXITSTATUS(status)) : Unexpected;
}

/// Lets each call that a run makes fail, alone and with all that follow, and prints how many there were.
void StrikeEveryCall(const std::string& name, const std::function<Verdict(const Faults::Fault&)>& strike) {
    constexpr int moreThanAllCalls = 2000;
    int calls = 0;
    int losses = 0;
    for (const int error : {ENOSPC, EIO, EXDEV, EMFILE, 0}) {
        for (const bool onwards : {false, true}) {
            Verdict verdict = AsExpected;
            for (int number = 1; verdict != NotStruck && number < moreThanAllCalls; ++number) {
                verdict = InProcess([&] {
                    SCOPED_TRACE("errno " + std::to_string(error) + " at call " + std::to_string(number));
                    BecomeOrdinaryUser();
                    return strike({number, error, onwards, false});
                });
                calls += verdict == NotStruck ? 0 : 1;
                losses += verdict == Unexpected ? 1 : 0;
            }
            EXPECT_EQ(verdict, NotStruck);
        }
    }
    EXPECT_EQ(losses, 0);
    std::cout << name << ": " << calls << " failing calls, " << losses << " losses\n";
}

class SafeTrashFaultTest : public testing::TestWithParam<Case> {};

TEST_P(SafeTrashFaultTest, KeepsEveryItemWholeWhicheverCallFails) {
    StrikeEveryCall(GetParam().name, [](const Faults::Fault& fault) {
        const World world(GetParam());
        SafeTrash::Report report;
        const Faults::Outcome outcome = Faults::Strike(fault, [&] { report = world.Run(); });
        world.ExpectAllWhole(report.path);
        if (!report.isDone) {
            EXPECT_NE(report.message, "");
        }
        if (!report.isDone && !fault.onwards) {
            EXPECT_EQ(report.path, world.before);
        }
        if (outcome.hasStruck) {
            return AsExpected;
        }
        EXPECT_TRUE(report.isDone);
        EXPECT_FALSE(fs::exists(world.before));
        EXPECT_EQ(SafeTrash::List().items.size(), GetParam().isPutBack ? 2 : 3);
        return NotStruck;
    });
}

INSTANTIATE_TEST_SUITE_P(Cases, SafeTrashFaultTest, testing::ValuesIn(cases),
                         [](const auto& tested) { return tested.param.name; });

/// Makes the record of the first item in the trash that of one that arrived in 1601.
void LetItExpire(const std::string& path) {
    std::fstream database(Tolvex::FileNames::GetTrashFolderPath() + "/.trash.db");
    const auto place = static_cast<long>(12 + path.size() + 1); // version, count, and the key with length and zero
    database.seekp(place).write("\1\0\0\0\0\0\0", 8);
}

TEST(SafeTrashPurgeTest, KeepsEveryItemThatIsNotDueWhicheverCallFails) {
    StrikeEveryCall("Purge", [](const Faults::Fault& fault) {
        World world({"", true, "Audio", audio, "b", "c"});
        const std::string expired = SafeTrash::Put(sandbox / "files/Audio/.." / "take.wav").path;
        std::ofstream(sandbox / "files/a") << "old";
        const std::string due = SafeTrash::Put(sandbox / "files/a").path;
        return NotStruck;
    });
}

} // namespace
