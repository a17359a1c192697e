// The application's trash on the command line: arguments, messages and exit codes over the trash module.

#include "../safe-trash/SafeTrash.h"

#include <FrameworkBase/Base/Version.h>
#include <FrameworkBase/Trash/Trash.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <set>

namespace fs = std::filesystem;

namespace {

/// Why a command was not carried out, in one line.
struct Refusal : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Returns the string with control characters as \xNN, so that no file name can play tricks on the terminal.
std::string Shown(const std::string& string) {
    constexpr const char* digits = "0123456789abcdef";
    std::string shown;
    for (const char character : string) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F) {
            shown += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
        } else {
            shown += character;
        }
    }
    return shown;
}

std::string TrashFolder() { return Tolvex::FileNames::GetTrashFolderPath(); }
std::string NameOf(const std::string& item) { return fs::path(item).filename(); }

/// Throws unless the item was moved. Where it is now is part of the message if that is a third place.
void Require(const SafeTrash::Report& report, const std::string& before) {
    if (!report.isDone) {
        const std::string elsewhere = report.path == before ? "" : "; it is at " + report.path;
        throw Refusal(before + ": " + report.message + elsewhere);
    }
    if (!report.message.empty()) {
        std::cerr << "trash-host: " << Shown(report.message) << '\n';
    }
}

SafeTrash::Contents Contents() {
    SafeTrash::Contents trash = SafeTrash::List();
    if (!trash.message.empty()) {
        throw Refusal(trash.message);
    }
    return trash;
}

std::string FullPath(const std::string& path) {
    if (path.empty()) {
        return path;
    }
    const fs::path full = fs::absolute(path);
    return full.has_filename() ? full : full.parent_path(); // without a trailing "/"
}

/// Throws, before anything is moved, if one of the items cannot go into the trash, or would go with another.
void CheckAll(const std::vector<std::string>& items) {
    for (const std::string& item : items) {
        const std::string problem = SafeTrash::ProblemOf(item);
        if (!problem.empty()) {
            throw Refusal(item + ": " + problem);
        }
        const auto isAbove = [&item](const std::string& other) {
            return &other != &item && (item + '/').rfind(other + '/', 0) == 0;
        };
        if (std::any_of(items.begin(), items.end(), isAbove)) {
            throw Refusal(item + ": it would go with another item");
        }
    }
}

void Put(const std::vector<std::string>& paths) {
    std::vector<std::string> items;
    std::transform(paths.begin(), paths.end(), std::back_inserter(items), FullPath);
    CheckAll(items);
    for (const std::string& item : items) {
        const SafeTrash::Report report = SafeTrash::Put(item);
        Require(report, item);
        std::cout << Shown(NameOf(report.path) + "  <-  " + item) << '\n';
    }
}

void Restore(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const std::string item = name.rfind('/', 0) == 0 ? name : TrashFolder() + '/' + name;
        const SafeTrash::Report report = SafeTrash::PutBack(item);
        Require(report, item);
        std::cout << Shown(NameOf(item) + "  ->  " + report.path) << '\n';
    }
}

void List() {
    std::cout << "DELETED                  NAME  <-  FROM\n";
    for (const SafeTrash::Item& item : Contents().items) {
        const std::string origin = item.origin.empty() ? "not known" : item.origin;
        if (item.arrived == 0) {
            std::cout << "not recorded           ";
        } else {
            std::cout << std::put_time(std::gmtime(&item.arrived), "%Y-%m-%d %H:%M:%S UTC");
        }
        std::cout << "  " << Shown(NameOf(item.path) + "  <-  " + origin) << '\n';
    }
}

void Purge(bool all) {
    const SafeTrash::Contents before = Contents();
    Require(SafeTrash::Purge(all), TrashFolder());
    std::set<std::string> left;
    for (const SafeTrash::Item& item : Contents().items) {
        left.insert(item.path);
    }
    for (const SafeTrash::Item& item : before.items) {
        constexpr std::time_t secondsPerDay = 86400;
        const std::time_t days = 30 - (std::time(nullptr) - item.arrived) / secondsPerDay;
        if (left.count(item.path) == 0) {
            std::cout << "gone   " << Shown(NameOf(item.path)) << '\n';
        } else {
            std::cout << "stays  " << Shown(NameOf(item.path)) << ", days left: " << (item.arrived == 0 ? 30 : days)
                      << '\n';
        }
    }
}

} // namespace

int main(int count, char** values) {
    CLI::App app("The application's trash on the command line. Exit codes: 0 done, 1 not done, 2 not understood.",
                 "trash-host");
    std::vector<std::string> paths;
    bool all = false;
    CLI::App* const put = app.add_subcommand("put", "Move files and folders into the trash");
    put->add_option("PATH", paths, "File or folder; ./PATH if it looks like an option or a command")
        ->required()
        ->type_name("");
    put->callback([&paths] { Put(paths); });
    CLI::App* const restore = app.add_subcommand("restore", "Move items back to where they were");
    restore->add_option("ITEM", paths, "Name in the trash, or full path")->required()->type_name("");
    restore->callback([&paths] { Restore(paths); });
    app.add_subcommand("list", "Show what is in the trash")->callback(List);
    CLI::App* const purge = app.add_subcommand("purge", "Delete what has been in the trash for 30 days");
    purge->add_flag("--all", all, "Delete everything that is recorded, and every folder");
    purge->callback([&all] { Purge(all); });
    app.require_subcommand(1);
    app.set_version_flag("--version", "trash-host " + std::string(FrameworkBase::Version::Text));
    try {
        app.parse(count, values);
        return 0;
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        std::cerr << "trash-host: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& exception) {
        std::cout.flush();
        std::cerr << "trash-host: " << Shown(exception.what()) << '\n';
        return 1;
    }
}
