#include <FrameworkBase/Base/internal/DateTime.h>

#include <FrameworkBase/Base/internal/HostPlatform.h>

namespace VarnelNative::Utility {

DateTime DateTime::Now() {
    const auto [seconds, nanoseconds] = Tolvex::HostPlatform::ReadCalendarClock();
    return {unixEpoch + seconds * ticksPerSecond + nanoseconds / 100};
}

} // namespace VarnelNative::Utility
