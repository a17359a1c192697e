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
using namespace std::string_literals;

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
    const char* file;   ///< an item that is in the trash already
    const char* folder; ///< another

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
        MakeTree(sandbox / "files/other", {{tested.file, "another"}, {tested.folder + "/bass.wav"s, "another"}});
        std::ofstream(sandbox / "files/take.wav") << "a take";
        file = SafeTrash::Put(sandbox / "files/other" / tested.file).path;
        folder = SafeTrash::Put(sandbox / "files/other" / tested.folder).path;
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
        EXPECT_EQ(OriginOf(file), sandbox / "files/other" / tested.file);
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

/// Lets `run` happen in a process of its own, as an ordinary user.
Verdict InProcess(const std::function<Verdict()>& run) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr unsigned int hangs = 30;
        alarm(hangs);
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(ordinaryUser) != 0 || setuid(ordinaryUser) != 0)) {
            _exit(Unexpected);
        }
        const Verdict verdict = run();
        std::cout.flush();
        _exit(testing::Test::HasFailure() ? Unexpected : verdict);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? static_cast<Verdict>(WEXITSTATUS(status)) : Unexpected;
}

class SafeTrashFaultTest : public testing::TestWithParam<Case> {};

Verdict Strike(const Case& tested, const Faults::Fault& fault) {
    SCOPED_TRACE("errno " + std::to_string(fault.error) + " at call " + std::to_string(fault.number));
    const World world(tested);
    SafeTrash::Report report;
    const Faults::Outcome outcome = Faults::Strike(fault, [&] { report = world.Run(); });
    world.ExpectAllWhole(report.path);
    if (report.isDone) {
        EXPECT_NE(report.path, world.before);
    } else {
        EXPECT_NE(report.message, "");
    }
    if (!report.isDone && !fault.onwards) {
        EXPECT_EQ(report.path, world.before);
    }
    return outcome.hasStruck ? AsExpected : NotStruck;
}

TEST_P(SafeTrashFaultTest, KeepsEveryItemWholeWhicheverCallFails) {
    int calls = 0;
    int losses = 0;
    for (const int error : {ENOSPC, EIO, EXDEV, EMFILE, 0}) {
        for (const bool onwards : {false, true}) {
            Verdict verdict = AsExpected;
            for (int number = 1; verdict != NotStruck; ++number) {
                verdict = InProcess([&] { return Strike(GetParam(), {number, error, onwards, false}); });
                calls += verdict == NotStruck ? 0 : 1;
                losses += verdict == Unexpected ? 1 : 0;
                ASSERT_LT(number, 2000);
            }
        }
    }
    EXPECT_EQ(losses, 0);
    std::cout << GetParam().name << ": " << calls << " failing calls, " << losses << " losses\n";
}

INSTANTIATE_TEST_SUITE_P(Cases, SafeTrashFaultTest, testing::ValuesIn(cases),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
