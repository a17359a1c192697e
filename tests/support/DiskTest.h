#pragma once

#include "tests/support/Tables.h"

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

// Tests never touch the user's own files: from the first test of a process to the last, the home folder ("HOME"), the
// temporary folder ("TMPDIR") and the working directory are in a sandbox.

/// A test that reads or writes the disk. Each begins with empty folders. What it leaves in `folder` or `applicationFolder`
/// is its own affair; anything else that was left behind fails it, as does a file that is still open.
class DiskTest : public testing::Test {
public:
    /// The full path of `name` in `folder`.
    std::string Path(const std::string& name) const { return folder + '/' + name; }

    /// Makes a file or a folder, and the folders that it needs. `name` is relative to `folder` or a full path. Returns
    /// the full path.
    std::string MakeFile(const std::string& name, const std::string& content = "") const;
    std::string MakeFolder(const std::string& name) const;

    /// Makes what a list says: "file, folder/, folder/file, link -> target". A file gets its name as its content.
    void Make(const std::string& list) const;

    /// All that is inside a folder, at any depth, as such a list, sorted. Links are not followed.
    std::string List(const std::string& root) const;
    std::string List() const { return List(folder); }

    /// The same, a file that does not hold its own name as "name=content".
    std::string ListWithContents(const std::string& root) const;

    /// Whether `function`, called in a folder that holds nothing but what a row says, gives and leaves what the row
    /// says: "before; in => out; after", listed with contents.
    template <class Function>
    testing::AssertionResult Does(Function function, const std::string& table) const {
        const auto run = [this, function](const std::string& before, const std::string& in) {
            MakeEmpty(folder);
            std::filesystem::current_path(folder);
            Make(before);
            const std::string out = Result(function, Cells(in));
            return out + "; " + ListWithContents(folder);
        };
        return Maps(run, table, "; ");
    }

    const std::string folder = InSandbox("test"); ///< the test's own
    const std::string home = InSandbox("home");   ///< holds "Library/Application Support", as every home folder does
    const std::string applicationFolder = home + "/Library/Application Support/Tolvex Studio 10"; ///< not made here
    const std::string temporaryFolder = InSandbox("tmp");
    const std::string workingFolder = InSandbox("work");
    std::size_t expectedOpenFiles = 0; ///< how many files are meant to be open still at the end of the test

protected:
    void SetUp() override;
    void TearDown() override;
    static void MakeEmpty(const std::string& path);
    static std::size_t CountOpenFiles();

    std::size_t openAtStart = 0;

private:
    static std::string InSandbox(const std::string& name);
};

/// The content of the file at `path`; fails the test when there is none.
std::string Content(const std::string& path);

/// A path of exactly `length` bytes below `folder`, in components that a disk takes.
std::string PathOfLength(std::string folder, std::size_t length);

/// While it lives, the process has no rights on files but those of an ordinary user, so that permissions count in tests
/// that root runs.
struct AsOrdinaryUser {
    AsOrdinaryUser() { EXPECT_TRUE(getuid() != 0 || seteuid(65534) == 0); }
    ~AsOrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }
};

/// Sets an environment variable, or unsets it when `value` is null, for as long as it lives.
struct EnvironmentVariable {
    EnvironmentVariable(const char* variable, const char* value)
        : name(variable), wasSet(std::getenv(name) != nullptr), before(wasSet ? std::getenv(name) : "") {
        value == nullptr ? unsetenv(name) : setenv(name, value, 1);
    }
    ~EnvironmentVariable() { wasSet ? setenv(name, before.c_str(), 1) : unsetenv(name); }

    const char* const name;
    const bool wasSet;
    const std::string before;
};
