#include "fuzz/Support.h"
#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>
#include <FrameworkBase/Trash/internal/TrashDB.h>

#include <fstream>
#include <iterator>

// The input is a sequence of steps, two bytes each: what to do and with which file. The library takes each step on the
// disk, a model takes it here; after it both must show the same.

namespace {

namespace fs = std::filesystem;
using namespace Tolvex::FileNames;
using VarnelNative::Utility::DateTime;

struct Entry {
    std::string original;
    int daysAgo = 0;
};

/// The disk, but for the database file, and the database.
struct Model {
    void Move(const std::string& from, const std::string& to) {
        if (files.count(from) != 0) {
            const std::string moved = files[from];
            files.erase(from);
            files[to] = moved;
        } else if (files.count(to) != 0) {
            files[from] = files[to]; // Rename copies backwards when there is nothing to move
        }
    }

    void Trash(const fs::path& path) {
        std::string target = trash / path.filename();
        for (int number = 1; files.count(target) != 0; ++number) {
            target = trash / (path.stem().string() + std::to_string(number) + path.extension().string());
        }
        Move(path, target);
        database[target] = {path};
    }

    bool CanPutBack(const std::string& path) const {
        return database.count(path) != 0 && !database.at(path).original.empty();
    }

    void PutBack(const std::string& path) {
        if (CanPutBack(path)) {
            Move(path, workingFolder / database[path].original);
            database.erase(path);
        }
    }

    void Touch() {
        for (const auto& [path, content] : files) {
            if (fs::path(path).parent_path() == trash) {
                database[path] = {fs::path(path).filename()};
            }
        }
        database[trash / ".trash.db"] = {".trash.db"};
    }

    void Purge(bool all) {
        const std::map<std::string, std::string> before = files;
        for (const auto& [path, content] : before) {
            if (fs::path(path).parent_path() == trash) {
                const auto [entry, isAdopted] = database.insert({path, {}});
                if (!isAdopted && (all || entry->second.daysAgo > 30)) {
                    database.erase(entry);
                    files.erase(path);
                }
            }
        }
    }

    std::map<std::string, std::string> files; ///< content by full path
    std::map<std::string, Entry> database;
    fs::path trash;
    fs::path workingFolder;
};

class Run {
public:
    explicit Run(const fs::path& homeFolder) : home(homeFolder) {
        fs::remove_all(home);
        model.workingFolder = home / "work";
        fs::create_directories(home / "Library/Application Support");
        fs::create_directory(model.workingFolder);
        fs::current_path(model.workingFolder);
        model.trash = GetTrashFolderPath();
        fs::create_directory(model.trash);
        WithDatabase([] {});
    }

    void Step(unsigned char action, unsigned char item) {
        constexpr void (Run::*steps[])(unsigned char) = {&Run::Write, &Run::Trash,   &Run::PutBack, &Run::Touch,
                                                         &Run::Purge, &Run::SetTime, &Run::Vanish};
        (this->*steps[action % std::size(steps)])(item);
        RequireSame();
    }

private:
    std::string File(unsigned char item) const {
        const fs::path files[] = {home / "take.wav", home / "README", model.workingFolder / "take.wav",
                                  model.trash / "take.wav", model.trash / "stray"};
        return files[item % std::size(files)];
    }

    /// An item of the database, or any file when there is none.
    std::string Item(unsigned char item) const {
        const auto count = static_cast<int>(model.database.size());
        return count == 0 ? File(item) : std::next(model.database.begin(), item % count)->first;
    }

    template <class Work>
    void WithDatabase(Work work) const {
        trashDB.Load(model.trash);
        work();
        trashDB.Unload();
    }

    void Write(unsigned char item) {
        std::ofstream(File(item)) << ++content;
        model.files[File(item)] = std::to_string(content);
    }

    void Trash(unsigned char item) {
        DeleteFileToRecycleBin(File(item), true);
        model.Trash(File(item));
    }

    void PutBack(unsigned char item) {
        const std::string path = Item(item);
        Require(CanPutBack(path) == model.CanPutBack(path), "known whether it can be put back");
        Require(Tolvex::FileNames::PutBack(path) == model.CanPutBack(path), "put back when it can be");
        model.PutBack(path);
    }

    void Touch(unsigned char /*item*/) {
        WithDatabase([this] { TouchFolder(model.trash); });
        model.Touch();
    }

    void Purge(unsigned char item) {
        const bool all = item % 2 == 1;
        WithDatabase([this, all] { CleanupTrashFolder(model.trash, all); });
        model.Purge(all);
    }

    void SetTime(unsigned char item) {
        if (const auto entry = model.database.find(Item(item / 2)); entry != model.database.end()) {
            entry->second.daysAgo = item % 2 == 1 ? 31 : 29;
            const long long time = DateTime::Now().ticks - entry->second.daysAgo * DateTime::ticksPerDay;
            WithDatabase([&] { trashDB.files.at(entry->first).first.ticks = time; });
        }
    }

    void Vanish(unsigned char item) {
        fs::remove(File(item));
        model.files.erase(File(item));
    }

    void RequireSame() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(home)) {
            if (entry.is_regular_file() && entry.path().filename() != ".trash.db") {
                std::ifstream file(entry.path());
                files[entry.path()] = std::string(std::istreambuf_iterator<char>(file), {});
            }
        }
        Require(files == model.files, "the disk is as expected");
        TrashDB saved;
        saved.Load(model.trash);
        Require(saved.files.size() == model.database.size(), "the database has as many entries as expected");
        for (const auto& [path, entry] : model.database) {
            Require(saved.files.count(path) != 0, "those that are expected");
            const auto& [added, original] = saved.files.at(path);
            Require(original == entry.original, "with their origins");
            Require((DateTime::Now().ticks - added.ticks) / DateTime::ticksPerDay == entry.daysAgo, "and times");
        }
    }

    const fs::path home;
    int content = 0;
    Model model;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    setenv("HOME", scratch.path.c_str(), 1);
    Run run(scratch.path);
    constexpr std::size_t mostBytes = 128;
    for (std::size_t i = 0; i + 1 < std::min(size, mostBytes); i += 2) {
        run.Step(data[i], data[i + 1]);
    }
    return 0;
}
