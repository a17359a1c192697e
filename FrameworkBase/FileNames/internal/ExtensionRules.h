#pragma once

#include <string>

namespace Tolvex::FileNames {

/// Returns `name` without the extension of its final component.
///
///     "a.b.c" => "a.b"     "/x.y/a" => "/x.y/a"     ".x" => ""
std::string RemoveExtension(std::string name);

/// Returns true if `name`, up to its first zero byte, ends in "." and `extension`, which has no dot of its own. Letter
/// case is ignored by the rules of the current locale: that of ASCII in the C locale. Only the first 48 characters of
/// an extension are compared, but `name` must be long enough for all of it.
///
///     ("Mix.SNG", "sng") => true     (".sng", "sng") => true
///     ("sng", "sng")     => false    ("a.", "")      => true
bool EndsWithExtension(const std::string& name, const std::string& extension);

} // namespace Tolvex::FileNames
