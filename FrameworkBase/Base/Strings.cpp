#include <FrameworkBase/Base/Strings.h>

#include <FrameworkBase/Base/internal/HostPlatform.h>

#include <cwchar>

namespace Tolvex::Strings {

std::wstring wstringFromS(const char* text) { return HostPlatform::WideFromUtf8(text); }

std::string stringFromW(wchar_t* text) {
    constexpr std::size_t refusedLength = 2000;
    const std::size_t length = wcsnlen(text, refusedLength);
    if (length == refusedLength) {
        return {};
    }
    return HostPlatform::Utf8FromWide(text, length);
}

} // namespace Tolvex::Strings
