#include "tests/support/DiskTest.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

fs::path sandbox;

/// Empties the sandbox but for the folders that every test begins with.
void RestoreSandbox() {
    fs::current_path("/");
    fs::remove_all(sandbox);
    umask(0); // open to the user that AsOrdinaryUser becomes
    for (const char* name : {"home/Library/Application Support", "test", "tmp", "work"}) {
        fs::create_directories(sandbox / name);
    }
    umask(022);
    fs::current_path(sandbox / "work");
}

void Account(std::set<std::string>& accounted, fs::path path) {
    for (; path.has_relative_path(); path = path.parent_path()) {
        accounted.insert(path);
    }
}

void ExpectNothingLeftBehind(std::set<std::string> accounted) {
    for (const char* name : {"home/Library/Application Support/Tolvex Studio 10", "test", "tmp", "work"}) {
        Account(accounted, sandbox / name);
    }
    for (const auto& entry : fs::recursive_directory_iterator(sandbox)) {
        EXPECT_EQ(accounted.count(entry.path()), 1U) << "left behind: " << entry.path();
    }
}

struct SandboxEnvironment : testing::Environment {
    void SetUp() override {
        if (sandbox.empty()) { // the library asks for "HOME" once in a process
            std::string name = fs::canonical(fs::temp_directory_path()) / "frameworkbase-tests-XXXXXX";
            sandbox = mkdtemp(name.data());
            setenv("HOME", (sandbox / "home").c_str(), 1);
            setenv("TMPDIR", (sandbox / "tmp").c_str(), 1);
        }
        RestoreSandbox();
    }
    void TearDown() override {
        ExpectNothingLeftBehind({});
        fs::current_path("/");
        fs::remove_all(sandbox);
    }
};
const auto* const sandboxEnvironment = testing::AddGlobalTestEnvironment(new SandboxEnvironment);

/// The open descriptors of the process, each with what it refers to.
std::set<std::string> OpenDescriptors() {
    std::set<std::string> open;
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1) {
            std::error_code noLink;
            const std::string name = "/dev/fd/" + std::to_string(descriptor);
            open.insert(name + " is " + fs::read_symlink(name, noLink).string());
        }
    }
    return open;
}

} // namespace

std::string DiskTest::InSandbox(const std::string& name) { return sandbox / name; }

void DiskTest::SetUp() {
    RestoreSandbox();
    openAtStart = OpenDescriptors();
}

void DiskTest::TearDown() {
    std::set<std::string> left = OpenDescriptors();
    for (const std::string& descriptor : openAtStart) {
        left.erase(descriptor);
    }
    EXPECT_EQ(left.size(), expectedOpenFiles) << "still open: " << testing::PrintToString(left);
    ExpectNothingLeftBehind(accounted);
    RestoreSandbox();
}

std::string DiskTest::MakeFile(const std::string& name, const std::string& content) {
    const fs::path path = fs::path(folder) / name;
    MakeFolder(path.parent_path());
    EXPECT_TRUE(std::ofstream(path, std::ios::binary) << content) << path;
    accounted.insert(path);
    return path;
}

std::string DiskTest::MakeFolder(const std::string& name) {
    const fs::path path = fs::path(folder) / name;
    fs::create_directories(path);
    Account(accounted, path);
    return path;
}

std::vector<std::string> DiskTest::Tree(const std::string& root) {
    std::vector<std::string> tree;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        accounted.insert(entry.path());
        const bool isFolder = entry.symlink_status().type() == fs::file_type::directory;
        tree.push_back(entry.path().lexically_relative(root).string() + (isFolder ? "/" : ""));
    }
    std::sort(tree.begin(), tree.end());
    return tree;
}

std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

AsOrdinaryUser::AsOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    EXPECT_TRUE(getuid() != 0 || seteuid(nobody) == 0);
}

AsOrdinaryUser::~AsOrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }

EnvironmentVariable::EnvironmentVariable(const char* variable, const char* value)
    : name(variable), wasSet(std::getenv(name) != nullptr), before(wasSet ? std::getenv(name) : "") {
    value == nullptr ? unsetenv(name) : setenv(name, value, 1);
}

EnvironmentVariable::~EnvironmentVariable() { wasSet ? setenv(name, before.c_str(), 1) : unsetenv(name); }
