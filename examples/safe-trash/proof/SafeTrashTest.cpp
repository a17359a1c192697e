#include "examples/safe-trash/SafeTrash.h"
#include "tests/Faults/Faults.h"
#include "tests/Trash/TrashDatabase.h"
#include "tests/support/SafeFolder.h"
#include "tests/support/Tree.h"
#include <FrameworkBase/Trash/Trash.h>

#include <cerrno>
#include <csignal>
#include <functional>
#include <grp.h>
#include <gtest/gtest.h>
#include <iostream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>

// Every run is a process of its own, of an ordinary user, with files made for it. The library keeps records in memory
// that it could not save; the next run must not have them.

namespace {

namespace fs = std::filesystem;

fs::path sandbox; ///< in which every run makes its own "home" and "files"

struct SandboxEnvironment : testing::Environment {
    void SetUp() override {
        sandbox = MakeSafeFolder();
        fs::permissions(sandbox.parent_path(), fs::perms::all);
        fs::permissions(sandbox, fs::perms::all);
        setenv("HOME", (sandbox / "home").c_str(), 1);
    }
    void TearDown() override { fs::remove_all(sandbox.parent_path()); }
};
const auto* const environment = testing::AddGlobalTestEnvironment(new SandboxEnvironment); // NOLINT

/// What the file or the folder at `path` holds.
Tree At(const fs::path& path) {
    if (is_directory(symlink_status(path))) {
        return TreeOf(path);
    }
    std::ifstream file(path);
    return {{"", {std::istreambuf_iterator<char>(file), {}}}};
}

const Tree take{{"", "a take"}};
const Tree audio{{"bass.wav", "a bass"}, {"old/", ""}, {"old/x", "x"}, {"empty/", ""}};

std::string InFiles(const std::string& name) { return sandbox / "files" / name; }

void MakeFiles() { MakeTree(sandbox / "files", {{"take.wav", "a take"}, {"other/take.wav", "another"}}); }
void MakeFolders() { MakeTree(sandbox / "files/Audio", audio); }

/// Begins with an empty home folder, an empty trash, and the files and folders.
void MakeWorld() {
    fs::remove_all(sandbox / "home");
    fs::remove_all(sandbox / "files");
    fs::create_directory(sandbox / "home");
    MakeFiles();
    MakeFolders();
}

void BecomeOrdinaryUser() {
    constexpr uid_t ordinaryUser = 65534;
    if (geteuid() == 0) {
        ASSERT_EQ(setgroups(0, nullptr), 0);
        ASSERT_EQ(setgid(ordinaryUser), 0);
        ASSERT_EQ(setuid(ordinaryUser), 0);
    }
}

enum Verdict : int { AsExpected, Unexpected, NotStruck, Killed };

/// Runs `run` in a process of its own.
Verdict InProcess(const std::function<Verdict()>& run) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr unsigned int secondsUntilItHangs = 30;
        alarm(secondsUntilItHangs);
        Verdict verdict = Unexpected;
        try {
            verdict = run();
        } catch (const std::exception& exception) {
            ADD_FAILURE() << exception.what();
        }
        std::cout.flush();
        _exit(testing::Test::HasFailure() ? Unexpected : verdict);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    if (WIFSIGNALED(status)) {
        return WTERMSIG(status) == SIGKILL ? Killed : Unexpected;
    }
    return static_cast<Verdict>(WEXITSTATUS(status));
}

struct Case {
    const char* name;
    const char* item; ///< in "files"
    Tree whole;
    bool isPutBack;

    friend void PrintTo(const Case& tested, std::ostream* out) { *out << tested.name; }
};

const Case cases[] = {{"PutFile", "take.wav", take, false},
                      {"PutFolder", "Audio", audio, false},
                      {"PutBackFile", "take.wav", take, true},
                      {"PutBackFolder", "Audio", audio, true}};

class SafeTrashTest : public testing::TestWithParam<Case> {
protected:
    /// Puts the item, or puts it back, with the fault. Another item of its name is in the trash already.
    static Verdict Strike(const Faults::Fault& fault) {
        SCOPED_TRACE("errno " + std::to_string(fault.error) + " at call " + std::to_string(fault.number));
        BecomeOrdinaryUser();
        MakeWorld();
        const Case& tested = GetParam();
        const std::string other = SafeTrash::Put(InFiles("other/take.wav")).path;
        const std::string before = tested.isPutBack ? SafeTrash::Put(InFiles(tested.item)).path : InFiles(tested.item);
        SafeTrash::Report report;
        const auto run = [&] { report = tested.isPutBack ? SafeTrash::PutBack(before) : SafeTrash::Put(before); };
        const Faults::Outcome outcome = Faults::Strike(fault, run);
        EXPECT_EQ(At(report.path), tested.whole) << report.path;
        EXPECT_EQ(At(other), (Tree{{"", "another"}}));
        EXPECT_TRUE(report.isDone || !report.message.empty());
        EXPECT_TRUE(report.isDone || fault.onwards || report.path == before) << report.path;
        if (outcome.hasStruck) {
            return AsExpected;
        }
        EXPECT_TRUE(report.isDone);
        EXPECT_FALSE(fs::exists(before));
        return NotStruck;
    }

    static bool IsWholeSomewhere() {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(sandbox)) {
            if (At(entry.path()) == GetParam().whole) {
                return true;
            }
        }
        return false;
    }
};

/// Lets each call of a run fail, alone and with all that follow, and kills the process in its place. Prints how often.
void StrikeEveryCall(const char* name, const std::function<Verdict(const Faults::Fault&)>& strike,
                     const std::function<bool()>& isWholeAfterwards) {
    int calls = 0;
    int losses = 0;
    for (const int error : {ENOSPC, EIO, EXDEV, EMFILE, 0, Faults::killed}) {
        for (const bool onwards : {false, true}) {
            Verdict verdict = AsExpected;
            for (int number = 1; verdict != NotStruck; ++number) {
                verdict = InProcess([&] { return strike({number, error, onwards}); });
                calls += verdict == NotStruck ? 0 : 1;
                losses += verdict == Unexpected || !isWholeAfterwards() ? 1 : 0;
            }
        }
    }
    EXPECT_EQ(losses, 0);
    std::cout << name << ": " << calls << " failing calls, " << losses << " losses\n";
}

TEST_P(SafeTrashTest, KeepsTheItemWholeWhicheverCallFails) {
    StrikeEveryCall(GetParam().name, Strike, IsWholeSomewhere);
}

INSTANTIATE_TEST_SUITE_P(SafeTrash, SafeTrashTest, testing::ValuesIn(cases),
                         [](const auto& tested) { return tested.param.name; });

Verdict StrikePurge(const Faults::Fault& fault) {
    BecomeOrdinaryUser();
    MakeWorld();
    const std::string due = SafeTrash::Put(InFiles("other/take.wav")).path;
    const std::string fresh = SafeTrash::Put(InFiles("take.wav")).path;
    const std::string folder = SafeTrash::Put(InFiles("Audio")).path;
    const Entries entries = {{due, {1, "/o"}}, {fresh, {Now(), InFiles("take.wav")}}, {folder, {1, "/o"}}};
    std::ofstream(Tolvex::FileNames::GetTrashFolderPath() + "/.trash.db") << DatabaseBytes(entries);
    SafeTrash::Report report;
    const Faults::Outcome outcome = Faults::Strike(fault, [&] { report = SafeTrash::Purge(false); });
    EXPECT_EQ(At(fresh), take);
    EXPECT_EQ(At(folder), audio);
    EXPECT_TRUE(outcome.hasStruck || !fs::exists(due)) << report.message;
    return outcome.hasStruck ? AsExpected : NotStruck;
}

TEST(SafeTrashPurgeTest, KeepsWhatIsNotDueWhicheverCallFails) {
    StrikeEveryCall("Purge", StrikePurge, [] {
        const fs::path trash = sandbox / "home/Library/Application Support/Tolvex Studio 10/Trash";
        return At(trash / "take1.wav") == take && At(trash / "Audio") == audio;
    });
}

struct Trouble {
    const char* name;
    bool needsRoot;
    void (*begin)();

    friend void PrintTo(const Trouble& trouble, std::ostream* out) { *out << trouble.name; }
};

std::string TrashFolder() { return Tolvex::FileNames::GetTrashFolderPath(); }

void MountAnotherVolume() { ASSERT_EQ(mount("none", InFiles("").c_str(), "tmpfs", 0, "mode=777"), 0); }
void MountTheSameDisk() { ASSERT_EQ(mount(InFiles("").c_str(), InFiles("").c_str(), nullptr, MS_BIND, nullptr), 0); }
void ForbidWriting() { fs::permissions(TrashFolder(), fs::perms::owner_read | fs::perms::owner_exec); }

void ReplaceTheTrashByAFile() {
    fs::rename(TrashFolder(), sandbox / "home/aside");
    std::ofstream(TrashFolder()) << "a file";
}

void FillTheDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, 0};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
}

const Trouble troubles[] = {{"FilesAreOnAnotherVolume", true, MountAnotherVolume},
                            {"FilesAreOnAnotherMountOfTheSameDisk", true, MountTheSameDisk},
                            {"TrashMayNotBeWritten", false, ForbidWriting},
                            {"TrashIsAFile", false, ReplaceTheTrashByAFile},
                            {"DiskIsFull", false, FillTheDisk}};

class SafeTrashTroubleTest : public testing::TestWithParam<Trouble> {};

Verdict PutFolder() {
    BecomeOrdinaryUser();
    MakeWorld();
    EXPECT_TRUE(SafeTrash::Put(InFiles("Audio")).isDone);
    return AsExpected;
}

Verdict PutFileAndPutFolderBack(const Trouble& trouble) {
    BecomeOrdinaryUser();
    MakeFiles();
    if (!trouble.needsRoot) {
        trouble.begin();
    }
    const SafeTrash::Report put = SafeTrash::Put(InFiles("take.wav"));
    EXPECT_FALSE(put.isDone);
    EXPECT_NE(put.message, "");
    EXPECT_EQ(put.path, InFiles("take.wav"));
    EXPECT_EQ(At(put.path), take);
    if (fs::is_directory(TrashFolder())) {
        const SafeTrash::Report back = SafeTrash::PutBack(TrashFolder() + "/Audio");
        EXPECT_EQ(At(back.path), audio) << back.message;
        fs::permissions(TrashFolder(), fs::perms::owner_all);
    }
    return AsExpected;
}

TEST_P(SafeTrashTroubleTest, IsReportedAndLeavesEveryItemWhole) {
    if (GetParam().needsRoot && geteuid() != 0) {
        GTEST_SKIP() << "only root can mount volumes";
    }
    ASSERT_EQ(InProcess(PutFolder), AsExpected);
    const Verdict verdict = InProcess([] {
        if (GetParam().needsRoot) {
            EXPECT_EQ(unshare(CLONE_NEWNS), 0);
            EXPECT_EQ(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
            GetParam().begin();
        }
        return InProcess([] { return PutFileAndPutFolderBack(GetParam()); });
    });
    EXPECT_EQ(verdict, AsExpected);
}

INSTANTIATE_TEST_SUITE_P(SafeTrash, SafeTrashTroubleTest, testing::ValuesIn(troubles),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
