#include "Text.h"

#include <FrameworkBase/Base/Strings.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

void Verify(bool isSo, const std::string& claim) {
    if (!isSo) {
        throw Refusal("something went wrong, this should be so: " + claim);
    }
}

std::string Shown(const std::string& text) {
    // Terminals obey the control characters beyond ASCII, too.
    const std::wstring wide = Tolvex::Strings::wstringFromS(text.c_str());
    const bool isUtf8 =
        !wide.empty() && std::none_of(wide.begin(), wide.end(), [](wchar_t c) { return c >= 0x80 && c < 0xA0; });
    std::string shown;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F || byte == '\\' || (byte >= 0x80 && !isUtf8)) {
            std::array<char, 5> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02x", byte);
            shown += escape.data();
        } else {
            shown += character;
        }
    }
    return shown;
}

long long UnixTime(long long ticks) { return ticks / ticksPerSecond - 11'644'473'600; }

std::string ShownTime(long long ticks) {
    const std::time_t seconds = UnixTime(ticks);
    std::tm calendar{};
    std::array<char, 64> text{};
    gmtime_r(&seconds, &calendar);
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S UTC", &calendar);
    return text.data();
}
