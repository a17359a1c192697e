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
    Tree before;
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

const std::string a = Recording("a");
const std::string b = Recording("b");

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
    const Entries entries = {{InTrash("a"), {1, In("a")}}, {InTrash("b"), {Now(), In("b")}}};
    std::ofstream(InTrash(".trash.db"), std::ios::binary) << DatabaseBytes(entries);
}

void Purge() {
    const auto done = std::make_shared<std::promise<void>>();
    CleanupTrashFolder(false, [done] { done->set_value(); });
    EXPECT_EQ(done->get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

const Tree two = {{"a", a}, {"b", b}};
const Tree folderV = {{"v/", ""}, {"v/s/", ""}, {"v/s/b", b}};
const Tree folderW = {{"w/", ""}, {"w/s/", ""}, {"w/s/b", b}};
const Tree foldersVAndW = {{"v/", ""}, {"v/s/", ""}, {"v/s/b", b}, {"w/", ""}, {"w/s/", ""}, {"w/s/b", b}};
const Tree copiedBack = {{"a", b}, {"v/", ""}, {"v/b", b}};
const Tree folders = {{"a", a}, {"x/", ""}, {"x/y/", ""}};
const Tree temporary = {{"tolvxtmp0.w", a}, {"tolvxtmp1.w", ""}};
const Tree named = {{"tolvxtmp0.fld", a}};

// Name, before, preparation, operation; what is kept, what success leaves in the folder and in the trash.
const Operation operations[] = {
    {"CopyFile", two, Nothing, CopyAOverB, {a}, {{"a", a}, {"b", a}}, {}},
    {"CopyFolder", folderV, Nothing, RunWithoutReport<CopyFolderV>, {b}, foldersVAndW, {}},
    {"RenameFile", {{"a", a}, {"v/b", b}}, SetVolumesApart, RunWithoutReport<RenameFile>, {b}, copiedBack, {}},
    {"RenameFolder", folderV, SetVolumesApart, RunWithoutReport<RenameFolder>, {}, folderW, {}},
    {"DeleteFile", two, Nothing, RemoveA, {b}, {{"b", b}}, {}},
    {"CreateDirectories", {{"a", a}}, Nothing, CreateXAndY, {a}, folders, {}},
    {"GetTempFilename", {{"tolvxtmp0.w", a}}, Nothing, CreateTemporary, {}, temporary, {}},
    {"GetTempFilenameNoCreate", named, Nothing, RunWithoutReport<NameTemporary>, {}, named, {}},
    {"MoveToTheTrash", two, DeleteA, RunWithoutReport<DeleteB>, {a}, {}, two},
    {"PutBack", {{"a", a}}, DeleteA, RunWithoutReport<PutBackA>, {}, {{"a", a}}, {}},
    {"Purge", two, DeleteAndAge, RunWithoutReport<Purge>, {b}, {}, {{"b", b}}},
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
            EXPECT_THAT((std::array{TreeOf(folder), Items()}), testing::Contains(isWhole));
        }
        CloseTheDatabase(outcome);
        return outcome.hasStruck;
    }

private:
    void Prepare() const {
        MakeEmpty(folder);
        MakeEmpty(applicationFolder);
        std::filesystem::current_path(folder);
        setenv("TMPDIR", folder.c_str(), 1);
        Faults::answers = {};
        MakeTree(folder, GetParam().before);
        GetParam().prepare();
    }

    void ExpectSuccess() const {
        EXPECT_EQ(TreeOf(folder), GetParam().after);
        EXPECT_EQ(Items(), GetParam().trash);
        for (const auto& [name, content] : GetParam().trash) {
            EXPECT_TRUE(CanPutBack(trash + '/' + name));
        }
    }

    Tree Items() const {
        Tree items = std::filesystem::exists(trash) ? TreeOf(trash) : Tree();
        items.erase(".trash.db");
        return items;
    }

    /// A database that could not be written stays open. All else has to be closed.
    void CloseTheDatabase(const Faults::Outcome& outcome) const {
        EXPECT_LE(CountOpenFiles(), openAtStart + (outcome.hasStruckWriting ? 1 : 0));
        for (int descriptor = 3; CountOpenFiles() > openAtStart; ++descriptor) {
            close(descriptor);
        }
    }

    const std::string trash = applicationFolder + "/Trash";
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

} // namespace
