#pragma once

#include <string>
#include <vector>

namespace Tolvex::Strings {

/// Returns the parts of `text` between separators, in order, without the empty ones.
///
///     ("/a//b/", '/') => {"a", "b"}
///     ("", '/')       => {}
template <class Char>
std::vector<std::basic_string<Char>> Split(std::basic_string<Char>& text, Char separator) {
    std::vector<std::basic_string<Char>> pieces;
    std::size_t start = text.find_first_not_of(separator);
    while (start != text.npos) {
        const std::size_t end = text.find(separator, start);
        pieces.push_back(text.substr(start, end - start));
        start = text.find_first_not_of(separator, end);
    }
    return pieces;
}

} // namespace Tolvex::Strings
