#pragma once

// Stands in for the header of macOS; see mach-o/dyld.h beside it.
using mach_port_t = unsigned int;

extern "C" mach_port_t mach_host_self();
