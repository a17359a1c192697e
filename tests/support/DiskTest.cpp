#include "tests/support/DiskTest.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// Every test begins with these, each empty but for the others, and open to the user that AsOrdinaryUser becomes.
const std::set<std::string> sandboxFolders = {"home", "home/Library", "home/Library/Application Support",
                                              "test", "tmp",          "work"};

struct Sandbox {
    Sandbox() {
        std::string name = fs::canonical(fs::temp_directory_path()) / "frameworkbase-tests-XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr) << name;
        root = name;
        fs::permissions(root, fs::perms(0711));
        setenv("HOME", (root / "home").c_str(), 1);
        setenv("TMPDIR", (root / "tmp").c_str(), 1);
        umask(022);
    }
    ~Sandbox() {
        if (getpid() == owner) { // not in a child that exits
            fs::current_path("/");
            fs::remove_all(root);
        }
    }

    fs::path root;
    const pid_t owner = getpid();
};

const fs::path& SandboxRoot() {
    static const Sandbox sandbox;
    return sandbox.root;
}

void RestoreSandbox() {
    for (const auto& entry : fs::directory_iterator(SandboxRoot())) {
        fs::remove_all(entry);
    }
    for (const std::string& name : sandboxFolders) {
        fs::create_directory(SandboxRoot() / name);
        fs::permissions(SandboxRoot() / name, fs::perms::all);
    }
    fs::current_path(SandboxRoot() / "work");
}

void ExpectNothingLeftBehind(std::set<std::string> accounted) {
    for (const std::string& name : sandboxFolders) {
        accounted.insert(SandboxRoot() / name);
    }
    accounted.insert(SandboxRoot() / "home/Library/Application Support/Tolvex Studio 10");
    for (const auto& entry : fs::recursive_directory_iterator(SandboxRoot())) {
        EXPECT_EQ(accounted.count(entry.path()), 1U) << "left behind: " << entry.path();
    }
}

struct SandboxEnvironment : testing::Environment {
    void SetUp() override { RestoreSandbox(); }
    void TearDown() override { ExpectNothingLeftBehind({}); }
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

std::string DiskTest::InSandbox(const std::string& name) { return SandboxRoot() / name; }

void DiskTest::SetUp() {
    RestoreSandbox();
    openAtStart = OpenDescriptors();
}

void DiskTest::TearDown() {
    const std::set<std::string> openAtEnd = OpenDescriptors();
    std::vector<std::string> left;
    std::set_difference(openAtEnd.begin(), openAtEnd.end(), openAtStart.begin(), openAtStart.end(),
                        back_inserter(left));
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
    for (fs::path made = path; made.has_relative_path(); made = made.parent_path()) {
        accounted.insert(made);
    }
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
