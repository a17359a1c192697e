#pragma once

// Foundation, as much of it as the macOS back-end and its tests use, for builds on machines that have no Foundation.
// Builds on a Mac have Apple's and do not see this one.
#include <cstddef>
#import <objc/NSObject.h>

using NSStringEncoding = NSUInteger;

enum : NSStringEncoding {
    NSUTF32LittleEndianStringEncoding = 0x9c000100,
};

@interface NSData : NSObject
@property(readonly) NSUInteger length;
- (void)getBytes:(void*)buffer length:(NSUInteger)length;
@end

@interface NSString : NSObject
@property(readonly) const char* UTF8String;
+ (instancetype)stringWithUTF8String:(const char*)text;
- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
@end

extern "C" NSString* NSTemporaryDirectory(void);
