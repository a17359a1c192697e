#pragma once

#include "tests/support/SafeFolder.h"
#include "tests/support/Tables.h"
#include "tests/support/Tree.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

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

/// While it lives, the process has an ordinary user's rights on files, so that permissions count when root runs tests.
struct AsOrdinaryUser {
    AsOrdinaryUser() { EXPECT_TRUE(getuid() != 0 || seteuid(65534) == 0); }
    ~AsOrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }
};

/// While it lives, no file of this process can be written, as on a full disk.
class FullDisk {
public:
    FullDisk() {
        std::signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit none{0, before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    }
    ~FullDisk() {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
        std::signal(SIGXFSZ, SIG_DFL);
    }

private:
    rlimit before{};
};

inline std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A path of exactly `length` bytes below `folder`.
inline std::string PathOfLength(std::string folder, std::size_t length) {
    for (; folder.size() + 250 < length; folder += '/' + std::string(100, 'd')) {
    }
    return folder + '/' + std::string(length - folder.size() - 1, 'e');
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
        std::filesystem::current_path(workingFolder);
        openAtStart = CountOpenFiles();
    }

    void TearDown() override {
        EXPECT_EQ(CountOpenFiles(), openAtStart + expectedOpenFiles) << "files are still open";
        std::filesystem::remove_all(folder);
        std::filesystem::remove_all(applicationFolder);
        EXPECT_EQ(List(sandbox), "home/, home/Library/, home/Library/Application Support/, tmp/, work/")
            << "left behind";
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

    /// Makes a file or a folder, and the folders that it needs. `name` is relative to `folder` or a full path.
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

    /// Makes what a list says: "file, folder/, folder/file, link -> target". A file gets its name as its content.
    void Make(const std::string& list) const {
        for (const std::string& name : Cells(list)) {
            if (const std::size_t arrow = name.find(" -> "); arrow != std::string::npos) {
                std::filesystem::create_symlink(name.substr(arrow + 4), Path(name.substr(0, arrow)));
            } else if (!name.empty()) {
                name.back() == '/' ? MakeFolder(name.substr(0, name.size() - 1)) : MakeFile(name, name);
            }
        }
    }

    /// What is inside a folder as such a list; with contents, a file that holds no name of its own is "name=content".
    static std::string List(const std::string& root, bool withContents = false) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            names.push_back(entry.path().lexically_relative(root));
            if (entry.symlink_status().type() == std::filesystem::file_type::directory) {
                names.back() += '/';
            } else if (withContents && entry.is_regular_file() && Content(entry.path()) != names.back()) {
                names.back() += '=' + Content(entry.path());
            }
        }
        std::sort(names.begin(), names.end());
        return Joined(names);
    }
    std::string List() const { return List(folder); }

    /// Whether `function`, called in a folder that holds nothing but what a row says, gives and leaves what the row
    /// says: "before; in => out; after", listed with contents.
    template <class Function>
    testing::AssertionResult Does(Function function, const std::string& table) const {
        const auto run = [this, function](const std::string& before, const std::string& in) {
            MakeEmpty(folder);
            std::filesystem::current_path(folder);
            Make(before);
            const std::string out = Result(function, Cells(in));
            return out + "; " + List(folder, true);
        };
        return Maps(run, table, "; ");
    }

    const std::string folder = sandbox / "test"; ///< the test's own
    const std::string home = sandbox / "home";   ///< holds "Library/Application Support", as every home folder does
    const std::string applicationFolder = home + "/Library/Application Support/Tolvex Studio 10"; ///< not made here
    const std::string temporaryFolder = sandbox / "tmp";
    const std::string workingFolder = sandbox / "work";
    int expectedOpenFiles = 0; ///< how many files are meant to be open still at the end of the test
    std::ptrdiff_t openAtStart = 0;
};
