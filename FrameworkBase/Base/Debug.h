#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup diagnostics
/// Diagnostics are written to the standard error stream. There is no lock: lines written by several threads may
/// interleave, also within a trace. Errors of the stream are ignored.
/// @{

/// The window type of the application's assertion boxes. The library never defines it.
class WindowImpl;

/// Does nothing on this platform. The pointer may be null.
FRAMEWORKBASE_EXPORT void SetMessageBoxAssertLink(int (*messageBox)(WindowImpl* owner, const char* text,
                                                                    const char* caption, unsigned int style));

/// @}

namespace Tolvex::Debug {

/// @addtogroup diagnostics
/// @{

/// Ends the process by `abort`, without a message.
[[noreturn]] FRAMEWORKBASE_EXPORT void DebugBreak();

/// Writes the zero-terminated string `str`, which must not be null, and a line feed to `std::cerr`, and flushes it. The
/// field width of the stream applies to the string.
///
///     ""      => "\n"
///     "a"     => "a\n"
///     "a\n"   => "a\n\n"
FRAMEWORKBASE_EXPORT void OutputDebugString(const char* str);

/// Formats as `printf` does and writes the result, cut to 20479 bytes, and three line feeds to `std::cerr`.
///
///     ("%d", 5)          => "5\n\n\n"
///     ("take\n")         => "take\n\n\n\n"
///     ("%s", 30000 'x')  => 20479 'x', "\n\n\n"
///
/// Release builds trace, too. Each call allocates a buffer and flushes the stream: do not call it in hot paths. A
/// string that cannot be formatted, because of a wide character that the locale does not have, is tried with ever
/// larger buffers until `std::bad_alloc` is thrown.
FRAMEWORKBASE_EXPORT void TraceRelease(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Does nothing on this platform.
FRAMEWORKBASE_EXPORT void flpOutputDebugStringInternal(std::string text);

/// @}

} // namespace Tolvex::Debug
