#include <FrameworkBase/FileNames/UniqueNames.h>

#include <FrameworkBase/FileNames/FolderListing.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>
#include <FrameworkBase/Files/internal/ReadProbe.h>

#include <cstdint>
#include <utility>

namespace Tolvex::FileNames {

namespace {

/// Returns the first of `stem` `tail`, `stem` `gap` 1 `tail`, `stem` `gap` 2 `tail` ... for which `isTaken` is false.
template <class Probe>
std::string FirstFreeName(const std::string& stem, const char* gap, const std::string& tail, Probe isTaken) {
    std::string candidate = stem + tail;
    for (std::uint32_t counter = 1; isTaken(candidate); ++counter) {
        candidate = stem;
        candidate += gap;
        candidate += std::to_string(static_cast<std::int32_t>(counter));
        candidate += tail;
    }
    return candidate;
}

} // namespace

std::string ComposeNewFilenameAndCheckExists(std::string stem, std::string ext) {
    return FirstFreeName(stem, "", ext, OpensForReading);
}

std::string ComposeNewFilenameAndCheckExists(std::string folder, std::string stem, std::string ext) {
    return ComposeNewFilenameAndCheckExists(ComposePath(std::move(folder), std::move(stem)), std::move(ext));
}

std::string ComposeNewFolderAndCheckExists(std::string stem, std::string suffix) {
    return FirstFreeName(stem, " ", suffix, CheckFileExistsEvenIfNotAccessible);
}

std::string ComposeNewFolderAndCheckExists(std::string folder, std::string stem, std::string suffix) {
    return ComposeNewFolderAndCheckExists(ComposePath(std::move(folder), std::move(stem)), std::move(suffix));
}

} // namespace Tolvex::FileNames
