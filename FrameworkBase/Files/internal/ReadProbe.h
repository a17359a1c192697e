#pragma once

#include <string>

/// Returns true if `path` can be opened for reading: the library's test for "there is such a file". A folder passes it;
/// a file without read permission does not.
bool OpensForReading(const std::string& path);
