#pragma once

#include <stdexcept>
#include <string>

/// Why a command is not carried out, in one line for the user. Names in it have gone through Shown.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Refuses to go on unless `isSo`, which `claim` puts into words.
void Verify(bool isSo, const std::string& claim);

/// `text` for the terminal: control characters, backslashes and what is not UTF-8 as \xNN, so that no file name can
/// play tricks and no two names look alike.
std::string Shown(const std::string& text);

/// The trash database counts time in units of 100 nanoseconds since 1601.
constexpr long long ticksPerSecond = 10'000'000;
constexpr long long secondsPerDay = 86'400;
long long UnixTime(long long ticks);
std::string ShownTime(long long ticks);
