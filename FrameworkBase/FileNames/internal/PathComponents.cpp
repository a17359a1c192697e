#include <FrameworkBase/FileNames/internal/PathComponents.h>

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

} // namespace Tolvex::FileNames

void SplitPath(const std::string& path, std::vector<std::string>& parts) {
    Tolvex::FileNames::PathComponents components(path);
    for (std::string_view component; components.Next(component);) {
        parts.emplace_back(component);
    }
}
