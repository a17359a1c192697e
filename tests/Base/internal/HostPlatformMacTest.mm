#include <FrameworkBase/Base/internal/HostPlatform.h>

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>
#include <objc/runtime.h>
#include <thread>

using namespace Tolvex::HostPlatform;

namespace {

TEST(HostPlatformMac, ThreadsNeedAPoolOfTheirOwn) {
    testing::internal::CaptureStderr(); // where Foundation complains of objects that no pool will release
    std::thread([] {
        GetTemporaryFolder();
        EXPECT_EQ(Utf8FromWide(WideFromUtf8("\xC3\xA9").data(), 1), "\xC3\xA9");
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

/// While it lives, a method's place is taken by another function.
struct ReplacedMethod {
    ReplacedMethod(Method replaced, IMP function)
        : method(replaced), original(method_setImplementation(method, function)) {}
    ~ReplacedMethod() { method_setImplementation(method, original); }

    const Method method;
    const IMP original;
};

id RepairedUtf8(id, SEL, const char*) { return @".repaired"; }
id RepairedBytes(id, SEL, const void*, NSUInteger, NSStringEncoding) { return [@".repaired" retain]; }

TEST(HostPlatformMac, TextsThatFoundationRepairsAreTaken) {
    const SEL initWithBytes = @selector(initWithBytes:length:encoding:);
    {
        const ReplacedMethod lenient(class_getClassMethod([NSString class], @selector(stringWithUTF8String:)),
                                     reinterpret_cast<IMP>(RepairedUtf8));
        EXPECT_EQ(WideFromUtf8("repaired"), L"repaired");
        EXPECT_EQ(WideFromUtf8("\xED\xA0\x80"), L"");
    }
    const ReplacedMethod lenient(class_getInstanceMethod(object_getClass([NSString alloc]), initWithBytes),
                                 reinterpret_cast<IMP>(RepairedBytes));
    EXPECT_EQ(Utf8FromWide(L"x", 1), "repaired");
    EXPECT_EQ(Utf8FromWide(L"\xD800", 1), "");
    EXPECT_EQ(Utf8FromWide(L"\x110000", 1), "");
}

} // namespace
