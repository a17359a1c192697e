#pragma once

#include <cstddef>

// Makes the library's calls to the system, and its allocations, fail on demand. The program that links Faults.cpp and
// Allocations.cpp defines the C library's functions for files and operator new itself, and the dynamic linker routes the
// shared library's calls through them.
namespace Faults {

enum class Target { Calls, Allocations };

struct Fault {
    Target target = Target::Calls;
    int number = 0;       ///< the call that fails, counted from 1
    int error = 0;        ///< its errno; 0: reading and writing alone count, and half of the bytes are moved
    bool onwards = false; ///< whether all further calls fail too
};

struct Outcome {
    bool hasStruck = false;
    bool hasStruckWriting = false;   ///< a call of fwrite
    std::size_t streamsLeftOpen = 0; ///< opened since Arm and never closed; Disarm closes them
};

/// Lets `fault` strike from now to Disarm, on every thread.
void Arm(const Fault& fault);
Outcome Disarm();

/// How many allocations were made and not released since Arm, after Disarm too.
std::ptrdiff_t AllocationsLeft();

/// Makes every rename fail as it does across file systems, until it is called with false.
void SetVolumesApart(bool apart);

} // namespace Faults
