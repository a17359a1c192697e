#pragma once

#include <cstddef>
#include <functional>
#include <string>

// Makes the library's calls to the system, and its allocations, fail on demand: Faults.cpp defines the C library's
// functions and operator new itself, and the dynamic linker routes the shared library's calls through them.
namespace Faults {

struct Fault {
    int number = 0;        ///< the call that fails, counted from 1; 0: none
    int error = 0;         ///< its errno; 0: reading and writing alone count, and half of the bytes are moved
    bool onwards = false;  ///< whether all further calls fail too
    bool inMemory = false; ///< whether allocations count in place of calls
};

struct Outcome {
    bool hasStruck = false;
    bool hasStruckWriting = false;      ///< a call of fwrite
    std::ptrdiff_t allocationsLeft = 0; ///< made and not released
};

/// Lets `fault` strike while `action` runs, and the threads that it starts.
Outcome Strike(const Fault& fault, const std::function<void()>& action);

/// What the system answers other than it would.
struct Answers {
    bool volumesApart = false;  ///< whether renaming fails as it does across file systems
    bool typesUnknown = false;  ///< whether folders do not tell of what type their entries are
    bool startsLate = false;    ///< whether the next program can be started by the second attempt only
    bool isInterrupted = false; ///< whether a signal interrupts the next wait for a child
    long long slept = -1;       ///< microseconds, by usleep, which alone moves the clock then; negative: not so
    unsigned long blocks = 0; ///< of 512 bytes that anybody may use, of 10 more, in fragments of 4096; 0: the true ones
    std::string executable;   ///< the path of the running program; empty: the true one

    /// When set, folders are read in the order of names, and this happens behind the reading of each entry.
    std::function<void(const std::string& name)> meanwhile;
};
extern Answers answers;

} // namespace Faults
