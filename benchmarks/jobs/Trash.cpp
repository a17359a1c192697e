#include "benchmarks/Jobs.h"
#include <FrameworkBase/Trash/Trash.h>
#include <ctime>

static void MoveToTrashByHand(Path path) {
    const std::string trash = TrashFolder();
    mkdir(Below("Library/Application Support/Tolvex Studio 10").c_str(), 0777);
    if (struct stat status{}; stat(trash.c_str(), &status) != 0) {
        mkdir(trash.c_str(), 0777);
    }
    Records records;
    LoadByHand(records);
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    std::string inside = trash + '/' + name;
    for (int i = 1; OpensByHand(inside); ++i) {
        inside = trash + '/' + name.substr(0, dot) + std::to_string(i) + name.substr(dot);
    }
    std::rename(path.c_str(), inside.c_str());
    records[inside] = {std::time(nullptr), path};
    SaveByHand(records);
}
static void PutBackByHand(Path path) {
    mkdir(Below("Library/Application Support/Tolvex Studio 10").c_str(), 0777);
    Records records;
    LoadByHand(records);
    if (const auto record = records.find(path); record != records.end() && !record->second.second.empty()) {
        std::rename(path.c_str(), record->second.second.c_str());
        records.erase(record);
    }
    SaveByHand(records);
}
static std::vector<std::string> items;

/// Empties the trash and makes `count` files, each in a folder of its own.
static void PrepareItems(long count, bool ofOneName) {
    fs::remove_all(TrashFolder());
    fs::create_directories(TrashFolder());
    items.clear();
    for (long i = 0; i < count; ++i) {
        const std::string folder = Below("put " + std::to_string(i));
        fs::create_directory(folder);
        items.push_back(folder + "/take" + (ofOneName ? "" : '-' + std::to_string(i)) + ".wav");
        WriteFileAtOnce(items.back(), "");
    }
}

const Registration moves([] {
    const auto move = [](Path path) { Tolvex::FileNames::DeleteFileToRecycleBin(path, true); };
    Measure(moveToTrash, library, [move] { move(ItemOutside()); });
    Measure(moveToTrash, plainest, [] { MoveToTrashByHand(ItemOutside()); });
    Measure(putBack, library, [] { Tolvex::FileNames::PutBack(ItemInside()); });
    Measure(putBack, plainest, [] { PutBackByHand(ItemInside()); });
    const auto prepareNames = [](long count) { PrepareItems(count, false); };
    const auto prepareOneName = [](long count) { PrepareItems(count, true); };
    for (const PreparedJob& job :
         {PreparedJob{"growth/move n files to the trash", {750, 1'500, 3'000}, prepareNames},
          PreparedJob{"growth/move n files of one name there", {2'500, 5'000, 10'000}, prepareOneName}}) {
        Measure(job, library, [move] { std::for_each(items.begin(), items.end(), move); });
        Measure(job, plainest, [] { std::for_each(items.begin(), items.end(), MoveToTrashByHand); });
    }
});
