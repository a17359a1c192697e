#pragma once

#include <string>

/// Whether `path` can be opened for reading: the library's test for "there is such a file". A folder passes; a file
/// without read permission does not.
bool OpensForReading(const std::string& path);
