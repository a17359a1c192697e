#pragma once

#include <functional>
#include <string>

// Makes the library's calls to the system fail on demand: Faults.cpp defines the C library's functions itself, and the
// dynamic linker routes the shared library's calls through them.
namespace Faults {

constexpr int killed = -1;

struct Fault {
    int number = 0;       ///< the call that fails, counted from 1; 0: none
    int error = 0;        ///< its errno; 0: reading and writing alone count, and half of the bytes are moved
                          ///< killed: the process is killed in its place
    bool onwards = false; ///< whether all further calls fail too
};

struct Outcome {
    bool hasStruck = false;
    bool hasStruckWriting = false; ///< a call of fwrite
};

/// Lets `fault` strike while `action` runs, and the threads that it starts.
Outcome Strike(const Fault& fault, const std::function<void()>& action);

/// What the system answers other than it would.
struct Answers {
    bool volumesApart = false; ///< whether renaming fails as it does across file systems
    bool typesUnknown = false; ///< whether folders do not report the type of their entries
    long long slept = -1;      ///< microseconds, by usleep, which alone moves the clock then; negative: not so
};
extern Answers answers;

} // namespace Faults
