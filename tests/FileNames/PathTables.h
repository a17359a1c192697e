#pragma once

#include "tests/support/DiskTest.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <type_traits>
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
    if constexpr (std::is_invocable_v<Function, std::string&>) {
        out << std::boolalpha << function(in[0]);
    } else {
        out << std::boolalpha << function(in[0], in[1]);
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

/// Awkward paths that every path function must get right, whatever else its own table holds.
inline const std::vector<std::string> pathCorpus = [] {
    std::vector<std::string> paths = Cells(
        " | / | // | /// | a | /a | a/ | /a/ | //a | a//b | /a//b// | /a/b | a/b | /a/b/ | /A/B/c | . | .. | ... | "
        "./a | ../a | /a/./../b | a/.. | /../.. | /a/b.wav | a.tar.gz | /Mix.SNG | .hidden | /a/.hidden | .wav | a. | "
        "/a.b/c | /a.b/c.d | /a.b/ | C:\\Songs\\x.sng | C:/x | C: | 1:\\ | :\\ | \\\\srv\\x | \\ | a\\b | a\\ | "
        "/a\\b.c\\ | /a\\/b | a\\\\b |  a /.b  | %s%n/%d.%s | \n/\t.\n | \xC3\x9F/\xC3\xBC.w\xC3\xA4v | \xFF/\xC3.\x80",
        " | ");
    paths.insert(paths.end(), {std::string("\0", 1), std::string("/a\0/b.wav", 9), std::string("a.wav\0.txt", 10),
                               std::string("/a/b\0", 5), std::string("a\0/b\0c/d\0e", 10),
                               std::string(300, 'x') + '/' + std::string(300, 'y'), std::string(300, '/') + "...."});
    return paths;
}();

/// The components of a path by the plainest of means: all texts between separators, less one empty text at either end.
inline std::vector<std::string> Components(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    std::vector<std::string> components = Cells(path, "/");
    components.back() = components.back().c_str(); // the last one ends at its first zero byte
    if (path.empty() || path.back() == '/') {
        components.pop_back();
    }
    if (!path.empty() && path[0] == '/') {
        components.erase(components.begin());
    }
    return components;
}

/// A path of exactly `length` bytes below `folder`, in components that a disk takes.
inline std::string PathOfLength(std::string folder, std::size_t length) {
    for (; folder.size() + 250 < length; folder += '/' + std::string(100, 'd')) {
    }
    return folder + '/' + std::string(length - folder.size() - 1, 'e');
}

/// A DiskTest that tells what is on the disk as a list: "file, folder/, folder/file, link -> target".
class DiskTreeTest : public DiskTest {
protected:
    /// Makes what a list says. A file gets its name in the list as its content.
    void Make(const std::string& list) {
        for (const std::string& name : Cells(list)) {
            if (const std::size_t arrow = name.find(" -> "); arrow != std::string::npos) {
                std::filesystem::create_symlink(name.substr(arrow + 4), Path(name.substr(0, arrow)));
            } else if (!name.empty()) {
                name.back() == '/' ? MakeFolder(name.substr(0, name.size() - 1)) : MakeFile(name, name);
            }
        }
    }

    /// What is in a folder, by default the test's own, at any depth and sorted.
    std::string List(const std::string& root = "") { return Joined(Tree(root.empty() ? folder : root)); }

    /// Whether `function`, called in a folder that holds nothing but what a row says, gives and leaves what the row
    /// says: "before; in => out; after". A file that does not hold its own name is told as "name=content".
    template <class Function>
    testing::AssertionResult Does(Function function, const std::string& table) {
        const auto run = [this, function](const std::string& before, const std::string& in) {
            std::filesystem::current_path(folder);
            for (const std::string& name : Tree()) {
                std::filesystem::remove_all(name);
            }
            Make(before);
            const std::string out = Result(function, Cells(in));
            std::vector<std::string> after = Tree();
            for (std::string& name : after) {
                name += std::filesystem::is_regular_file(name) && Content(name) != name ? "=" + Content(name) : "";
            }
            return out + "; " + Joined(after);
        };
        return Maps(run, table, "; ");
    }
};
