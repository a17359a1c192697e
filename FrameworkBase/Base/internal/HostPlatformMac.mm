#include <FrameworkBase/Base/internal/HostPlatform.h>

#import <Foundation/Foundation.h>

#include <algorithm>
#include <mach-o/dyld.h>
#include <mach/clock.h>
#include <mach/mach.h>

// Written for manual reference counting: what is allocated here is released here, and the rest belongs to a pool of our
// own, because the threads of some callers have none.
namespace Tolvex::HostPlatform {

int GetExecutablePath(char* buffer, std::uint32_t size) { return _NSGetExecutablePath(buffer, &size); }

CalendarTime ReadCalendarClock() {
    static clock_serv_t clock = 0; // of two first calls at once each gets a usable port; the last one is kept
    if (clock == 0) {
        host_get_clock_service(mach_host_self(), CALENDAR_CLOCK, &clock);
    }
    mach_timespec_t now{};
    clock_get_time(clock, &now);
    return {now.tv_sec, now.tv_nsec};
}

std::string GetTemporaryFolder() {
    @autoreleasepool {
        return [NSTemporaryDirectory() UTF8String];
    }
}

namespace {

// At the start of a string, and only there, Foundation drops a byte-order mark. So strings are converted behind this
// character.
constexpr char guard = '.';

constexpr bool IsCodePoint(char32_t value) { return value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF); }

} // namespace

std::wstring WideFromUtf8(const char* text) {
    std::wstring wide;
    @autoreleasepool {
        const std::string guarded = std::string(1, guard) + text;
        NSData* data =
            [[NSString stringWithUTF8String:guarded.c_str()] dataUsingEncoding:NSUTF32LittleEndianStringEncoding];
        wide.resize([data length] / sizeof(wchar_t));
        [data getBytes:wide.data() length:wide.size() * sizeof(wchar_t)];
    }
    wide.erase(0, 1);
    // A string that Foundation repaired instead of refusing it comes back changed.
    return Utf8FromWide(wide.data(), wide.size()) == text ? wide : std::wstring();
}

std::string Utf8FromWide(const wchar_t* text, std::size_t length) {
    std::wstring guarded(1, guard);
    guarded.append(text, length);
    const auto isCodePoint = [](wchar_t value) { return IsCodePoint(static_cast<char32_t>(value)); };
    if (!std::all_of(guarded.begin(), guarded.end(), isCodePoint)) {
        return {};
    }
    std::string utf8;
    @autoreleasepool {
        NSString* string = [[[NSString alloc] initWithBytes:guarded.data()
                                                     length:guarded.size() * sizeof(wchar_t)
                                                   encoding:NSUTF32LittleEndianStringEncoding] autorelease];
        if (const char* bytes = [string UTF8String]) {
            utf8 = bytes;
        }
    }
    utf8.erase(0, 1);
    return utf8;
}

} // namespace Tolvex::HostPlatform
