#include <FrameworkBase/Base/Platform.h>

// Constructed in this order when the library is loaded: pathFolderOverride, then threadsJoinToken.
namespace Tolvex {
std::string pathFolderOverride;
namespace Threading {
std::uint64_t mainThreadId = 0;
} // namespace Threading
} // namespace Tolvex

extern "C" {
float TolvexDip = 1.0F;
int testsRunning = 0;
int isDoingStressTest = 0;
os_workgroup_t audioDevWorkgroup = nullptr;
std::map<HANDLE, os_workgroup_join_token_opaque_s*> threadsJoinToken;
}

void SetUIScaleFactor(float factor) { TolvexDip = factor; }

float GetUIScaleFactor() { return TolvexDip; }

std::string GetPlatform() { return "mac"; }

std::string GetPlatformType() { return "desktop"; }
