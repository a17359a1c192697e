#include <FrameworkBase/FileNames/FileOperations.h>

#include "tests/FileNames/PathTables.h"

#include <dirent.h>
#include <dlfcn.h>
#include <functional>
#include <map>

namespace fs = std::filesystem;

namespace {

/// Called with the name of each entry between its being read and its being looked at; what else goes on meanwhile.
std::function<void(const std::string& name)> meanwhile;

} // namespace

/// The library reads folders through this program's function: sorted by name while `meanwhile` is set.
dirent* readdir(DIR* stream) {
    static const auto next = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
    static std::map<DIR*, std::map<std::string, dirent>> unread;
    static std::map<DIR*, dirent> current;
    if (!meanwhile) {
        return next(stream);
    }
    if (current.count(stream) == 0) {
        while (const dirent* const entry = next(stream)) {
            unread[stream][entry->d_name] = *entry;
        }
    }
    if (unread[stream].empty()) {
        unread.erase(stream);
        current.erase(stream);
        return nullptr;
    }
    current[stream] = unread[stream].extract(unread[stream].begin()).mapped();
    meanwhile(current[stream].d_name);
    return &current[stream];
}

class Removal : public DiskTreeTest {
protected:
    /// Removes a folder of the test's own while `others` are at work.
    auto While(std::function<void(const std::string& name)> others) {
        return [this, others](const std::string& name) {
            meanwhile = others;
            remove_dir_content(Path(name).c_str(), 0);
            meanwhile = nullptr;
            return "";
        };
    }
};

TEST_F(Removal, DeletesWhatIsReachedThroughLinksThatAreGone) {
    EXPECT_TRUE(Does(While([](auto) {}), "d/e/c, d/e/b -> ..; d/e/b => ; d/, d/e/, d/e/c | "
                                         "D/F/1, D/F/2, D/F/a, D/F/b, D/F/U -> ../../K, K/, K/M -> ../D; K/M/F => ; "
                                         "D/, D/F/, D/F/U, D/F/a, D/F/b, K/ | "
                                         "d/a/x, d/l -> a; d => ; d/, d/l | d/b/x, d/a -> b; d => ; "));
}

TEST_F(Removal, GoesOnInAFolderThatIsMovedAway) {
    EXPECT_TRUE(Does(While([](const std::string& name) { name == "c" ? fs::rename("d", "kept") : void(); }),
                     "d/a, d/b, d/c, d/d, d/e/f; d => ; "
                     "kept/, kept/c=d/c, kept/d=d/d, kept/e/, kept/e/f=d/e/f"));
}

TEST_F(Removal, TakesAnEntryForWhatItWasWhenItWasRead) {
    const auto replace = [](const std::string& name) {
        if (name == "file") {
            fs::remove("d/file");
            fs::create_directories("d/file/inner");
        } else if (name == "folder") {
            fs::remove("d/folder");
            fs::create_directory_symlink("../elsewhere", "d/folder");
        }
    };
    EXPECT_TRUE(Does(While(replace), "d/file, d/folder/, elsewhere/x; d => ; elsewhere/"));
}
