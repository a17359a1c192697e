#include <FrameworkBase/Base/Platform.h>

#include <gtest/gtest.h>

TEST(Platform, ValuesAtLoadAreOthers) {
    EXPECT_EQ(GetUIScaleFactor(), 1.0F);
    EXPECT_TRUE(testsRunning == 0 && isDoingStressTest == 0 && Tolvex::Threading::mainThreadId == 0);
    EXPECT_EQ(GetPlatform() + ' ' + GetPlatformType(), "mac desktop");
}

TEST(Platform, ScaleFactorIsCheckedOrNotSharedWithTheVariable) {
    for (const float factor : {2.5F, 0.0F, -1.0F, 1.0F}) {
        SetUIScaleFactor(factor);
        EXPECT_TRUE(TolvexDip == factor && GetUIScaleFactor() == factor) << factor;
    }
}
