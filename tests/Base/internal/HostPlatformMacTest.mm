#include <FrameworkBase/Base/internal/HostPlatform.h>

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>
#include <iostream>
#include <objc/runtime.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace Tolvex::HostPlatform;

namespace {

TEST(HostPlatform, TemporaryFolderIsTheUsersOwn) {
    const std::string folder = GetTemporaryFolder();
    struct stat status {};
    ASSERT_EQ(stat(folder.c_str(), &status), 0) << folder;
    EXPECT_EQ(status.st_mode, S_IFDIR | 0700U);
    EXPECT_EQ(status.st_uid, getuid());
    EXPECT_EQ(GetTemporaryFolder(), folder);
}

TEST(HostPlatform, ExecutablePathNeedsRoomForItsTerminator) {
    std::string path(2000, '#');
    ASSERT_EQ(GetExecutablePath(path.data(), 2000), 0);
    path.resize(path.find('\0'));
    EXPECT_EQ(access(path.c_str(), X_OK), 0) << path;
    const auto length = static_cast<std::uint32_t>(path.size());
    std::string buffer(2000, '#');
    EXPECT_EQ(GetExecutablePath(buffer.data(), length), -1);
    EXPECT_EQ(GetExecutablePath(buffer.data(), length + 1), 0);
    EXPECT_EQ(buffer, path + '\0' + std::string(2000 - length - 1, '#'));
}

TEST(HostPlatform, ThreadsNeedNoPoolOfTheirOwn) {
    testing::internal::CaptureStderr(); // where Foundation complains of objects that no pool will release
    std::thread([] {
        GetTemporaryFolder();
        EXPECT_EQ(WideFromUtf8("\xC3\xA9"), L"\xE9");
        EXPECT_EQ(Utf8FromWide(L"\xE9", 1), "\xC3\xA9");
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

/// While it lives, a method's place is taken by another function.
class ReplacedMethod {
public:
    ReplacedMethod(Method replaced, IMP function)
        : method(replaced), original(method_setImplementation(method, function)) {}
    ~ReplacedMethod() { method_setImplementation(method, original); }
    ReplacedMethod(const ReplacedMethod&) = delete;
    ReplacedMethod& operator=(const ReplacedMethod&) = delete;

private:
    Method method;
    IMP original;
};

id RepairedUtf8(id, SEL, const char*) { return @".repaired"; }
id RepairedBytes(id, SEL, const void*, NSUInteger, NSStringEncoding) { return [@".repaired" retain]; }

TEST(HostPlatform, TextsThatFoundationRepairsAreRefusedAllTheSame) {
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
