#pragma once

#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

#include <gtest/gtest.h>
#include <string>
#include <utility>

using namespace std::string_literals;
using namespace Tolvex::FileNames;

// Functions that change an argument, in the form in which the rows of the headers call them.

inline std::string GetExtension(const std::string& name) {
    std::string path = name;
    return GetExtension(path);
}

inline std::string extension_change(std::string name, std::string extension) {
    name.resize(name.size() + extension.size() + 2);
    EXPECT_EQ(extension_change(name.data(), extension.data()), 1);
    return name.c_str();
}

inline std::pair<std::string, bool> GetRelativePath(const std::string& target, const std::string& base) {
    bool flag = false;
    const std::string path = GetRelativePath(target, base, flag);
    return {path, flag};
}

inline std::pair<std::string, bool> GetPathRelativeToOtherFile(const std::string& referenceFile,
                                                               const std::string& file) {
    std::string path;
    const bool found = GetPathRelativeToOtherFile(path, referenceFile, file);
    return {path, found};
}
