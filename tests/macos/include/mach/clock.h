#pragma once

#include "mach/mach.h"

using clock_serv_t = mach_port_t;

struct mach_timespec_t {
    unsigned int tv_sec;
    int tv_nsec;
};

inline constexpr int CALENDAR_CLOCK = 1;

extern "C" int host_get_clock_service(mach_port_t host, int clock, clock_serv_t* service);
extern "C" int clock_get_time(clock_serv_t service, mach_timespec_t* now);
