#include "tests/support/DiskTest.h"

#include <algorithm>
#include <cerrno>
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

/// The folders that take the place of the user's.
class Sandbox {
public:
    static const Sandbox& Get() {
        static const Sandbox sandbox;
        return sandbox;
    }

    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    ~Sandbox() {
        if (getpid() == owner) { // not in a child that exits
            fs::current_path("/");
            fs::remove_all(root);
        }
    }

    std::string In(const char* name) const { return (root / name).string(); }

    /// All folders, empty.
    void Restore() const {
        for (const auto& entry : fs::directory_iterator(root)) {
            fs::remove_all(entry);
        }
        for (const char* name : {"test", "home", "home/Library", "home/Library/Application Support", "tmp", "work"}) {
            fs::create_directory(root / name);
            // Open to the user that AsOrdinaryUser becomes.
            fs::permissions(root / name, fs::perms::all);
        }
        fs::current_path(root / "work");
    }

    /// What is there besides the folders of Restore, the application's folder and the paths in `accounted`.
    std::vector<std::string> LeftBehind(std::set<std::string> accounted) const {
        for (const char* name : {"test", "home", "home/Library", "home/Library/Application Support",
                                 "home/Library/Application Support/Tolvex Studio 10", "tmp", "work"}) {
            accounted.insert(In(name));
        }
        std::vector<std::string> left;
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            if (accounted.count(entry.path().string()) == 0) {
                left.push_back(entry.path().string());
            }
        }
        return left;
    }

private:
    Sandbox() {
        std::string name = (fs::canonical(fs::temp_directory_path()) / "frameworkbase-tests-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw fs::filesystem_error("no sandbox", name, std::error_code(errno, std::generic_category()));
        }
        root = name;
        fs::permissions(root, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
        setenv("HOME", In("home").c_str(), 1);
        setenv("TMPDIR", In("tmp").c_str(), 1);
        umask(022);
        Restore();
    }

    fs::path root;
    const pid_t owner = getpid();
};

class SandboxEnvironment : public testing::Environment {
public:
    void SetUp() override { Sandbox::Get(); }
    void TearDown() override { EXPECT_EQ(Sandbox::Get().LeftBehind({}), std::vector<std::string>()) << "left behind"; }
};

const auto* const sandboxEnvironment = testing::AddGlobalTestEnvironment(new SandboxEnvironment);

/// The open descriptors of the process, each with what it refers to.
std::set<std::string> OpenDescriptors() {
    std::vector<std::string> numbers;
    for (const auto& entry : fs::directory_iterator("/dev/fd")) {
        numbers.push_back(entry.path().filename().string());
    }
    std::set<std::string> open;
    for (const std::string& number : numbers) {
        if (fcntl(std::stoi(number), F_GETFD) != -1) { // all but the one that listed them
            std::error_code noLink;
            open.insert(number + ' ' + fs::read_symlink("/dev/fd/" + number, noLink).string());
        }
    }
    return open;
}

} // namespace

DiskTest::DiskTest()
    : folder(Sandbox::Get().In("test")), home(Sandbox::Get().In("home")),
      applicationFolder(home + "/Library/Application Support/Tolvex Studio 10"),
      temporaryFolder(Sandbox::Get().In("tmp")), workingFolder(Sandbox::Get().In("work")) {}

void DiskTest::SetUp() {
    Sandbox::Get().Restore();
    openAtStart = OpenDescriptors();
}

void DiskTest::TearDown() {
    std::vector<std::string> openNow;
    for (const std::string& descriptor : OpenDescriptors()) {
        if (openAtStart.count(descriptor) == 0) {
            openNow.push_back(descriptor);
        }
    }
    EXPECT_EQ(openNow.size(), expectedOpenFiles) << "still open: " << testing::PrintToString(openNow);
    EXPECT_EQ(Sandbox::Get().LeftBehind(accounted), std::vector<std::string>()) << "left behind";
    Sandbox::Get().Restore();
}

std::string DiskTest::MakeFile(const std::string& name, const std::string& content) {
    const fs::path path = fs::path(folder) / name;
    MakeFolder(path.parent_path().string());
    std::ofstream file(path, std::ios::binary);
    file << content;
    EXPECT_TRUE(file.good()) << path;
    Account(path.string());
    return path.string();
}

std::string DiskTest::MakeFolder(const std::string& name) {
    const fs::path path = fs::path(folder) / name;
    fs::create_directories(path);
    Account(path.string());
    return path.string();
}

std::vector<std::string> DiskTest::Tree(const std::string& root) {
    std::vector<std::string> tree;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        Account(entry.path().string());
        const bool isFolder = entry.is_directory() && !entry.is_symlink();
        tree.push_back(entry.path().lexically_relative(root).string() + (isFolder ? "/" : ""));
    }
    std::sort(tree.begin(), tree.end());
    return tree;
}

void DiskTest::Account(const std::string& path) {
    for (fs::path accountedPath = path; accountedPath.has_relative_path();
         accountedPath = accountedPath.parent_path()) {
        accounted.insert(accountedPath.string());
    }
}

std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

namespace {
constexpr uid_t ordinaryUser = 65534;
} // namespace

AsOrdinaryUser::AsOrdinaryUser() { EXPECT_TRUE(getuid() != 0 || seteuid(ordinaryUser) == 0); }

AsOrdinaryUser::~AsOrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }

EnvironmentVariable::EnvironmentVariable(std::string variable, const char* value)
    : name(std::move(variable)), wasSet(std::getenv(name.c_str()) != nullptr),
      before(wasSet ? std::getenv(name.c_str()) : "") {
    Set(name, value);
}

EnvironmentVariable::~EnvironmentVariable() { Set(name, wasSet ? before.c_str() : nullptr); }

void EnvironmentVariable::Set(const std::string& name, const char* value) {
    value == nullptr ? unsetenv(name.c_str()) : setenv(name.c_str(), value, 1);
}
