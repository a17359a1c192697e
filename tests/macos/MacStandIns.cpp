// What the macOS back-end asks of the system itself, in terms of Linux, so that the back-end runs there. Each answers
// only the call that the documented interface calls for.
#include <cstdint>
#include <cstring>
#include <ctime>
#include <mach-o/dyld.h>
#include <mach/clock.h>
#include <mach/mach.h>
#include <unistd.h>

namespace {
constexpr mach_port_t host = 7;
constexpr clock_serv_t calendar = 11;
} // namespace

extern "C" {

int _NSGetExecutablePath(char* buffer, std::uint32_t* size) {
    char path[4096] = {};
    if (readlink("/proc/self/exe", path, sizeof path - 1) < 0) {
        return -1;
    }
    const std::uint32_t capacity = *size;
    *size = static_cast<std::uint32_t>(std::strlen(path)) + 1;
    if (*size > capacity) {
        return -1;
    }
    std::memcpy(buffer, path, *size);
    return 0;
}

mach_port_t mach_host_self() { return host; }

int host_get_clock_service(mach_port_t ofHost, int clock, clock_serv_t* service) {
    *service = ofHost == host && clock == CALENDAR_CLOCK ? calendar : 0;
    return 0;
}

int clock_get_time(clock_serv_t service, mach_timespec_t* now) {
    timespec time{};
    if (service != calendar || clock_gettime(CLOCK_REALTIME, &time) != 0) {
        return -1;
    }
    *now = {static_cast<unsigned int>(time.tv_sec), static_cast<int>(time.tv_nsec)};
    return 0;
}
}
