#pragma once

// Stands in for the header of macOS; MacStandIns.cpp defines what it declares.

#include <cstdint>

extern "C" int _NSGetExecutablePath(char* buffer, std::uint32_t* size);
