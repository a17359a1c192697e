#include "tests/Faults/Faults.h"
#include "tests/Trash/TrashDatabase.h"
#include "tests/support/DiskTest.h"
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include <cerrno>
#include <future>
#include <gmock/gmock.h>
#include <iostream>

// Each operation that changes the disk runs again and again, each time with another call to the system failing, until
// it gets through without meeting the fault. Nothing may be lost but what is named.

namespace {

using namespace Tolvex::FileNames;

struct Operation {
    const char* name;
    Tree before; ///< with the names of recordings as contents
    void (*prepare)();
    bool (*run)();                 ///< returns whether it reports success
    std::vector<std::string> kept; ///< the recordings that no failing call may cost
    Tree after;                    ///< what success leaves in the folder
    Tree trash;                    ///< and in the trash, where each item is recorded

    friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};

/// A recording is longer than the blocks of a copy and repeats itself nowhere.
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

std::string In(const char* name) { return std::filesystem::absolute(name); }
std::string InTrash(const char* name) { return GetTrashFolderPath() + '/' + name; }

void Nothing() {}
void SetVolumesApart() { Faults::answers.volumesApart = true; }
void DeleteA() { DeleteFileToRecycleBin(In("a"), true); }
void DeleteB() { DeleteFileToRecycleBin(In("b"), true); }
void CopyFolderV() { CopyFolder(In("v"), In("w")); }
void RenameFile() { Rename(In("a"), In("v/b")); }
void RenameFolder() { Rename(In("v"), In("w")); }
void PutBackA() { PutBack(InTrash("a")); }

bool CopyAOverB() { return CopyFile(In("a"), In("b"), false, nullptr); }
bool RemoveA() { return DeleteFileA(In("a").c_str()) == 0; }
bool CreateXAndY() { return CreateDirectories(In("x/y")); }
bool CreateTemporary() { return GetTempFilename("w") == In("tolvxtmp1.w"); }
bool NameTemporary() { return GetTempFilenameNoCreate() == In("tolvxtmp1.fld"); }

template <auto operation>
bool RunWithoutReport() {
    operation();
    return false;
}

void DeleteAndAge() {
    DeleteA();
    DeleteB();
    const std::string file = InTrash(".trash.db");
    Entries entries = EntriesIn(Content(file));
    entries[InTrash("a")].first = 1;
    std::ofstream(file, std::ios::binary) << DatabaseBytes(entries);
}

void Purge() {
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(false, [done] { done->set_value(); });
    EXPECT_EQ(done->get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

const Tree two = {{"a", "a"}, {"b", "b"}};
const Tree folderV = {{"v/", ""}, {"v/s/", ""}, {"v/s/b", "b"}};
const Tree folderW = {{"w/", ""}, {"w/s/", ""}, {"w/s/b", "b"}};
const Tree foldersVAndW = {{"v/", ""}, {"v/s/", ""}, {"v/s/b", "b"}, {"w/", ""}, {"w/s/", ""}, {"w/s/b", "b"}};
const Tree copiedBack = {{"a", "b"}, {"v/", ""}, {"v/b", "b"}};
const Tree folders = {{"a", "a"}, {"x/", ""}, {"x/y/", ""}};
const Tree temporary = {{"tolvxtmp0.w", "a"}, {"tolvxtmp1.w", ""}};
const Tree named = {{"tolvxtmp0.fld", "a"}};

// Name, before, preparation, operation; what is kept, what success leaves in the folder and in the trash.
const Operation operations[] = {
    {"CopyFile", two, Nothing, CopyAOverB, {"a"}, {{"a", "a"}, {"b", "a"}}, {}},
    {"CopyFolder", folderV, Nothing, RunWithoutReport<CopyFolderV>, {"b"}, foldersVAndW, {}},
    {"RenameFile", {{"a", "a"}, {"v/b", "b"}}, SetVolumesApart, RunWithoutReport<RenameFile>, {"b"}, copiedBack, {}},
    {"RenameFolder", folderV, SetVolumesApart, RunWithoutReport<RenameFolder>, {}, folderW, {}},
    {"DeleteFile", two, Nothing, RemoveA, {"b"}, {{"b", "b"}}, {}},
    {"CreateDirectories", {{"a", "a"}}, Nothing, CreateXAndY, {"a"}, folders, {}},
    {"GetTempFilename", {{"tolvxtmp0.w", "a"}}, Nothing, CreateTemporary, {}, temporary, {}},
    {"GetTempFilenameNoCreate", named, Nothing, RunWithoutReport<NameTemporary>, {}, named, {}},
    {"MoveToTheTrash", two, DeleteA, RunWithoutReport<DeleteB>, {"a"}, {}, two},
    {"PutBack", {{"a", "a"}}, DeleteA, RunWithoutReport<PutBackA>, {}, {{"a", "a"}}, {}},
    {"Purge", two, DeleteAndAge, RunWithoutReport<Purge>, {"b"}, {}, {{"b", "b"}}},
};

class FaultTest : public DiskTest, public testing::WithParamInterface<Operation> {
protected:
    /// Runs the operation with the fault. Returns whether it struck.
    bool Strike(const Faults::Fault& fault) const {
        SCOPED_TRACE("errno " + std::to_string(fault.error) + " at call " + std::to_string(fault.number));
        Prepare();
        bool reportsSuccess = false;
        const Faults::Outcome outcome = Faults::Strike(fault, [&] {
            try {
                reportsSuccess = GetParam().run();
            } catch (const std::exception&) {
                reportsSuccess = false;
            }
        });
        if (!outcome.hasStruck || reportsSuccess) {
            ExpectSuccess();
        }
        for (const std::string& recording : GetParam().kept) {
            const auto isWhole = testing::Contains(testing::Pair(testing::_, recording));
            EXPECT_THAT((std::array{WithNames(TreeOf(folder)), Items()}), testing::Contains(isWhole));
        }
        CloseTheDatabase(outcome);
        return outcome.hasStruck;
    }

private:
    void Prepare() const {
        MakeEmpty(folder);
        MakeEmpty(applicationFolder);
        std::filesystem::current_path(folder);
        Faults::answers = {};
        MakeTree(folder, WithRecordings(GetParam().before));
        GetParam().prepare();
    }

    void ExpectSuccess() const {
        EXPECT_EQ(WithNames(TreeOf(folder)), GetParam().after);
        EXPECT_EQ(Items(), GetParam().trash);
        const std::string database = trash + "/.trash.db";
        Entries entries;
        if (std::filesystem::exists(database)) {
            entries = EntriesIn(Content(database));
        }
        EXPECT_EQ(entries.size(), GetParam().trash.size());
        for (const auto& [name, content] : GetParam().trash) {
            EXPECT_EQ(entries[trash + '/' + name].second, Path(name));
        }
    }

    Tree Items() const {
        Tree items = std::filesystem::exists(trash) ? TreeOf(trash) : Tree();
        items.erase(".trash.db");
        return WithNames(items);
    }

    /// A database that could not be written stays open. All else has to be closed.
    void CloseTheDatabase(const Faults::Outcome& outcome) const {
        EXPECT_LE(CountOpenFiles(), openAtStart + (outcome.hasStruckWriting ? 1 : 0));
        for (int descriptor = 3; CountOpenFiles() > openAtStart; ++descriptor) {
            close(descriptor);
        }
    }

    const std::string trash = applicationFolder + "/Trash";
    const EnvironmentVariable temporaryFolderIsFolder{"TMPDIR", folder.c_str()};
};

TEST_P(FaultTest, CostsNoMoreThanIsNamed) {
    int strikes = 0;
    for (const int error : {ENOSPC, EMFILE, 0}) {
        for (const bool onwards : {false, true}) {
            for (int number = 1; Strike({number, error, onwards}); ++number) {
                ++strikes;
            }
        }
    }
    std::cout << GetParam().name << ": " << strikes << " failed calls\n";
}

INSTANTIATE_TEST_SUITE_P(Fault, FaultTest, testing::ValuesIn(operations),
                         [](const auto& tested) { return tested.param.name; });

using CopyFaultTest = DiskTest;

TEST_F(CopyFaultTest, CopyGoesOnAfterAPartialWriteWithTheRightBytes) {
    const std::string source = MakeFile("a", Recording("a"));
    bool hasStruck = true;
    for (int number = 1; hasStruck; ++number) {
        std::filesystem::remove(Path("b"));
        const auto copy = [&] { EXPECT_EQ(cp(Path("b").c_str(), source.c_str()), 0); };
        hasStruck = Faults::Strike({number, 0, false}, copy).hasStruck;
        EXPECT_EQ(Content(Path("b")), Recording("a"));
    }
}

} // namespace
