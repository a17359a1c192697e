#pragma once

#include <string>

namespace Tolvex::FileNames {

/// `name` without the text from the last dot of the file name on.
///
///     "a.b.c" => "a.b"     "/x.y/a" => "/x.y/a"     ".x" => ""
std::string RemoveExtension(std::string name);

/// Whether `name`, up to its first zero byte, ends in "." and `extension`, which has no dot of its own. Letter case is
/// ignored, by the rules of the locale in force: that of ASCII in the C locale. Of an extension of more than 48
/// characters only those are compared, but `name` must be long enough for all of it.
///
///     ("Mix.SNG", "sng") => true     (".sng", "sng") => true
///     ("sng", "sng")     => false    ("a.", "")      => true
bool EndsWithExtension(const std::string& name, const std::string& extension);

} // namespace Tolvex::FileNames
