#pragma once

namespace VarnelNative::Utility {

/// A calendar time: the number of 100-nanosecond intervals since 1601-01-01 00:00:00 UTC. It can be compared across
/// runs and stored in files. It jumps when the system clock is set.
///
///     1970-01-01 00:00:00 UTC => 116444736000000000
///     2024-01-01 00:00:00 UTC => 133485408000000000
struct DateTime {
    static constexpr long long ticksPerSecond = 10'000'000;
    static constexpr long long ticksPerDay = 86'400 * ticksPerSecond;
    static constexpr long long unixEpoch = 116'444'736'000'000'000;

    /// Returns the present time, rounded down to 100 nanoseconds. Callable from any thread.
    static DateTime Now();

    long long ticks = 0;
};

} // namespace VarnelNative::Utility
