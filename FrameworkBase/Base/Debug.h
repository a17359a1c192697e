#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup diagnostics
/// Diagnostics go to the standard error stream. No lock is taken: lines written from several threads may interleave,
/// and the text of a trace and its line ends may be parted. Errors of the stream are ignored.
/// @{

/// The window type of the application's assertion boxes. The library never defines it.
class WindowImpl;

/// Does nothing on this platform: the pointer, null or not, is neither kept nor called.
FRAMEWORKBASE_EXPORT void SetMessageBoxAssertLink(int (*messageBox)(WindowImpl* owner, const char* text,
                                                                    const char* caption, unsigned int style));

/// @}

namespace Tolvex::Debug {

/// @addtogroup diagnostics
/// @{

/// Ends the process at once by `abort`, without a message.
[[noreturn]] FRAMEWORKBASE_EXPORT void DebugBreak();

/// Writes `str`, a zero-terminated text that must not be null, and one line end to `std::cerr` and flushes it. The
/// stream's field width applies to the text.
///
///     ""      => "\n"
///     "a"     => "a\n"
///     "a\n"   => "a\n\n"
FRAMEWORKBASE_EXPORT void OutputDebugString(const char* str);

/// Formats as `printf` does and writes the text, then an empty line, through OutputDebugString: three line ends
/// follow the text, so consecutive traces stand two empty lines apart. The text is cut after 20479 bytes.
///
///     ("%d", 5)          => "5\n\n\n"
///     ("take\n")         => "take\n\n\n\n"
///     ("%s", 30000 'x')  => 20479 'x', "\n\n\n"
///
/// It is active in release builds, and every call allocates a buffer and flushes the stream: not for hot paths. A
/// text that can never be formatted (a wide character without a form in the locale) is tried with ever larger
/// buffers until `std::bad_alloc` is thrown.
FRAMEWORKBASE_EXPORT void TraceRelease(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Does nothing on this platform.
FRAMEWORKBASE_EXPORT void flpOutputDebugStringInternal(std::string text);

/// @}

} // namespace Tolvex::Debug
