#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup relative_paths
/// GetRelativePath and GetAbsoluteFromRelativePath take "/" and a backslash for separators, and compare components
/// without regard to letter case, by the rules of the current locale. A separator at the front is skipped; each further
/// one ends a component, which is empty if nothing is before it: "/" has no component, "//" has one, "a//b" has three.
/// The only exception is `std::bad_alloc`.
/// @{

/// Returns the path from the folder `base` to the folder `target`: a "../" for each component of `base` below the
/// common part, then the components of `target` below it, each followed by "/". Each of the two runs stops at the first
/// empty component. Sets `flag` to false if at least the first components are the same, and to true otherwise, also if
/// one of the paths has no component; the result is meaningless then.
///
///     ("/s/a/Audio/", "/s/a/") => "Audio/", false      ("/s/b/", "/s/a/")    => "../b/", false
///     ("/s/a/", "/s/a/")       => "", false            ("/S/A/b/", "/s/a/")  => "b/", false
///     ("/s/a//b/", "/s/")      => "a/", false          ("/x/y/", "/s/a/")    => "../../x/y/", true
///     ("/s", "/")              => "s/", true           ("/", "/")            => "", true
///
/// Callable from any thread.
FRAMEWORKBASE_EXPORT std::string GetRelativePath(const std::string& target, const std::string& base, bool& flag);

/// Returns the path that `relative` names in the folder `base`, with "/" before every component. There is none at the
/// end, unless the last component is empty. Only ".." at the front of `relative` are resolved, and no further than to
/// the root; all else is copied. A relative `base` counts from the root.
///
///     ("/s/a", "../b/c.wav") => "/s/b/c.wav"     ("s/a", "c")    => "/s/a/c"
///     ("/s/a", "../../../c") => "/c"             ("/s/a/", "")   => "/s/a"
///     ("/s/a", "./c")        => "/s/a/./c"       ("/", "..")     => ""
///
/// Callable from any thread.
FRAMEWORKBASE_EXPORT std::string GetAbsoluteFromRelativePath(const std::string& base, const std::string& relative);

/// @}

namespace Tolvex::FileNames {

/// @addtogroup relative_paths
/// @{

/// Returns `path` made absolute and normalised. A path that does not begin with "/" is first appended to `baseFolder`,
/// or to the working directory if that is null, as GetAbsoluteFromRelativePath does it: backslashes in both become "/",
/// and each ".." at the front of `path` removes a component of the base without a look at the disk, even where the base
/// is a link. If `baseFolder` is empty, or the working directory cannot be determined, nothing is prepended.
/// NormalizePath then resolves the result, if it exists, against the working directory. Only a leading "/" makes a path
/// absolute: convert Windows forms with ConvertPathToLocalSystem first.
///
///     On the disk:
///     ("", any)               => ""
///     ("/usr/bin/..", any)    => "/usr"
///     ("a.wav", "/new/song")  => "/new/song/a.wav"     while nothing exists there
///     ("../b", "/new/song")   => "/new/b"              while nothing exists there
///     ("a.wav", "")           => "a.wav"               or resolved, if it exists
///
/// Callable from any thread. The working directory is the process's: see TolvexSetCurrentDirectory.
FRAMEWORKBASE_EXPORT std::string GetAbsolutePath(std::string path, const char* baseFolder);

/// Expresses `file` relative to the folder of `referenceFile`, as a song refers to its takes, and stores it in `out`,
/// which may be one of the other two. Returns false, and leaves `out` unchanged, if their folders have no first
/// component in common: "/song.sng" and "/take.wav" have none at all.
///
/// A relative `file` is taken from `referenceFile` itself, not from its folder, and its backslashes become "/". In an
/// absolute one a backslash is an ordinary character of the file's name.
///
/// `file` is normalised if it exists; `referenceFile` is not: pass it normalised. A doubled "/" in a path that is not
/// normalised LOSES THE FOLDERS BEHIND IT, or adds one. Folder names that differ in letter case alone count as the
/// same, so on a volume that keeps them apart the result may name another file.
///
///     ("/s/a/song.sng", "/s/a/take.wav")       => "take.wav", true
///     ("/s/a/song.sng", "/s/a/Audio/take.wav") => "Audio/take.wav", true
///     ("/s/a/song.sng", "/s/b/take.wav")       => "../b/take.wav", true
///     ("/s/a/song.sng", "/Volumes/d/take.wav") => "", false
///     ("/s/a/song.sng", "/S/A/take.wav")       => "take.wav", true
///     ("/s/a/song.sng", "/s/a//Audio/new.wav") => "new.wav", true
///     ("/s//a/song.sng", "/s/a/new.wav")       => "a/new.wav", true
///     ("/s/a/song.sng", "x\\y.wav")            => "song.sng/x/y.wav", true
FRAMEWORKBASE_EXPORT bool GetPathRelativeToOtherFile(std::string& out, const std::string& referenceFile,
                                                     const std::string& file);

/// @}

} // namespace Tolvex::FileNames
