#pragma once

#include <string>
#include <string_view>
#include <strings.h>
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

/// The components of a path from front to back, without copying them. A separator at the front is skipped; each further
/// one ends a component, which is empty when nothing stands before it. A backslash separates too; "." and ".." are
/// components like any other. The last component ends at its first zero byte.
///
/// The functions are here because callers run through whole paths by them.
class PathComponents {
public:
    /// Refers to the characters of `path`, which must outlive it. Begins at `start`: 0, or a place behind a separator,
    /// and then a separator there is not taken for the leading one of the path.
    explicit PathComponents(std::string_view path, std::size_t start = 0);

    /// Stores the next component and returns true, or returns false when there is none left.
    bool Next(std::string_view& component);

private:
    std::string_view rest;
};

inline PathComponents::PathComponents(std::string_view path, std::size_t start) : rest(path.substr(start)) {
    if (start == 0 && !rest.empty() && IsSeparator(rest.front())) {
        rest.remove_prefix(1);
    }
}

inline bool PathComponents::Next(std::string_view& component) {
    if (rest.empty()) {
        return false;
    }
    std::size_t length = 0;
    while (length < rest.size() && !IsSeparator(rest[length])) {
        ++length;
    }
    component = rest.substr(0, length);
    if (length == rest.size()) {
        rest = {};
        component = component.substr(0, component.find('\0'));
    } else {
        rest.remove_prefix(length + 1);
    }
    return true;
}

/// Whether two components, each up to its first zero byte, are the same but for letter case, by the rules of the
/// locale.
inline bool SameComponent(std::string_view a, std::string_view b) {
    a = a.substr(0, a.find('\0'));
    b = b.substr(0, b.find('\0'));
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

} // namespace Tolvex::FileNames

/// Appends the components of `path`, as PathComponents has them, to `parts`.
///
///     "/a/b/" => "a", "b"       "a//b" => "a", "", "b"     "" and "/" => nothing
///     "//a"   => "", "a"        "a\\b" => "a", "b"         "./.."     => ".", ".."
void SplitPath(const std::string& path, std::vector<std::string>& parts);
