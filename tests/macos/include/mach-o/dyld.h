#pragma once

// Stands in for the header of macOS so that the macOS back-end compiles on Linux. MacStandIns.cpp
// defines what it declares.

#include <cstdint>

extern "C" int _NSGetExecutablePath(char* buffer, std::uint32_t* size);
