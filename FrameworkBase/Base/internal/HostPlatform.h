#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// What differs between the systems. One source file per system implements it.
namespace Tolvex::HostPlatform {

/// Stores the full path of the running executable, as the system reports it, in `buffer` of `size` bytes. Returns 0 on
/// success. Returns -1, and leaves the buffer unchanged, if the path and its zero byte do not fit.
int GetExecutablePath(char* buffer, std::uint32_t size);

/// Returns the user's private temporary folder, normally with a trailing "/". The system is asked anew on every call.
std::string GetTemporaryFolder();

/// A calendar time since 1970-01-01 00:00:00 UTC.
struct CalendarTime {
    long long seconds;
    long long nanoseconds;
};
CalendarTime ReadCalendarClock();

/// Convert UTF-8 to UTF-32 and back. A string that is not valid converts to the empty string.
std::wstring WideFromUtf8(const char* text);
std::string Utf8FromWide(const wchar_t* text, std::size_t length);

} // namespace Tolvex::HostPlatform
