#pragma once

#include <FrameworkBase/Base/Export.h>

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>

#ifdef __APPLE__
#include <os/workgroup.h>
#endif

/// @addtogroup runtime
/// What the application sets once for all of its modules, and what it can ask about where it runs.
///
/// The variables are plain: the application that sets one while other threads read it orders those accesses itself. The
/// library reads `Tolvex::pathFolderOverride` and `TolvexDip` only.
/// @{

#ifndef __APPLE__
/// The operating system's work group; opaque here.
struct os_workgroup_s;
/// A pointer to a work group.
using os_workgroup_t = os_workgroup_s*;
/// What a thread keeps to leave a work group again; opaque here.
struct os_workgroup_join_token_opaque_s;
#endif

/// Identifies an open file (its C stream), a child process (the process id, sign-extended, in the pointer's bits) or
/// a thread. Null means that there is none.
using HANDLE = std::FILE*;

extern "C" {

/// The user-interface scale factor; 1.0 at load. See GetUIScaleFactor and SetUIScaleFactor.
FRAMEWORKBASE_EXPORT extern float TolvexDip;

/// Not 0 while automated tests run. Set by the application, 0 at load.
FRAMEWORKBASE_EXPORT extern int testsRunning;

/// Not 0 during stress runs. Set by the application, 0 at load.
FRAMEWORKBASE_EXPORT extern int isDoingStressTest;

/// The audio device's real-time work group, for the application's audio threads to join. Null at load.
FRAMEWORKBASE_EXPORT extern os_workgroup_t audioDevWorkgroup;

/// The token that each thread which joined `audioDevWorkgroup` needs to leave it again. Empty at load.
FRAMEWORKBASE_EXPORT extern std::map<HANDLE, os_workgroup_join_token_opaque_s*> threadsJoinToken;
}

/// @}

namespace Tolvex {

/// @addtogroup runtime
/// @{

/// When not empty, the program folder that path_directory_programma reports. Set it before asking. Empty at load.
FRAMEWORKBASE_EXPORT extern std::string pathFolderOverride;

/// @}

namespace Threading {

/// @addtogroup runtime
/// @{

/// The id of the application's main thread, set by the application; 0 at load.
FRAMEWORKBASE_EXPORT extern std::uint64_t mainThreadId;

/// @}

} // namespace Threading
} // namespace Tolvex

/// @addtogroup runtime
/// @{

/// Stores `factor` in `TolvexDip`, unchecked.
FRAMEWORKBASE_EXPORT void SetUIScaleFactor(float factor);

/// The value of `TolvexDip`.
FRAMEWORKBASE_EXPORT float GetUIScaleFactor();

/// Always "mac", on every system the library is built for: callers choose file layouts by it.
FRAMEWORKBASE_EXPORT std::string GetPlatform();

/// Always "desktop".
FRAMEWORKBASE_EXPORT std::string GetPlatformType();

/// @}
