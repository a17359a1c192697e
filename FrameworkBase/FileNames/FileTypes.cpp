#include <FrameworkBase/FileNames/FileTypes.h>

#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Files/internal/ReadProbe.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Tolvex::FileNames {

bool IsSongFile(std::string path) {
    const std::array<std::string, 7> songFileExtensions = {FileExtensionSng, FileExtensionSgw,  "sngw",
                                                           FileExtensionEdl, FileExtensionEdl2, FileExtensionAaf,
                                                           FileExtensionOmf};
    return std::any_of(songFileExtensions.begin(), songFileExtensions.end(),
                       [&path](const std::string& extension) { return EndsWithExtension(path, extension); });
}

bool IsSongFolder(std::string folder) {
    return !folder.empty() && OpensForReading(ComposePath(std::move(folder), "Tolvex.db"));
}

} // namespace Tolvex::FileNames
