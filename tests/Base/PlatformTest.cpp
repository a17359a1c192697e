#include <FrameworkBase/Base/Platform.h>

#include <dlfcn.h>
#include <gtest/gtest.h>

static_assert(sizeof testsRunning == 4 && sizeof isDoingStressTest == 4 && sizeof Tolvex::Threading::mainThreadId == 8);
static_assert(std::is_same_v<decltype(threadsJoinToken), std::map<std::FILE*, os_workgroup_join_token_opaque_s*>>);

TEST(Platform, VariablesAtLoad) {
    EXPECT_EQ(GetUIScaleFactor(), 1.0F);
    EXPECT_TRUE(testsRunning == 0 && isDoingStressTest == 0 && Tolvex::Threading::mainThreadId == 0);
    EXPECT_TRUE(audioDevWorkgroup == nullptr && threadsJoinToken.empty() && Tolvex::pathFolderOverride.empty());
}

TEST(Platform, ModulesFindTheVariablesByTheirPlainNames) {
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "TolvexDip"), &TolvexDip);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "testsRunning"), &testsRunning);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "isDoingStressTest"), &isDoingStressTest);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "audioDevWorkgroup"), &audioDevWorkgroup);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "threadsJoinToken"), &threadsJoinToken);
}

TEST(Platform, ScaleFactorIsStoredUnchecked) {
    for (const float factor : {2.5F, 0.0F, -1.0F, 1.0F}) {
        SetUIScaleFactor(factor);
        EXPECT_TRUE(TolvexDip == factor && GetUIScaleFactor() == factor) << factor;
    }
}

TEST(Platform, NamesAreTheSameOnEverySystem) { EXPECT_EQ(GetPlatform() + ' ' + GetPlatformType(), "mac desktop"); }
