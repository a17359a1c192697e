#include "TrashHost.h"

#include <FrameworkBase/Base/Version.h>

#include <CLI/CLI.hpp>
#include <clocale>
#include <iostream>
#include <numeric>

namespace {

/// The arguments from the last to the first, as the parser wants them. All but the command and the options get a mark,
/// "./", so that the parser finds neither options, nor commands, nor lists in brackets in them.
std::vector<std::string> Arguments(int count, char** values) {
    std::vector<std::string> arguments;
    bool isOption = true;
    for (int i = 1; i < count; ++i) {
        const std::string value = values[i];
        if (isOption && value == "--") {
            isOption = false;
        } else {
            arguments.push_back(i == 1 || (isOption && value[0] == '-') ? value : "./" + value);
        }
    }
    return {arguments.rbegin(), arguments.rend()};
}

void Run(CLI::App& app, int count, char** values) {
    std::vector<std::string> paths;
    bool all = false;
    const auto add = [&](const char* name, const char* help, const char* of, const char* ofHelp, auto command) {
        CLI::App* const added = app.add_subcommand(name, help);
        added->add_option(of, paths, ofHelp)->required()->type_name("");
        added->callback([&paths, command] {
            for (std::string& path : paths) {
                path.erase(0, 2); // the mark
            }
            command(paths);
        });
    };
    add("put", "Move files and folders into the trash", "PATH",
        "File or folder. For each one the library saves the whole database: of many, the last take longer",
        PutIntoTrash);
    add("restore", "Move items back to where they were", "ITEM",
        "As list shows it, or its full path in the trash. Of many, the first take longer", RestoreFromTrash);
    app.add_subcommand("list", "Show what is in the trash")->callback(PrintTrash);
    CLI::App* const purge = app.add_subcommand("purge", "Delete what has been in the trash for 30 days");
    purge->add_flag("--all", all, "Delete all that is recorded, and every folder");
    purge->callback([&all] { PurgeTrash(all); });
    app.require_subcommand(1);
    app.set_version_flag("--version", "trash-host " + std::string(FrameworkBase::Version::Text));
    app.parse(Arguments(count, values));
}

} // namespace

int main(int count, char** values) {
    // How wide characters are is asked of the system; its own messages stay English.
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr || std::setlocale(LC_CTYPE, "UTF-8") != nullptr);
    CLI::App app("The application's trash on the command line. Exit codes: 0 done, 1 not done, 2 not understood,\n"
                 "128 and the signal's number when interrupted.",
                 "trash-host");
    int code = 1;
    std::string complaint;
    try {
        Run(app, count, values);
        std::cout.flush();
        RefuseIf(!std::cout, "the output could not be written");
        return 0;
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        code = 2;
        complaint = count > 1 && app.get_subcommands().empty() ? "there is no such command" : error.what();
        complaint = std::accumulate(values + 1, values + count, complaint + ":",
                                    [](const auto& line, const char* value) { return line + " " + Shown(value); });
    } catch (const Refusal& refusal) {
        code = interruption == 0 ? 1 : 128 + interruption;
        complaint = refusal.what();
    } catch (const std::exception& exception) {
        complaint = Shown(exception.what());
    }
    ShowProgress("");
    std::cout.flush();
    std::cerr << "trash-host: " << complaint << '\n';
    return code;
}
