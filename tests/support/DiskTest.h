#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

// Tests never touch the user's own files: from the first test of a process to the last, the home folder ("HOME"), the
// temporary folder ("TMPDIR") and the working directory are in a sandbox. What other tests leave there fails the run.

/// A test that reads or writes the disk. Each begins with empty folders. At its end everything still on the disk must
/// be accounted for: made by MakeFile or MakeFolder, or listed by Tree, whose result the test compares with what should
/// be there. Anything else was left behind and fails the test, as does a file that is still open.
class DiskTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The full path of `name` in `folder`.
    std::string Path(const std::string& name) const { return folder + '/' + name; }

    /// Makes a file or a folder, and the folders that it needs. `name` is relative to `folder` or a full path. Returns
    /// the full path.
    std::string MakeFile(const std::string& name, const std::string& content = "");
    std::string MakeFolder(const std::string& name);

    /// All that is inside a folder, at any depth, as sorted paths relative to it; those of folders end in "/". Links are
    /// not followed.
    std::vector<std::string> Tree(const std::string& root);
    std::vector<std::string> Tree() { return Tree(folder); }

    const std::string folder = InSandbox("test"); ///< the test's own
    const std::string home = InSandbox("home");   ///< holds "Library/Application Support", as every home folder does
    const std::string applicationFolder = home + "/Library/Application Support/Tolvex Studio 10"; ///< not made here
    const std::string temporaryFolder = InSandbox("tmp");
    const std::string workingFolder = InSandbox("work");
    std::size_t expectedOpenFiles = 0; ///< how many files are meant to be open still at the end of the test

private:
    static std::string InSandbox(const std::string& name);

    std::set<std::string> accounted;
    std::set<std::string> openAtStart;
};

/// The content of the file at `path`; fails the test when there is none.
std::string Content(const std::string& path);

/// While it lives, the process has no rights on files but those of an ordinary user, so that permissions count in tests
/// that root runs.
struct AsOrdinaryUser {
    AsOrdinaryUser();
    ~AsOrdinaryUser();
};

/// Sets an environment variable, or unsets it when `value` is null, for as long as it lives.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* variable, const char* value);
    ~EnvironmentVariable();

private:
    const char* const name;
    const bool wasSet;
    const std::string before;
};
