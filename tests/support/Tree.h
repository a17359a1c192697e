#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

/// What a folder holds: each path below it with the file's text. A folder's path ends in "/"; a link's text is its
/// target behind an arrow, "-> target".
using Tree = std::map<std::string, std::string>;

/// Makes files, folders and links below `root`, and the folders that they need.
inline void MakeTree(const std::filesystem::path& root, const Tree& tree) {
    std::filesystem::create_directories(root);
    for (const auto& [name, text] : tree) {
        const std::filesystem::path path = root / name;
        std::filesystem::create_directories(path.parent_path());
        if (text.rfind("-> ", 0) == 0) {
            std::filesystem::create_symlink(text.substr(3), path);
        } else if (path.has_filename()) {
            std::ofstream(path, std::ios::binary) << text;
        }
    }
}

inline Tree TreeOf(const std::filesystem::path& root) {
    Tree tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string name = entry.path().lexically_relative(root);
        if (entry.is_symlink()) {
            tree[name] = "-> " + std::filesystem::read_symlink(entry.path()).string();
        } else if (entry.is_directory()) {
            tree[name + '/'] = "";
        } else {
            std::ifstream file(entry.path(), std::ios::binary);
            tree[name].assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    }
    return tree;
}
