#include "Commands.h"
#include "Text.h"

#include <FrameworkBase/Base/TolvexException.h>

#include <CLI/CLI.hpp>
#include <iostream>

namespace {

/// The arguments from the last to the first, as the parser wants them. It would take "[a,b]" for a list of two.
std::vector<std::string> Arguments(int count, char** values) {
    std::vector<std::string> arguments;
    for (int i = count - 1; i > 0; --i) {
        arguments.emplace_back(values[i][0] == '[' ? std::string("./") + values[i] : values[i]);
    }
    return arguments;
}

void Run(int count, char** values) {
    CLI::App app("The application's trash on the command line.", "trash-host");
    app.require_subcommand(1);
    std::vector<std::string> paths;
    bool all = false;
    const auto add = [&app](const char* name, const char* help, std::function<void()> command) {
        return app.add_subcommand(name, help)->callback(std::move(command));
    };
    CLI::App* const put = add("put", "Move files and folders into the trash", [&] { PutIntoTrash(paths); });
    CLI::App* const restore = add("restore", "Move items back to where they were", [&] { RestoreFromTrash(paths); });
    CLI::App* const kinds = add("kinds", "Tell songs and media files apart", [&] { PrintKinds(paths); });
    put->add_option("PATH", paths)->required();
    restore->add_option("ITEM", paths, "As list shows it, or its full path in the trash")->required();
    kinds->add_option("PATH", paths)->required();
    add("purge", "Delete what has been in the trash for 30 days", [&] {
        PurgeTrash(all);
    })->add_flag("--all", all, "Delete all that is recorded, and every folder");
    add("list", "Show what is in the trash", PrintTrash);
    add("tour", "Show all of it on files made for it", RunTour);
    try {
        app.parse(Arguments(count, values));
    } catch (const CLI::Success& help) {
        app.exit(help);
    }
    if (!std::cout.flush()) {
        throw Refusal("the output could not be written");
    }
}

int Complain(const std::string& line) {
    std::cout.flush();
    std::cerr << "trash-host: " << line << '\n';
    return 1;
}

} // namespace

int main(int count, char** values) {
    try {
        Run(count, values);
        return 0;
    } catch (const Refusal& refusal) {
        return Complain(refusal.what());
    } catch (const TolvexException& exception) {
        return Complain(exception.message);
    } catch (const std::exception& exception) {
        return Complain(Shown(exception.what()));
    }
}
