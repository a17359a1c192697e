#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup relative_paths
/// GetRelativePath and GetAbsoluteFromRelativePath take "/" and a backslash for separators and compare components
/// without regard to letter case, by the rules of the locale in force: that of ASCII in the C locale. A separator at
/// the front is skipped; each further one ends a component, which is empty when nothing stands before it: "/" has none,
/// "//" one, "a//b" three. The only exception is `std::bad_alloc`.
/// @{

/// The path that leads from the folder `base` to the folder `target`: a "../" for each component of `base` below the
/// common part, then the components of `target` below it, each followed by "/". Each of the two runs stops at the first
/// empty component. `flag` becomes false when at least the first components are the same, and true otherwise, also when
/// one of the paths has no component; the result is meaningless then.
///
///     ("/s/a/Audio/", "/s/a/") => "Audio/", false      ("/s/b/", "/s/a/")    => "../b/", false
///     ("/s/a/", "/s/a/")       => "", false            ("/S/A/b/", "/s/a/")  => "b/", false
///     ("/s/a//b/", "/s/")      => "a/", false          ("/x/y/", "/s/a/")    => "../../x/y/", true
///     ("/s", "/")              => "s/", true           ("/", "/")            => "", true
///
/// Callable from any thread.
FRAMEWORKBASE_EXPORT std::string GetRelativePath(const std::string& target, const std::string& base, bool& flag);

/// The path that `relative` names as seen from the folder `base`, with "/" before every component and, unless the last
/// one is empty, none at the end. Only ".." at the front of `relative` are resolved, and no further than to the root;
/// all else is copied. A relative `base` counts as one from the root.
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

/// `path` made absolute against `baseFolder`, or against the working directory when that is null, as
/// GetAbsoluteFromRelativePath does it, and then normalised by NormalizePath. The ".." in front of a relative path
/// are resolved first, without a look at the disk, even where the base is a link; the rest is resolved when the whole
/// exists. Without a base a relative path stays relative. Only a
/// leading "/" makes a path absolute: convert Windows forms with ConvertPathToLocalSystem first.
///
///     On the disk:
///     ("", any)               => ""
///     ("/usr/bin/..", any)    => "/usr"
///     ("a.wav", "/new/song")  => "/new/song/a.wav"     while nothing exists there
///     ("../b", "/new/song")   => "/new/b"              while nothing exists there
///     ("a.wav", "")           => "a.wav"               or resolved, if it exists
///
/// Callable from any thread; the working directory is the process's, see TolvexSetCurrentDirectory.
FRAMEWORKBASE_EXPORT std::string GetAbsolutePath(std::string path, const char* baseFolder);

/// Expresses `file` relative to the folder of `referenceFile`, as a song refers to its takes, and stores it in `out`,
/// which may be one of the other two. False, with `out` untouched, when their folders have no first component in
/// common: "/song.sng" and "/take.wav" have none at all. A relative `file` is taken from `referenceFile` itself, not
/// from its folder. `file` is normalised, `referenceFile` is not: pass it normalised. The file's name is what follows
/// the last "/": a backslash is part of it.
///
///     ("/s/a/song.sng", "/s/a/take.wav")       => "take.wav", true
///     ("/s/a/song.sng", "/s/a/Audio/take.wav") => "Audio/take.wav", true
///     ("/s/a/song.sng", "/s/b/take.wav")       => "../b/take.wav", true
///     ("/s/a/song.sng", "/Volumes/d/take.wav") => "", false
FRAMEWORKBASE_EXPORT bool GetPathRelativeToOtherFile(std::string& out, const std::string& referenceFile,
                                                     const std::string& file);

/// @}

} // namespace Tolvex::FileNames
