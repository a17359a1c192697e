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
/// Variables that the application sets once for all of its modules, and functions that say where it runs.
///
/// The variables are plain: an application that sets one while other threads read it synchronises them itself. The
/// library reads only `Tolvex::pathFolderOverride` and `TolvexDip`.
/// @{

#ifndef __APPLE__
/// A work group of the operating system; opaque here.
struct os_workgroup_s;
/// A pointer to a work group.
using os_workgroup_t = os_workgroup_s*;
/// The token by which a thread leaves a work group; opaque here.
struct os_workgroup_join_token_opaque_s;
#endif

/// Identifies an open file (its C stream), a child process (its id, sign-extended, in the bits of the pointer) or a
/// thread. Null stands for none.
using HANDLE = std::FILE*;

extern "C" {

/// The scale factor of the user interface, 1.0 when the library is loaded. See GetUIScaleFactor and SetUIScaleFactor.
FRAMEWORKBASE_EXPORT extern float TolvexDip;

/// Not 0 while automated tests run. Set by the application; 0 when the library is loaded.
FRAMEWORKBASE_EXPORT extern int testsRunning;

/// Not 0 during stress tests. Set by the application; 0 when the library is loaded.
FRAMEWORKBASE_EXPORT extern int isDoingStressTest;

/// The real-time work group of the audio device, which the application's audio threads join. Null when the library is
/// loaded.
FRAMEWORKBASE_EXPORT extern os_workgroup_t audioDevWorkgroup;

/// The tokens by which the threads that have joined `audioDevWorkgroup` leave it. Empty when the library is loaded.
FRAMEWORKBASE_EXPORT extern std::map<HANDLE, os_workgroup_join_token_opaque_s*> threadsJoinToken;
}

/// @}

namespace Tolvex {

/// @addtogroup runtime
/// @{

/// The program folder that path_directory_programma reports, unless this is empty. Empty when the library is loaded.
FRAMEWORKBASE_EXPORT extern std::string pathFolderOverride;

/// @}

namespace Threading {

/// @addtogroup runtime
/// @{

/// The id of the application's main thread. Set by the application; 0 when the library is loaded.
FRAMEWORKBASE_EXPORT extern std::uint64_t mainThreadId;

/// @}

} // namespace Threading
} // namespace Tolvex

/// @addtogroup runtime
/// @{

/// Stores `factor` in `TolvexDip`. It is not checked.
FRAMEWORKBASE_EXPORT void SetUIScaleFactor(float factor);

/// Returns the value of `TolvexDip`.
FRAMEWORKBASE_EXPORT float GetUIScaleFactor();

/// Returns "mac", on every system: callers choose file layouts by it.
FRAMEWORKBASE_EXPORT std::string GetPlatform();

/// Returns "desktop".
FRAMEWORKBASE_EXPORT std::string GetPlatformType();

/// @}
