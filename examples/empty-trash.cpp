// Shows what is in the application's trash, purges it and waits until that is done: what has been there for 30 days, or
// with the argument --all everything, goes for good.

#include "safe-trash/SafeTrash.h"

#include <iostream>
#include <string>

namespace {

bool PrintTrash() {
    const SafeTrash::Contents trash = SafeTrash::List();
    std::cout << trash.items.size() << " items in the trash\n";
    for (const SafeTrash::Item& item : trash.items) {
        std::cout << item.path << " from " << (item.origin.empty() ? "an unknown place" : item.origin) << '\n';
    }
    std::cerr << trash.message << (trash.message.empty() ? "" : "\n");
    return trash.message.empty();
}

} // namespace

int main(int count, char** arguments) {
    const bool all = count > 1 && arguments[1] == std::string("--all");
    if (!PrintTrash()) {
        return 1;
    }
    const SafeTrash::Report report = SafeTrash::Purge(all);
    std::cerr << report.message << (report.message.empty() ? "" : "\n");
    return PrintTrash() && report.isDone ? 0 : 1;
}
