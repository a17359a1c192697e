#include <FrameworkBase/Trash/Trash.h>

#include "benchmarks/Inputs.h"

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void MoveToTrashByHand() {
    Records records;
    LoadByHand(records);
    std::rename(ItemOutside().c_str(), ItemInside().c_str());
    records[ItemInside()] = {std::time(nullptr), ItemOutside()};
    SaveByHand(records);
}

void PutBackByHand() {
    Records records;
    LoadByHand(records);
    const auto record = records.find(ItemInside());
    std::rename(ItemInside().c_str(), record->second.second.c_str());
    records.erase(record);
    SaveByHand(records);
}

/// The looks at the disk that the library promises: it makes a folder if need be, and opens `paths`.
void Look(std::initializer_list<std::string> paths) {
    mkdir(TrashFolder().c_str(), 0777);
    for (Path path : paths) {
        if (const int file = open(path.c_str(), O_RDONLY); file >= 0) {
            close(file);
        }
    }
}

const Registration moves([] {
    Measure(moveToTrash, library, [] { Tolvex::FileNames::DeleteFileToRecycleBin(ItemOutside(), true); });
    Measure(moveToTrash, limit, MoveToTrashByHand);
    Measure(moveToTrash, limitWithSteps, [] {
        Look({TrashFolder(), DatabaseFile(), ItemInside()});
        MoveToTrashByHand();
    });
    Measure(putBack, library, [] { Tolvex::FileNames::PutBack(ItemInside()); });
    Measure(putBack, limit, PutBackByHand);
    Measure(putBack, limitWithSteps, [] {
        Look({DatabaseFile()});
        PutBackByHand();
    });
});

} // namespace
