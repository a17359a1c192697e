#pragma once

#include "tests/support/SafeFolder.h"
#include "tests/support/Tree.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

/// While it lives, the process has an ordinary user's rights on files, so that permissions count when root runs tests.
struct AsOrdinaryUser {
    AsOrdinaryUser() { EXPECT_TRUE(getuid() != 0 || seteuid(65534) == 0); }
    ~AsOrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }
};

inline std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Where the tests of this process keep "HOME", "TMPDIR" and the working directory: never among the user's own files.
inline std::filesystem::path sandbox; // NOLINT

struct SandboxEnvironment : testing::Environment {
    void SetUp() override {
        if (sandbox.empty()) { // the library asks for "HOME" once in a process
            sandbox = MakeSafeFolder();
            std::filesystem::permissions(sandbox.parent_path(), std::filesystem::perms::all); // for AsOrdinaryUser
            setenv("HOME", (sandbox / "home").c_str(), 1);
            setenv("TMPDIR", (sandbox / "tmp").c_str(), 1);
            std::filesystem::create_directory(sandbox / "tmp");
        }
    }
    void TearDown() override {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(sandbox.parent_path());
    }
};
inline const auto* const sandboxEnvironment = testing::AddGlobalTestEnvironment(new SandboxEnvironment);

/// Begins with empty folders. Fails when a file is open still or anything left but in `folder` and `applicationFolder`.
struct DiskTest : testing::Test {
    void SetUp() override {
        std::filesystem::current_path("/");
        for (const std::string& path : {sandbox.string(), folder, temporaryFolder, workingFolder}) {
            MakeEmpty(path);
        }
        MakeEmpty(home + "/Library/Application Support");
        setenv("TMPDIR", temporaryFolder.c_str(), 1);
        std::filesystem::current_path(workingFolder);
        openAtStart = CountOpenFiles();
    }

    void TearDown() override {
        EXPECT_EQ(CountOpenFiles(), openAtStart + expectedOpenFiles) << "files are still open";
        std::filesystem::remove_all(folder);
        std::filesystem::remove_all(applicationFolder);
        const Tree empty = {{"home/", ""},
                            {"home/Library/", ""},
                            {"home/Library/Application Support/", ""},
                            {"tmp/", ""},
                            {"work/", ""}};
        EXPECT_EQ(TreeOf(sandbox), empty) << "left behind";
    }

    static std::ptrdiff_t CountOpenFiles() {
        return std::distance(std::filesystem::directory_iterator("/dev/fd"), std::filesystem::directory_iterator());
    }

    static void MakeEmpty(const std::string& path) {
        std::filesystem::remove_all(path);
        const mode_t mask = umask(0);
        std::filesystem::create_directories(path);
        umask(mask);
    }

    std::string Path(const std::string& name) const { return folder + '/' + name; }

    /// Create a file or a folder, and the folders that it needs. `name` is relative to `folder` or a full path.
    std::string MakeFolder(const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(folder) / name);
        return std::filesystem::path(folder) / name;
    }
    std::string MakeFile(const std::string& name, const std::string& content = "") const {
        const std::filesystem::path path = std::filesystem::path(folder) / name;
        MakeFolder(path.parent_path());
        EXPECT_TRUE(std::ofstream(path, std::ios::binary) << content) << path;
        return path;
    }

    const std::string folder = sandbox / "test"; ///< the test's own
    const std::string home = sandbox / "home";   ///< holds "Library/Application Support", as every home folder does
    const std::string applicationFolder = home + "/Library/Application Support/Tolvex Studio 10"; ///< not made here
    const std::string temporaryFolder = sandbox / "tmp";
    const std::string workingFolder = sandbox / "work";
    int expectedOpenFiles = 0; ///< how many files are meant to be open still at the end of the test
    std::ptrdiff_t openAtStart = 0;
};
