#include "FrameworkBase/Trash/Trash.h"
#include "FrameworkBase/Trash/TrashCleanup.h"
#include "FrameworkBase/Trash/internal/TrashDB.h"
#include "fuzz/Support.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

// The input is a sequence of steps, two bytes each: what to do and with which item. Each step is taken on the disk by the
// library and in a model of the disk and the database here; after it both must show the same.

namespace {

namespace fs = std::filesystem;
using VarnelNative::Utility::DateTime;

enum class Age { Fresh, Young, Old }; ///< recorded in this run, 29 days ago, 31 days ago

long long DaysAgo(int days) { return DateTime::Now().ticks - days * DateTime::ticksPerDay; }

/// The disk below the scratch folder and the database, as they should be.
struct Model {
    static constexpr auto folderContent = "<folder>";
    static constexpr auto databaseContent = "<database>";
    struct Entry {
        std::string original;
        Age age = Age::Fresh;
    };

    std::map<std::string, std::string> disk; ///< content by full path
    std::map<std::string, Entry> database;
    std::string trash;
    std::string workingFolder;

    bool Exists(const std::string& path) const { return disk.count(path) != 0; }
    bool IsFolder(const std::string& path) const { return Exists(path) && disk.at(path) == folderContent; }

    /// The full paths of what is directly in `folder`.
    std::vector<std::string> Children(const std::string& folder) const {
        std::vector<std::string> children;
        for (const auto& entry : disk) {
            if (fs::path(entry.first).parent_path() == folder) {
                children.push_back(entry.first);
            }
        }
        return children;
    }

    void Remove(const std::string& path) {
        for (const std::string& child : Children(path)) {
            Remove(child);
        }
        disk.erase(path);
    }

    void Copy(const std::string& from, const std::string& to) {
        const std::vector<std::string> children = Children(from);
        disk[to] = disk.at(from);
        for (const std::string& child : children) {
            Copy(child, to + child.substr(from.size()));
        }
    }

    void Move(const std::string& from, const std::string& to) {
        if (Exists(from)) {
            Copy(from, to); // into a folder that is there already, too
            Remove(from);
        } else if (Exists(to) && !IsFolder(to)) {
            disk[from] = disk.at(to);
        }
    }

    void Trash(const std::string& path) {
        disk[trash] = folderContent;
        const fs::path name = fs::path(path).filename();
        std::string target = trash + "/" + name.string();
        for (int number = 1; Exists(target); ++number) {
            target = trash + "/" + name.stem().string() + std::to_string(number) + name.extension().string();
        }
        Move(path, target);
        database[target] = {path, Age::Fresh};
        Save();
    }

    void Save() {
        if (Exists(trash)) {
            disk[trash + "/.trash.db"] = databaseContent;
        }
    }

    bool CanPutBack(const std::string& path) const {
        const auto entry = database.find(path);
        return entry != database.end() && !entry->second.original.empty();
    }

    void PutBack(const std::string& path) {
        if (CanPutBack(path)) {
            Move(path, fs::path(workingFolder) / database[path].original);
            database.erase(path);
        }
        Save();
    }

    void Touch() {
        for (const std::string& child : Children(trash)) {
            if (!IsFolder(child)) {
                database[child] = {fs::path(child).filename(), Age::Fresh};
            }
        }
        Save();
    }

    bool Purge(const std::string& folder, bool all) {
        bool deletedAnything = false;
        for (const std::string& child : Children(folder)) {
            if (IsFolder(child)) {
                if (all || Purge(child, false)) {
                    Remove(child);
                    deletedAnything = true;
                }
            } else if (fs::path(child).filename() != ".trash.db") {
                const auto [entry, isAdopted] = database.insert({child, {}});
                if (!isAdopted && (all || entry->second.age == Age::Old)) {
                    disk.erase(child);
                    database.erase(entry);
                    deletedAnything = true;
                }
            }
        }
        return deletedAnything;
    }

    bool HasFiles(const std::string& folder) const {
        const std::vector<std::string> children = Children(folder);
        return std::any_of(children.begin(), children.end(),
                           [this](const std::string& child) { return !IsFolder(child) || HasFiles(child); });
    }
};

/// The disk and the database, changed by the library, beside the model of both.
class Run {
public:
    explicit Run(const fs::path& scratch) : root(scratch) {
        fs::remove_all(root);
        for (const char* name : {"Library/Application Support", "a", "b", "work"}) {
            fs::create_directories(root / name);
        }
        fs::current_path(root / "work");
        model.workingFolder = root / "work";
        model.trash = Tolvex::FileNames::GetTrashFolderPath();
        model.disk = ReadDisk();
    }

    void Step(unsigned char action, unsigned char item) {
        constexpr void (Run::*actions[])(unsigned char) = {&Run::Make,   &Run::Trash, &Run::PutBack, &Run::CanPutBack,
                                                           &Run::Touch,  &Run::Purge, &Run::Age_,    &Run::Stray,
                                                           &Run::Vanish, &Run::Empty, &Run::Delete};
        (this->*actions[action % std::size(actions)])(item);
        Require(trashDB.files.empty(), "the database is unloaded");
        Require(ReadDisk() == model.disk, "the disk is as expected");
        RequireDatabase();
    }

private:
    static bool IsFolderItem(const std::string& path) { return fs::path(path).filename() == "set"; }

    std::string Source(unsigned char item) const {
        constexpr const char* names[] = {"a/take.wav", "b/take.wav", "b/README", "a/set"};
        return root / names[item % std::size(names)];
    }

    /// One of the things in the trash or in the database; empty when there is none.
    std::string Thing(unsigned char item) const {
        const std::vector<std::string> children = model.Children(model.trash);
        std::set<std::string> things(children.begin(), children.end());
        for (const auto& entry : model.database) {
            things.insert(entry.first);
        }
        return things.empty() ? "" : *std::next(things.begin(), item % static_cast<int>(things.size()));
    }

    void Write(const std::string& path) {
        model.disk[path] = std::string(1, ++content);
        std::ofstream(path) << content;
    }

    void Make(unsigned char item) {
        const std::string path = Source(item);
        if (!IsFolderItem(path)) {
            Write(path);
            return;
        }
        for (const std::string& folder : {path, path + "/empty"}) {
            fs::create_directory(folder);
            model.disk[folder] = Model::folderContent;
        }
        Write(path + "/x.wav");
    }

    void Trash(unsigned char item) {
        if (IsFolderItem(Source(item))) {
            Tolvex::FileNames::DeleteFolderWithContents(Source(item).c_str(), true, false);
        } else {
            Tolvex::FileNames::DeleteFileToRecycleBin(Source(item), true);
        }
        model.Trash(Source(item));
    }

    void PutBack(unsigned char item) {
        const std::string thing = Thing(item);
        Require(Tolvex::FileNames::PutBack(thing) == model.CanPutBack(thing), "put back what is recorded");
        model.PutBack(thing);
    }

    void CanPutBack(unsigned char item) {
        const std::string thing = Thing(item);
        Require(Tolvex::FileNames::CanPutBack(thing) == model.CanPutBack(thing), "known whether it can be put back");
        model.Save();
    }

    void Touch(unsigned char /*item*/) {
        trashDB.Load(model.trash);
        Tolvex::FileNames::TouchFolder(model.trash);
        trashDB.Unload();
        model.Touch();
    }

    void Purge(unsigned char item) {
        const bool all = item % 2 == 1;
        trashDB.Load(model.trash);
        CleanupTrashFolder(model.trash, all);
        CheckDeleteEmptyFolders(model.trash);
        trashDB.Unload();
        model.Purge(model.trash, all);
        for (const std::string& child : model.Children(model.trash)) {
            if (model.IsFolder(child) && !model.HasFiles(child)) {
                model.Remove(child);
            }
        }
        model.Save();
    }

    void Age_(unsigned char item) {
        const std::string thing = Thing(item / 2);
        if (model.database.count(thing) != 0) {
            const Age age = item % 2 == 1 ? Age::Old : Age::Young;
            trashDB.Load(model.trash);
            trashDB.files.at(thing).first.ticks = DaysAgo(age == Age::Old ? 31 : 29);
            trashDB.Unload();
            model.database[thing].age = age;
        }
    }

    void Stray(unsigned char item) {
        constexpr const char* names[] = {"take.wav", "stray", "set/y.wav"};
        const std::string path = model.trash + "/" + names[item % std::size(names)];
        if (model.IsFolder(fs::path(path).parent_path())) {
            Write(path);
        }
    }

    void Vanish(unsigned char item) {
        const std::string thing = Thing(item);
        fs::remove_all(thing);
        model.Remove(thing);
        if (fs::path(thing) == fs::path(model.trash) / ".trash.db") {
            model.database.clear();
        }
    }

    void Empty(unsigned char item) {
        for (const std::string& child : model.Children(Thing(item))) {
            fs::remove_all(child);
            model.Remove(child);
        }
    }

    void Delete(unsigned char item) {
        Tolvex::FileNames::DeleteFolderWithContents(Source(item).c_str(), true, true);
        if (model.IsFolder(Source(item))) {
            model.Remove(Source(item));
        }
    }

    std::map<std::string, std::string> ReadDisk() const {
        std::map<std::string, std::string> disk;
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            std::ifstream file(entry.path());
            disk[entry.path()] = entry.is_directory() ? Model::folderContent
                                 : entry.path().filename() == ".trash.db"
                                     ? Model::databaseContent
                                     : std::string(std::istreambuf_iterator<char>(file), {});
        }
        return disk;
    }

    void RequireDatabase() const {
        TrashDB saved;
        saved.Load(model.trash);
        Require(saved.files.size() == model.database.size(), "the database has the entries expected");
        for (const auto& [key, entry] : saved.files) {
            const auto expected = model.database.find(key);
            Require(expected != model.database.end(), "only those");
            Require(entry.second == expected->second.original, "with their origins");
            const long long ticks = entry.first.ticks;
            const Age age = ticks >= started ? Age::Fresh : ticks > DaysAgo(30) ? Age::Young : Age::Old;
            Require(age == expected->second.age, "and times");
        }
    }

    const fs::path root;
    const long long started = DateTime::Now().ticks;
    char content = 'A';
    Model model;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder scratch;
    setenv("HOME", scratch.path.c_str(), 1);
    Run run(scratch.path);
    constexpr std::size_t mostSteps = 64;
    for (std::size_t i = 0; i + 1 < std::min(size, 2 * mostSteps); i += 2) {
        run.Step(data[i], data[i + 1]);
    }
    return 0;
}
