#pragma once

#include <FrameworkBase/Base/TolvexException.h>

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

/// The pieces of `text` between one `separator` and the next.
inline std::vector<std::string> Cells(std::string text, const std::string& separator = ", ") {
    std::vector<std::string> cells;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string::npos;) {
        cells.push_back(text.substr(0, end));
        text.erase(0, end + separator.size());
    }
    cells.push_back(text);
    return cells;
}

/// The reverse of Cells.
inline std::string Joined(const std::vector<std::string>& cells, const std::string& separator = ", ") {
    std::string text;
    for (const std::string& cell : cells) {
        text += (&cell == &cells.front() ? "" : separator) + cell;
    }
    return text;
}

/// What `function` gives for one or two cells, as a text.
template <class Function>
std::string Result(Function function, std::vector<std::string> in) {
    in.resize(2);
    std::ostringstream out;
    out << std::boolalpha;
    if constexpr (std::is_invocable_v<Function, std::string&>) {
        out << function(in[0]);
    } else {
        out << function(in[0], in[1]);
    }
    return out.str();
}

/// Whether `function` gives what a table says: "in => out | in => out" or "in, in => out | in, in => out".
template <class Function>
testing::AssertionResult Maps(Function function, const std::string& table, const std::string& inSeparator = ", ") {
    std::string wrong;
    for (const std::string& row : Cells(table, " | ")) {
        const std::string in = row.substr(0, row.find(" => "));
        const std::string out = Result(function, Cells(in, inSeparator));
        wrong += in + " => " + out == row ? "" : "\n" + row + ", and not " + out;
    }
    return (wrong.empty() ? testing::AssertionSuccess() : testing::AssertionFailure()) << wrong;
}

/// The message of the TolvexException that `action` throws; "none" when it throws none.
template <class Action>
std::string MessageOf(Action action) {
    try {
        return action(), "none";
    } catch (const TolvexException& exception) {
        return exception.message;
    }
}
