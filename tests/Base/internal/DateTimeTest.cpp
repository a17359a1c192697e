#include "FrameworkBase/Base/internal/DateTime.h"

#include <chrono>
#include <gtest/gtest.h>

using VarnelNative::Utility::DateTime;

namespace {

static_assert(sizeof(DateTime) == 8);
static_assert(DateTime::unixEpoch + 1'704'067'200 * DateTime::ticksPerSecond == 133'485'408'000'000'000); // 2024-01-01
static_assert(DateTime::ticksPerDay == 864'000'000'000);

TEST(DateTime, NowIsTheCalendarTime) {
    using Ticks = std::chrono::duration<long long, std::ratio<1, 10'000'000>>;
    const auto systemClock = [] {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return 116'444'736'000'000'000 + std::chrono::duration_cast<Ticks>(sinceEpoch).count();
    };
    for (int i = 0; i < 1000; ++i) {
        const long long before = systemClock();
        const long long now = DateTime::Now().ticks;
        const long long after = systemClock();
        EXPECT_LE(before, now);
        EXPECT_LE(now, after);
    }
}

TEST(DateTime, IsEmptyUntilSet) { EXPECT_EQ(DateTime().ticks, 0); }

} // namespace
