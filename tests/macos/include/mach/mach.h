#pragma once

using mach_port_t = unsigned int;

extern "C" mach_port_t mach_host_self();
