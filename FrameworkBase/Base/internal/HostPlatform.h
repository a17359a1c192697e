#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// What differs between the systems. One source file per system implements it.
namespace Tolvex::HostPlatform {

/// The full path of the running executable, as the system gives it, into `buffer` of `size` bytes. 0 on success; -1,
/// with the buffer untouched, when the path and its terminator do not fit.
int GetExecutablePath(char* buffer, std::uint32_t size);

/// The user's private temporary folder, normally with a trailing "/". Asked anew on every call.
std::string GetTemporaryFolder();

/// A calendar time since 1970-01-01 00:00:00 UTC.
struct CalendarTime {
    long long seconds;
    long long nanoseconds;
};
CalendarTime ReadCalendarClock();

/// UTF-8 to UTF-32 and back, strict; empty when the text is not valid.
std::wstring WideFromUtf8(const char* text);
std::string Utf8FromWide(const wchar_t* text, std::size_t length);

} // namespace Tolvex::HostPlatform
