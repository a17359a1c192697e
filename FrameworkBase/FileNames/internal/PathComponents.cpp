#include "FrameworkBase/FileNames/internal/PathComponents.h"

#include <algorithm>
#include <strings.h>

namespace Tolvex::FileNames {

std::string ComposePath(std::string folder, std::string name) {
    if (folder.empty()) {
        return name;
    }
    folder.reserve(folder.size() + 1 + name.size());
    if (folder.back() != '/') {
        folder += '/';
    }
    folder += name;
    return folder;
}

PathComponents::PathComponents(std::string_view path) : rest(path) {
    if (!rest.empty() && IsSeparator(rest.front())) {
        rest.remove_prefix(1);
    }
}

bool PathComponents::Next(std::string_view& component) {
    if (rest.empty()) {
        return false;
    }
    const auto* const separator = std::find_if(rest.begin(), rest.end(), IsSeparator);
    component = rest.substr(0, static_cast<std::size_t>(separator - rest.begin()));
    if (separator == rest.end()) {
        rest = {};
        component = component.substr(0, component.find('\0'));
    } else {
        rest.remove_prefix(component.size() + 1);
    }
    return true;
}

bool SameComponent(std::string_view a, std::string_view b) {
    a = a.substr(0, a.find('\0'));
    b = b.substr(0, b.find('\0'));
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

} // namespace Tolvex::FileNames

void SplitPath(const std::string& path, std::vector<std::string>& parts) {
    Tolvex::FileNames::PathComponents components(path);
    for (std::string_view component; components.Next(component);) {
        parts.emplace_back(component);
    }
}
