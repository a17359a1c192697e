#pragma once

#include <csignal>
#include <stdexcept>
#include <string>

/// Why a command is not carried out, in one line for the user. Names in it have gone through Shown.
struct Refusal : std::runtime_error {
    using runtime_error::runtime_error;
};

void RefuseIf(bool isObstacle, const std::string& reason);

extern volatile std::sig_atomic_t interruption; ///< the signal that asked the program to stop; 0 while none did

/// `text` for the terminal: control characters, backslashes and what is not UTF-8 as \xNN, so that no file name can
/// play tricks and no two names look alike.
std::string Shown(const std::string& text);
/// The columns of the terminal that `shown` takes.
std::size_t Width(const std::string& shown);
std::string Padded(const std::string& shown, std::size_t width);

void Say(const std::string& line);
/// Shows `text` below the lines until the next one is said; shows nothing where there is no terminal.
void ShowProgress(const std::string& text);

/// Times are those of the trash database: in units of 100 nanoseconds since 1601.
constexpr long long ticksPerSecond = 10'000'000;
constexpr long long ticksPerDay = 86'400 * ticksPerSecond;
long long Now();
std::string ShownTime(long long ticks);
