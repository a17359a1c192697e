#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/Platform.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup processes
/// @{

/// Starts the executable `program` with exactly `arguments`, of which the first is by custom the program's name. The
/// environment and the standard streams are the caller's. Returns the new process, which has to be waited for with
/// WaitForProcess.
///
/// When no process can be made, the handle has all bits set. WHEN THE PROGRAM CANNOT BE STARTED, THE FUNCTION RETURNS
/// TWICE: in the caller with the handle of a new process, and in that new process, a copy of the caller with this
/// thread alone, with the null handle. The copy must leave with `_exit` at once:
///
///     HANDLE process = LaunchProcess(program, arguments);
///     if (process == nullptr) {
///         _exit(127);
///     }
///
/// The caller's memory is not copied unless the start fails. Callable from any thread.
FRAMEWORKBASE_EXPORT HANDLE LaunchProcess(std::string program, std::vector<std::string>& arguments);

/// Waits until `process` has ended and returns true, after which the handle is no longer valid; or until `timeoutMs`
/// milliseconds have passed, and returns false: the process goes on and can be waited for again. False at once for the
/// null handle. The exit status is lost.
///
/// -1 waits without end, AND REAPS EVERY OTHER CHILD of the caller that ends meanwhile; it never returns for a process
/// that is not a child of the caller or has been waited for already, and neither does it sleep then. Callers with
/// several children pass a time-out. Do not wait for the handle with all bits set: it stands for any child.
///
/// The time is looked at after every 200 rounds of one millisecond's sleep each: any time-out, 0 and negative ones
/// included, lasts at least 200 milliseconds and may overrun by as much. Callable from any thread.
FRAMEWORKBASE_EXPORT bool WaitForProcess(HANDLE process, int timeoutMs);

/// @}

} // namespace Tolvex::FileNames
