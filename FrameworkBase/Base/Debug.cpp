#include <FrameworkBase/Base/Debug.h>

#include <FrameworkBase/Base/internal/ErrorStream.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <ostream>

void SetMessageBoxAssertLink(int (* /*messageBox*/)(WindowImpl*, const char*, const char*, unsigned int)) {}

namespace Tolvex::Debug {

void DebugBreak() { std::abort(); }

void OutputDebugString(const char* str) { ErrorStream() << str << std::endl; }

void TraceRelease(const char* format, ...) {
    std::size_t size = 20480;
    std::unique_ptr<char[]> buffer;
    int length = -1;
    do {
        buffer.reset(); // before the larger one is allocated
        buffer.reset(new char[size]);
        va_list arguments;
        va_start(arguments, format);
        length = std::vsnprintf(buffer.get(), size, format, arguments);
        va_end(arguments);
        size *= 2;
    } while (length == -1);
    OutputDebugString(buffer.get());
    OutputDebugString("\n");
}

void flpOutputDebugStringInternal(std::string /*text*/) {}

} // namespace Tolvex::Debug
