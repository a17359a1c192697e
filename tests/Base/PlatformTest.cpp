#include "FrameworkBase/Base/Platform.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

namespace {

static_assert(std::is_same_v<HANDLE, std::FILE*>);
static_assert(sizeof testsRunning == 4 && sizeof isDoingStressTest == 4);
static_assert(sizeof Tolvex::Threading::mainThreadId == 8);
static_assert(std::is_same_v<decltype(threadsJoinToken), std::map<std::FILE*, os_workgroup_join_token_opaque_s*>>);

TEST(Platform, VariablesAtLoad) {
    EXPECT_EQ(TolvexDip, 1.0F);
    EXPECT_EQ(GetUIScaleFactor(), 1.0F);
    EXPECT_EQ(testsRunning, 0);
    EXPECT_EQ(isDoingStressTest, 0);
    EXPECT_EQ(audioDevWorkgroup, nullptr);
    EXPECT_TRUE(threadsJoinToken.empty());
    EXPECT_EQ(Tolvex::pathFolderOverride, "");
    EXPECT_EQ(Tolvex::Threading::mainThreadId, 0U);
}

TEST(Platform, ModulesFindTheVariablesByTheirPlainNames) {
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "TolvexDip"), &TolvexDip);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "testsRunning"), &testsRunning);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "isDoingStressTest"), &isDoingStressTest);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "audioDevWorkgroup"), &audioDevWorkgroup);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "threadsJoinToken"), &threadsJoinToken);
}

TEST(Platform, ScaleFactorIsStoredUnchecked) {
    for (const float factor : {2.5F, 0.0F, -1.0F, std::numeric_limits<float>::infinity(), 1.0F}) {
        SetUIScaleFactor(factor);
        EXPECT_EQ(TolvexDip, factor);
        EXPECT_EQ(GetUIScaleFactor(), factor);
    }
    TolvexDip = 3.0F;
    EXPECT_EQ(GetUIScaleFactor(), 3.0F);
    SetUIScaleFactor(1.0F);
}

TEST(Platform, NamesAreTheSameOnEverySystem) {
    EXPECT_EQ(GetPlatform(), "mac");
    EXPECT_EQ(GetPlatformType(), "desktop");
}

} // namespace
