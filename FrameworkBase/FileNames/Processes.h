#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/Platform.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup processes
/// @{

/// Starts the executable `program`, a path: "PATH" is not searched. It gets exactly `arguments`, of which the first is
/// by custom the program's name; newer Linux makes one empty argument of none. The environment, the standard streams,
/// other open files unless they are marked to be closed (`FD_CLOEXEC`), and which signals are ignored are the caller's.
/// Returns the new process, which has to be waited for with WaitForProcess.
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
/// So the caller sees a program that could not be started as a process that has ended. Before that copy another child
/// was made, ended and reaped: of a start that fails the caller may get one SIGCHLD for a process that it never learns
/// of.
///
/// The caller's memory is not copied unless the start fails. Callable from any thread.
FRAMEWORKBASE_EXPORT HANDLE LaunchProcess(std::string program, std::vector<std::string>& arguments);

/// Waits until `process` has ended and returns true, after which the handle is no longer valid; or until `timeoutMs`
/// milliseconds have passed, and returns false: the process goes on and can be waited for again. To end it then:
///
///     if (!WaitForProcess(process, 5000)) {
///         kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
///         WaitForProcess(process, 5000);
///     }
///
/// False at once for the null handle. The exit status is lost. Where SIGCHLD is ignored the system reaps children
/// itself: then a wait with a time-out returns false even when the process has ended, and one without never returns.
///
/// -1 waits without end, AND REAPS EVERY OTHER CHILD of the caller that ends meanwhile; it never returns for a process
/// that is not a child of the caller or has been waited for already, and uses a processor fully once no other child is
/// left. Callers with several children pass a time-out. Do not wait for the handle with all bits set: it stands for any
/// child.
///
/// With a time-out the process is looked at after every sleep of one millisecond, the clock after every 200th: a wait
/// gives up only after a multiple of 200 sleeps, whatever the time-out, 0 and negative ones other than -1 included.
/// Sleeps take longer on a busy machine and are cut short by signals. Callable from any thread.
FRAMEWORKBASE_EXPORT bool WaitForProcess(HANDLE process, int timeoutMs);

/// @}

} // namespace Tolvex::FileNames
