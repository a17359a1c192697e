#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup unique_names
/// Names for something new: the plain name if it is free, and otherwise the one with the lowest free number from 1 up.
/// Nothing is created or remembered: two calls in a row return the same name, and another thread or program may take it
/// first. To create the file without replacing one, use `cp(path, "/dev/null")`.
///
/// The search continues until a name is free; if k names are taken, k + 1 are probed. The only exception is
/// `std::bad_alloc`. Callable from any thread.
/// @{

/// Returns `stem` + `ext`, or `stem` + number + `ext`, whichever first cannot be opened for reading. `ext` has its dot
/// or is empty. A readable folder counts as taken. A FILE THAT MAY NOT BE READ COUNTS AS FREE, and so does a dangling
/// link, and every file while the process has no descriptor left.
///
///     On the disk:
///     ("/t/take", ".wav") => "/t/take.wav", "/t/take1.wav", "/t/take2.wav", ...
///     ("/t/take", "")     => "/t/take", "/t/take1", ...
FRAMEWORKBASE_EXPORT std::string ComposeNewFilenameAndCheckExists(std::string stem, std::string ext);

/// Returns such a name inside `folder`, which may be empty and may or may not end in "/".
///
///     On the disk:
///     ("/t", "take", ".wav")  => "/t/take.wav", ...     ("/t/", "take", ".wav") => "/t/take.wav", ...
///     ("", "take", ".wav")    => "take.wav", ...
FRAMEWORKBASE_EXPORT std::string ComposeNewFilenameAndCheckExists(std::string folder, std::string stem,
                                                                  std::string ext);

/// Returns `stem` + `suffix`, or `stem` + space + number + `suffix`, whichever is the first at which neither a file nor
/// a folder exists. What `stat` cannot reach, such as a dangling link, counts as free.
///
///     On the disk:
///     ("/t/Backup", "")     => "/t/Backup", "/t/Backup 1", "/t/Backup 2", ...
///     ("/t/Take", " (new)") => "/t/Take (new)", "/t/Take 1 (new)", ...
FRAMEWORKBASE_EXPORT std::string ComposeNewFolderAndCheckExists(std::string stem, std::string suffix);

/// Returns such a name inside `folder`, which may be empty and may or may not end in "/".
FRAMEWORKBASE_EXPORT std::string ComposeNewFolderAndCheckExists(std::string folder, std::string stem,
                                                                std::string suffix);

/// @}

} // namespace Tolvex::FileNames
