#include "FrameworkBase/Base/internal/HostPlatform.h"

#import <Foundation/Foundation.h>

#include <iostream>
#include <mach-o/dyld.h>
#include <mach/clock.h>
#include <mach/mach.h>

// Written for manual reference counting: what is allocated here is released here, the rest belongs to a pool of ours,
// because callers include threads that have none.
namespace Tolvex::HostPlatform {

int GetExecutablePath(char* buffer, std::uint32_t size) { return _NSGetExecutablePath(buffer, &size); }

CalendarTime ReadCalendarClock() {
    static clock_serv_t clock = 0; // two first calls at once each get a usable port; the last one is kept
    if (clock == 0) {
        host_get_clock_service(mach_host_self(), CALENDAR_CLOCK, &clock);
    }
    mach_timespec_t now{};
    clock_get_time(clock, &now);
    return {now.tv_sec, now.tv_nsec};
}

std::ostream& ErrorStream() { return std::cerr; }

std::string GetTemporaryFolder() {
    @autoreleasepool {
        return [NSTemporaryDirectory() UTF8String];
    }
}

std::wstring WideFromUtf8(const char* text) {
    @autoreleasepool {
        NSData* data = [[NSString stringWithUTF8String:text] dataUsingEncoding:NSUTF32LittleEndianStringEncoding];
        if (data == nil) {
            return {};
        }
        return {static_cast<const wchar_t*>([data bytes]), [data length] / sizeof(wchar_t)};
    }
}

std::string Utf8FromWide(const wchar_t* text, std::size_t length) {
    @autoreleasepool {
        NSString* string = [[NSString alloc] initWithBytes:text
                                                    length:length * sizeof(wchar_t)
                                                  encoding:NSUTF32LittleEndianStringEncoding];
        const char* utf8 = [string UTF8String];
        std::string result = utf8 == nullptr ? "" : utf8;
        [string release];
        return result;
    }
}

} // namespace Tolvex::HostPlatform
