#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup unique_names
/// Names for something new: first the plain one, then numbered ones from 1 up, the lowest free number winning. For
/// ComposeNewFilenameAndCheckExists A FILE THAT MAY NOT BE READ DOES NOT MAKE ITS NAME TAKEN, and neither does any file
/// while the process has no descriptor left: what is put there must not replace. Nothing is created and
/// nothing is remembered, so two calls in a row give the same name, and another thread or process may take it before
/// its caller does. When k names are taken, k + 1 are probed, and the search has no end but a free name. Callable from
/// any thread.
/// @{

/// A file path that cannot be opened for reading: `stem` and `ext`, else with a number between. `ext` has its leading
/// dot, or is empty. A file that exists but may not be read counts as free; a readable folder counts as taken.
///
///     On the disk:
///     ("/t/take", ".wav") => "/t/take.wav", "/t/take1.wav", "/t/take2.wav", ...
///     ("/t/take", "")     => "/t/take", "/t/take1", ...
FRAMEWORKBASE_EXPORT std::string ComposeNewFilenameAndCheckExists(std::string stem, std::string ext);

/// The same inside `folder`, which may be empty and may or may not end in "/".
///
///     On the disk:
///     ("/t", "take", ".wav")  => "/t/take.wav", ...     ("/t/", "take", ".wav") => "/t/take.wav", ...
///     ("", "take", ".wav")    => "take.wav", ...
FRAMEWORKBASE_EXPORT std::string ComposeNewFilenameAndCheckExists(std::string folder, std::string stem,
                                                                  std::string ext);

/// A path at which nothing exists, neither file nor folder: `stem` and `suffix`, else with a space and a number
/// between. What `stat` cannot reach (a link that leads nowhere, a folder without permission) counts as free.
///
///     On the disk:
///     ("/t/Backup", "")     => "/t/Backup", "/t/Backup 1", "/t/Backup 2", ...
///     ("/t/Take", " (new)") => "/t/Take (new)", "/t/Take 1 (new)", ...
FRAMEWORKBASE_EXPORT std::string ComposeNewFolderAndCheckExists(std::string stem, std::string suffix);

/// The same inside `folder`, which may be empty and may or may not end in "/".
FRAMEWORKBASE_EXPORT std::string ComposeNewFolderAndCheckExists(std::string folder, std::string stem,
                                                                std::string suffix);

/// @}

} // namespace Tolvex::FileNames
