// What the macOS back-end asks of the system itself, in terms of Linux, so that the back-end runs there.
#include <cstdint>
#include <cstring>
#include <ctime>
#include <mach-o/dyld.h>
#include <mach/clock.h>
#include <mach/mach.h>
#include <unistd.h>

extern "C" {

int _NSGetExecutablePath(char* buffer, std::uint32_t* size) {
    char path[4096] = {};
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    if (length < 0 || static_cast<std::uint32_t>(length) >= *size) {
        return -1;
    }
    std::strcpy(buffer, path);
    return 0;
}

mach_port_t mach_host_self() { return 7; }

int host_get_clock_service(mach_port_t host, int clock, clock_serv_t* service) {
    *service = host == 7 && clock == CALENDAR_CLOCK ? 11 : 0;
    return 0;
}

int clock_get_time(clock_serv_t service, mach_timespec_t* now) {
    timespec time{};
    clock_gettime(service == 11 ? CLOCK_REALTIME : CLOCK_MONOTONIC, &time);
    *now = {static_cast<unsigned int>(time.tv_sec), static_cast<int>(time.tv_nsec)};
    return 0;
}
}
