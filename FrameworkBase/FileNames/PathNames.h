#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup paths
/// Functions from strings to strings. A path is a sequence of bytes, UTF-8 by custom, and never
/// converted or checked. Only NormalizePath looks at the disk. Letter case always counts. The separator is "/"; a
/// backslash is an ordinary character unless a function says otherwise. The only exception is `std::bad_alloc`.
/// Callable from any thread.
///
/// A zero byte inside a `std::string` is an ordinary character, unless a function says that the path ends there. What
/// goes to the system always ends at its first zero byte.
/// @{

/// Returns the folder part of `path`, up to and including the last "/". Returns the empty string if there is none.
///
///     "/a/b.wav" => "/a/"     "/a/"   => "/a/"
///     "b.wav"    => ""        "a\\b"  => ""
///     "/b.wav"   => "/"       ""      => ""
FRAMEWORKBASE_EXPORT std::string path_rimuovifilename(std::string path);

/// Returns the folder part, as path_rimuovifilename does, of `path` up to its first zero byte.
FRAMEWORKBASE_EXPORT std::string GetPathWithoutFilename(std::string path);

/// Returns what follows the last "/" of `path`, or the whole path if there is none. `path` ends at its first zero byte.
///
///     "/a/b.wav" => "b.wav"   "b.wav" => "b.wav"
///     "/a/"      => ""        "a\\b"  => "a\\b"
FRAMEWORKBASE_EXPORT std::string GetFilenameWithoutPath(std::string path);
/// Returns what follows the last "/" of a wide path, by the same rules.
FRAMEWORKBASE_EXPORT std::wstring GetFilenameWithoutPath(std::wstring path);

/// Returns what is before the last "/" or backslash of `path`, without that separator, or the whole path if there is
/// none. path_rimuovifilename counts only "/", keeps the separator, and returns the empty string for a path without
/// one.
///
///     "/a/b.wav" => "/a"      "a/b/"  => "a/b"
///     "/b.wav"   => ""        "a\\b"  => "a"
///     "b.wav"    => "b.wav"   ""      => ""
FRAMEWORKBASE_EXPORT std::string GetFolderPathFromFilename(std::string path);

/// Returns `path` unchanged, as there are no drives here. `path` must not be a constant, although it is not modified.
FRAMEWORKBASE_EXPORT std::string GetPathRoot(std::string& path);

/// Returns `folder` with a "/" appended, unless it ends in one or is empty.
///
///     "/a"  => "/a/"          "/a/" => "/a/"
///     "a\\" => "a\\/"         ""    => ""
FRAMEWORKBASE_EXPORT std::string CheckFolderHasSeparator(std::string folder);

/// Returns the absolute path with links, "." and ".." resolved, single separators and none at the end. A relative
/// `path` is resolved against the working directory. Returns `path` unchanged if it does not exist, if a folder on the
/// way may not be searched, or if the result has 1040 bytes or more; callers cannot tell this from success. The file
/// itself need not be readable.
///
///     On the disk:
///     "/usr/./bin/.." => "/usr"     "/"              => "/"
///     "/none/../a/"   => "/none/../a/" while nothing exists there
FRAMEWORKBASE_EXPORT std::string NormalizePath(std::string path);

/// Returns `path` unchanged: names are compared as they are stored.
FRAMEWORKBASE_EXPORT std::string NormalizePathCase(std::string path);

/// Returns true if both paths are equal, byte for byte. Nothing is resolved first.
///
///     ("/a", "/a")  => true       ("/A", "/a") => false
///     ("/a/", "/a") => false      ("", "")     => true
FRAMEWORKBASE_EXPORT bool CompareNormalizedPaths(std::string a, std::string b);

/// Returns true if `path` is inside `folder`, which may or may not end in "/". Paths are compared byte for byte, and
/// nothing is resolved. Everything is inside the empty folder.
///
///     ("/a/b/c", "/a/b")  => true     ("/a/b", "/a/b") => false
///     ("/a/b/", "/a/b")   => true     ("/a/bc", "/a/b") => false
///     ("x", "")           => true     ("/A/b/c", "/a/b") => false
FRAMEWORKBASE_EXPORT bool IsPathBelow(std::string path, std::string folder);

/// Returns a path in Windows form with "/" for every backslash. Drops the first two characters if the second is ":" and
/// the third is a backslash.
///
///     "C:\\Songs\\x.sng" => "/Songs/x.sng"     "C:/x"      => "C:/x"
///     "C:"               => "C:"               "\\\\srv\\x" => "//srv/x"
FRAMEWORKBASE_EXPORT std::string ConvertPathToLocalSystem(std::string path);

/// Returns the bytes of `path` and two zero bytes, which is a list of one name for shell calls.
///
///     "ab" => {'a', 'b', 0, 0}     "" => {0, 0}
FRAMEWORKBASE_EXPORT std::vector<char> GetShellString(std::string path);

/// Returns GetShellString with each byte widened by itself in the current `LC_CTYPE` locale. This is exact only for
/// ASCII: a byte that is no character by itself repeats the element before it, or is 0 at the start.
///
///     "ab" => {L'a', L'b', 0, 0}
FRAMEWORKBASE_EXPORT std::vector<wchar_t> GetShellWString(std::string path);

/// @}

} // namespace Tolvex::FileNames
