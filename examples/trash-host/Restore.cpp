#include "Commands.h"
#include "OpenTrash.h"
#include "Text.h"

#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/Trash/Trash.h>

#include <iostream>
#include <set>

using namespace Tolvex::FileNames;

namespace {

/// The recorded path of the item that the user calls `item`.
std::string FindRecord(const OpenTrash& trash, const std::string& item) {
    std::set<std::string> matches;
    for (const auto& [path, record] : trash.records) {
        const std::string name = trash.NameOf(path);
        if (item == path || item == name || item == "./" + name || item == name + "/" || item == Shown(name)) {
            matches.insert(path);
        }
    }
    if (matches.size() != 1) {
        throw Refusal(Shown(item) + (matches.empty() ? " is not recorded in the trash" : " names more than one item"));
    }
    return *matches.begin();
}

/// Refuses unless the item recorded as `path` can go back without replacing anything.
void Check(const OpenTrash& trash, const std::string& path) {
    const std::string name = trash.NameOf(path);
    const std::string& origin = trash.records.at(path).origin;
    const std::string folder = path_rimuovifilename(origin);
    const auto refuseIf = [&name](bool isObstacle, const std::string& reason) {
        if (isObstacle) {
            throw Refusal(Shown(name) + " cannot go back: " + reason);
        }
    };
    const bool isItem = name.find('/') == std::string::npos && name != "." && name != ".." && name != ".trash.db";
    refuseIf(!isItem, "it is not an item of this trash by itself");
    refuseIf(origin.empty() || origin.front() != '/', "the trash database does not tell where it came from");
    refuseIf(!Exists(path), "it has vanished from the trash");
    refuseIf(Exists(origin), "something else is at " + Shown(origin));
    refuseIf(!CheckFileExistsEvenIfNotAccessible(folder), "the folder " + Shown(folder) + " is gone");
    trash.TryMove(OpenTrash::Direction::Out, name, origin);
}

void RestoreOne(OpenTrash& trash, const std::string& path) {
    Check(trash, path);
    const std::string origin = trash.records.at(path).origin;
    Records expected = trash.records;
    expected.erase(path);
    PutBack(path);
    trash.Reload();
    Verify(trash.records == expected && Exists(origin) && !Exists(path), Shown(origin) + " is back");
    trash.Forget(path);
    std::cout << Shown(trash.NameOf(path)) << "  ->  " << Shown(origin) << '\n';
}

} // namespace

void RestoreFromTrash(const std::vector<std::string>& items) {
    OpenTrash trash(Use::Change);
    std::vector<std::string> paths;
    std::set<std::string> origins;
    for (const std::string& item : items) {
        paths.push_back(FindRecord(trash, item));
        Check(trash, paths.back());
        if (!origins.insert(trash.records.at(paths.back()).origin).second) {
            throw Refusal(Shown(item) + " and another item cannot both go to one place");
        }
    }
    for (const std::string& path : paths) {
        RestoreOne(trash, path);
    }
}
