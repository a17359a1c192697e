#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tolvex::FileNames {

/// `folder` and `name` with one "/" between them unless `folder` ends in one: the joining rule of the whole library.
/// `name` is not looked at.
///
///     ("a", "b")  => "a/b"     ("a/", "b")  => "a/b"      ("", "b") => "b"
///     ("a", "/b") => "a//b"    ("a/", "/b") => "a//b"     ("a", "") => "a/"
std::string ComposePath(std::string folder, std::string name);

/// Whether `character` parts components where a backslash counts.
constexpr bool IsSeparator(char character) { return character == '/' || character == '\\'; }

/// The components of a path from front to back, without copying them. One leading separator and one at the end give no
/// component; any other two side by side give an empty one. A backslash separates too; "." and ".." are components like
/// any other. The last component ends at its first zero byte.
class PathComponents {
public:
    /// Refers to the characters of `path`, which must outlive it.
    explicit PathComponents(std::string_view path);

    /// Stores the next component and returns true, or returns false when there is none left.
    bool Next(std::string_view& component);

private:
    std::string_view rest;
};

/// Whether two components, each up to its first zero byte, are the same but for ASCII letter case.
bool SameComponent(std::string_view a, std::string_view b);

} // namespace Tolvex::FileNames

/// Appends the components of `path`, as PathComponents has them, to `parts`.
///
///     "/a/b/" => "a", "b"       "a//b" => "a", "", "b"     "" and "/" => nothing
///     "//a"   => "", "a"        "a\\b" => "a", "b"         "./.."     => ".", ".."
void SplitPath(const std::string& path, std::vector<std::string>& parts);
