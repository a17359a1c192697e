#include <FrameworkBase/Base/internal/DateTime.h>

#include <chrono>
#include <gtest/gtest.h>

using VarnelNative::Utility::DateTime;

static_assert(sizeof(DateTime) == 8);
static_assert(DateTime::unixEpoch + 19'723 * DateTime::ticksPerDay == 133'485'408'000'000'000); // 2024-01-01

static long long SystemClock() {
    const std::chrono::nanoseconds sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return 116'444'736'000'000'000 + sinceEpoch.count() / 100;
}

TEST(DateTime, NowIsTheCalendarTime) {
    for (int i = 0; i < 1000; ++i) {
        const long long before = SystemClock();
        const long long now = DateTime::Now().ticks;
        EXPECT_LE(before, now);
        EXPECT_LE(now, SystemClock());
    }
}
