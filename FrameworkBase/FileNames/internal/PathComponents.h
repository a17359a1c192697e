#pragma once

#include <string>
#include <string_view>
#include <strings.h>
#include <vector>

namespace Tolvex::FileNames {

/// Returns `folder` and `name` joined by "/", unless `folder` ends in one: the joining rule of the whole library.
/// `name` is not examined.
///
///     ("a", "b")  => "a/b"     ("a/", "b")  => "a/b"      ("", "b") => "b"
///     ("a", "/b") => "a//b"    ("a/", "/b") => "a//b"     ("a", "") => "a/"
std::string ComposePath(std::string folder, std::string name);

/// Returns true for "/" and for a backslash.
constexpr bool IsSeparator(char character) { return character == '/' || character == '\\'; }

/// Iterates over the components of a path without copying them. A separator at the front is skipped; each further one
/// ends a component, which is empty if nothing is before it. A backslash is a separator, too; "." and ".." are
/// components like any other. The last component ends at its first zero byte.
///
/// Inline, because callers iterate over whole paths.
class PathComponents {
public:
    /// Refers to the characters of `path`, which must outlive the object. Begins at `start`: 0, or a position behind a
    /// separator; a separator at such a position is not skipped.
    explicit PathComponents(std::string_view path, std::size_t start = 0);

    /// Stores the next component and returns true, or returns false if none is left.
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

/// Returns true if two components, each up to its first zero byte, are equal without regard to letter case, by the
/// rules of the current locale.
inline bool SameComponent(std::string_view a, std::string_view b) {
    a = a.substr(0, a.find('\0'));
    b = b.substr(0, b.find('\0'));
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

} // namespace Tolvex::FileNames

/// Appends the components of `path`, by the rules of PathComponents, to `parts`.
///
///     "/a/b/" => "a", "b"       "a//b" => "a", "", "b"     "" and "/" => nothing
///     "//a"   => "", "a"        "a\\b" => "a", "b"         "./.."     => ".", ".."
void SplitPath(const std::string& path, std::vector<std::string>& parts);
