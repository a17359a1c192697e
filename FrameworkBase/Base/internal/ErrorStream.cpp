#include <FrameworkBase/Base/internal/ErrorStream.h>

#include <ostream>

// Only the library's own objects may be constructed when it is loaded. Before version 13 of GNU's standard library,
// <iostream> constructs one more in each source that includes it, so there std::cerr is reached by its linker name.
#if defined(_LIBCPP_VERSION) || (defined(_GLIBCXX_RELEASE) && _GLIBCXX_RELEASE >= 13)

#include <iostream>

std::ostream& Tolvex::ErrorStream() { return std::cerr; }

#elif defined(_GLIBCXX_RELEASE)

extern std::ostream standardErrorStream __asm__("_ZSt4cerr");

std::ostream& Tolvex::ErrorStream() {
    static const std::ios_base::Init streamsAreReady;
    return standardErrorStream;
}

#else
#error "Find out whether <iostream> of this standard library constructs an object at load, and add it above."
#endif
