// Moves a file and a folder into the application's trash and puts them back.

#include "safe-trash/SafeTrash.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

namespace fs = std::filesystem;

namespace {

bool Print(const SafeTrash::Report& report) {
    if (report.isDone) {
        std::cout << "now at " << report.path << '\n';
    } else {
        std::cerr << report.path << ": " << report.message << '\n';
    }
    return report.isDone;
}

} // namespace

int main() {
    const fs::path song = fs::current_path() / "delete-and-undo";
    fs::create_directories(song / "Audio");
    std::ofstream(song / "Audio" / "bass.wav") << "a bass";
    std::ofstream(song / "take.wav") << "a take";

    std::vector<std::string> deleted;
    for (const fs::path& item : {song / "take.wav", song / "Audio"}) {
        const SafeTrash::Report report = SafeTrash::Put(item);
        if (!Print(report)) {
            return 1; // the item is where it was, or where the report says
        }
        deleted.push_back(report.path);
    }
    for (const std::string& item : deleted) {
        if (!Print(SafeTrash::PutBack(item))) {
            return 1;
        }
    }
    fs::remove(song / "Audio" / "bass.wav");
    fs::remove(song / "Audio");
    fs::remove(song / "take.wav");
    fs::remove(song);
}
