#pragma once

#include <FrameworkBase/Base/Export.h>
#include <FrameworkBase/Base/Platform.h>

#include <string>
#include <vector>

namespace Tolvex::FileNames {

/// @addtogroup processes
/// @{

/// Starts the executable `program`, a path: "PATH" is not searched. It gets exactly `arguments`, of which the first is
/// by custom the program's name; newer Linux makes one empty argument of none. It inherits the environment, the
/// standard streams, the ignored signals, and every open file that is not marked `FD_CLOEXEC`. To keep a file of this
/// library from the child, call `fcntl(fileno(file.handle), F_SETFD, FD_CLOEXEC)`. The strings must not be constants,
/// although they are not modified.
///
/// Returns the new process, which has to be waited for by WaitForProcess. If no process can be created, the handle has
/// all bits set.
///
/// IF THE PROGRAM CANNOT BE STARTED, THE FUNCTION RETURNS TWICE: in the caller with the handle of a new process, and in
/// that new process, a copy of the caller with this thread alone, with the null handle. The copy must call `_exit` at
/// once:
///
///     HANDLE process = LaunchProcess(program, arguments);
///     if (process == nullptr) {
///         _exit(127);
///     }
///
/// To the caller this looks like a process that has ended. Before the copy another child was created, and waited for: a
/// failed start may deliver one SIGCHLD for a process that the caller never sees.
///
/// The caller's memory is not copied unless the start fails. Callable from any thread.
FRAMEWORKBASE_EXPORT HANDLE LaunchProcess(std::string program, std::vector<std::string>& arguments);

/// Waits for the end of `process`. Returns true when it has ended; the handle is no longer valid then, and the exit
/// status is lost. Returns false after `timeoutMs` milliseconds: the process goes on and can be waited for again. To
/// end it:
///
///     if (!WaitForProcess(process, 5000)) {
///         kill(static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)), SIGKILL);
///         WaitForProcess(process, 5000);
///     }
///
/// Returns false at once for the null handle. Do not pass the handle with all bits set: it stands for any child. If
/// SIGCHLD is ignored, the system itself waits for children: a wait with a time-out then returns false even if the
/// process has ended, and one without a time-out never returns.
///
/// A `timeoutMs` of -1 waits without end, AND WAITS FOR EVERY OTHER CHILD that ends in the meantime. It never returns
/// for a process that is not a child or has been waited for already, and uses a processor fully once no other child is
/// left. Callers with several children pass a time-out.
///
/// With a time-out, the process is checked after every sleep of one millisecond, and the time after every 200th: a wait
/// gives up only after a multiple of 200 sleeps, even for 0 and for negative values other than -1. Sleeps take longer
/// on a busy machine, and signals cut them short. The time is that of the calendar clock, which can be set: setting it
/// back prolongs a wait, setting it forward ends it. Callable from any thread.
FRAMEWORKBASE_EXPORT bool WaitForProcess(HANDLE process, int timeoutMs);

/// @}

} // namespace Tolvex::FileNames
