#include "tests/support/DiskTest.h"

#include "tests/support/SafeFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

fs::path sandbox;

struct SandboxEnvironment : testing::Environment {
    void SetUp() override {
        if (sandbox.empty()) { // the library asks for "HOME" once in a process
            sandbox = MakeSafeFolder();
            fs::permissions(sandbox.parent_path(), fs::perms::all); // open to the user that AsOrdinaryUser becomes
            setenv("HOME", (sandbox / "home").c_str(), 1);
            setenv("TMPDIR", (sandbox / "tmp").c_str(), 1);
            fs::create_directory(sandbox / "tmp");
        }
    }
    void TearDown() override {
        fs::current_path("/");
        fs::remove_all(sandbox.parent_path());
    }
};
const auto* const sandboxEnvironment = testing::AddGlobalTestEnvironment(new SandboxEnvironment);

} // namespace

std::string DiskTest::InSandbox(const std::string& name) { return sandbox / name; }

void DiskTest::MakeEmpty(const std::string& path) {
    fs::remove_all(path);
    const mode_t mask = umask(0);
    fs::create_directories(path);
    umask(mask);
}

std::size_t DiskTest::CountOpenFiles() {
    std::size_t count = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        count += fcntl(descriptor, F_GETFD) != -1 ? 1 : 0;
    }
    return count;
}

void DiskTest::SetUp() {
    fs::current_path("/");
    for (const std::string& path : {sandbox.string(), folder, temporaryFolder, workingFolder}) {
        MakeEmpty(path);
    }
    MakeEmpty(fs::path(applicationFolder).parent_path());
    fs::current_path(workingFolder);
    openAtStart = CountOpenFiles();
}

void DiskTest::TearDown() {
    EXPECT_EQ(CountOpenFiles(), openAtStart + expectedOpenFiles) << "files are still open";
    fs::remove_all(folder);
    fs::remove_all(applicationFolder);
    EXPECT_EQ(List(sandbox), "home/, home/Library/, home/Library/Application Support/, tmp/, work/") << "left behind";
}

std::string DiskTest::MakeFile(const std::string& name, const std::string& content) const {
    const fs::path path = fs::path(folder) / name;
    MakeFolder(path.parent_path());
    EXPECT_TRUE(std::ofstream(path, std::ios::binary) << content) << path;
    return path;
}

std::string DiskTest::MakeFolder(const std::string& name) const {
    const fs::path path = fs::path(folder) / name;
    fs::create_directories(path);
    return path;
}

void DiskTest::Make(const std::string& list) const {
    for (const std::string& name : Cells(list)) {
        if (const std::size_t arrow = name.find(" -> "); arrow != std::string::npos) {
            fs::create_symlink(name.substr(arrow + 4), Path(name.substr(0, arrow)));
        } else if (!name.empty()) {
            name.back() == '/' ? MakeFolder(name.substr(0, name.size() - 1)) : MakeFile(name, name);
        }
    }
}

std::string DiskTest::List(const std::string& root) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const bool isFolder = entry.symlink_status().type() == fs::file_type::directory;
        names.push_back(entry.path().lexically_relative(root).string() + (isFolder ? "/" : ""));
    }
    std::sort(names.begin(), names.end());
    return Joined(names);
}

std::string DiskTest::ListWithContents(const std::string& root) const {
    std::vector<std::string> names = Cells(List(root));
    for (std::string& name : names) {
        const std::string path = root + '/' + name;
        name += fs::is_regular_file(path) && Content(path) != name ? "=" + Content(path) : "";
    }
    return Joined(names);
}

std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string PathOfLength(std::string folder, std::size_t length) {
    for (; folder.size() + 250 < length; folder += '/' + std::string(100, 'd')) {
    }
    return folder + '/' + std::string(length - folder.size() - 1, 'e');
}
