#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup paths
/// Texts in, texts out: a path is a byte string, UTF-8 by custom and never converted or checked. Except for
/// NormalizePath nothing here touches the disk; nothing keeps state, reports an error or folds letter case; everything
/// is callable from any thread. The separator is "/". A backslash is an ordinary character unless a function says that
/// it counts.
/// @{

/// The folder part of `path`, up to and including the last "/". Empty when there is none.
///
///     "/a/b.wav" => "/a/"     "/a/"   => "/a/"
///     "b.wav"    => ""        "a\\b"  => ""
///     "/b.wav"   => "/"       ""      => ""
FRAMEWORKBASE_EXPORT std::string path_rimuovifilename(std::string path);

/// As path_rimuovifilename, for the text before the first zero byte of `path`.
FRAMEWORKBASE_EXPORT std::string GetPathWithoutFilename(std::string path);

/// The text after the last "/" of `path`, whole when there is none. `path` ends at its first zero byte.
///
///     "/a/b.wav" => "b.wav"   "b.wav" => "b.wav"
///     "/a/"      => ""        "a\\b"  => "a\\b"
FRAMEWORKBASE_EXPORT std::string GetFilenameWithoutPath(std::string path);
/// @overload
FRAMEWORKBASE_EXPORT std::wstring GetFilenameWithoutPath(std::wstring path);

/// The text before the last "/" or backslash of `path`, without that separator; the whole path when there is none.
/// path_rimuovifilename counts "/" alone, keeps the separator, and gives "" for a path without one.
///
///     "/a/b.wav" => "/a"      "a/b/"  => "a/b"
///     "/b.wav"   => ""        "a\\b"  => "a"
///     "b.wav"    => "b.wav"   ""      => ""
FRAMEWORKBASE_EXPORT std::string GetFolderPathFromFilename(std::string path);

/// `path` itself: there are no drives here. For callers written where there are. `path` is not modified.
FRAMEWORKBASE_EXPORT std::string GetPathRoot(std::string& path);

/// `folder` with one "/" added unless it ends in one or is empty.
///
///     "/a"  => "/a/"          "/a/" => "/a/"
///     "a\\" => "a\\/"         ""    => ""
FRAMEWORKBASE_EXPORT std::string CheckFolderHasSeparator(std::string folder);

/// The absolute path with links, "." and ".." resolved, single separators and none at the end. A relative `path` is
/// resolved against the working directory. When the path does not exist or a folder on the way may not be searched, and
/// when the result has 1040 bytes or more, `path` comes back as it was; there is no other sign of it. Whether what is
/// there may be read does not count.
///
///     On the disk:
///     "/usr/./bin/.." => "/usr"     "/"              => "/"
///     "/none/../a/"   => "/none/../a/" while nothing exists there
FRAMEWORKBASE_EXPORT std::string NormalizePath(std::string path);

/// `path` itself: names are compared as stored. The one place for another rule.
FRAMEWORKBASE_EXPORT std::string NormalizePathCase(std::string path);

/// Whether both are the same, byte for byte. Nothing is resolved first.
///
///     ("/a", "/a")  => true       ("/A", "/a") => false
///     ("/a/", "/a") => false      ("", "")     => true
FRAMEWORKBASE_EXPORT bool CompareNormalizedPaths(std::string a, std::string b);

/// Whether `path` lies inside `folder`, which may or may not end in "/". Byte for byte; nothing is resolved. Everything
/// lies inside the empty folder.
///
///     ("/a/b/c", "/a/b")  => true     ("/a/b", "/a/b") => false
///     ("/a/b/", "/a/b")   => true     ("/a/bc", "/a/b") => false
///     ("x", "")           => true     ("/A/b/c", "/a/b") => false
FRAMEWORKBASE_EXPORT bool IsPathBelow(std::string path, std::string folder);

/// A path in Windows form with "/" for every backslash. Its first two characters are dropped when the second is ":" and
/// the third a backslash.
///
///     "C:\\Songs\\x.sng" => "/Songs/x.sng"     "C:/x"      => "C:/x"
///     "C:"               => "C:"               "\\\\srv\\x" => "//srv/x"
FRAMEWORKBASE_EXPORT std::string ConvertPathToLocalSystem(std::string path);

/// The bytes of `path` and two zero bytes: a list of one name for shell calls.
///
///     "ab" => {'a', 'b', 0, 0}     "" => {0, 0}
FRAMEWORKBASE_EXPORT std::vector<char> GetShellString(std::string path);

/// GetShellString with each byte widened by itself in the current `LC_CTYPE` locale. Exact for ASCII only: a byte that
/// is no character by itself repeats the element before it (0 at the start).
///
///     "ab" => {L'a', L'b', 0, 0}
FRAMEWORKBASE_EXPORT std::vector<wchar_t> GetShellWString(std::string path);

/// @}

} // namespace Tolvex::FileNames
