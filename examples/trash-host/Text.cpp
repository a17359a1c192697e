#include "TrashHost.h"

#include <FrameworkBase/Base/Strings.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <cwchar>
#include <iostream>
#include <unistd.h>

constexpr long long secondsFrom1601To1970 = 11'644'473'600;

volatile std::sig_atomic_t interruption = 0;

void RefuseIf(bool isObstacle, const std::string& reason) {
    if (isObstacle) {
        throw Refusal(reason);
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
        const bool isPlain = byte >= 0x20 && byte != 0x7F && byte != '\\' && (byte < 0x80 || isUtf8);
        const char* const digits = "0123456789abcdef";
        shown += isPlain ? std::string(1, character) : std::string{'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
    return shown;
}

std::size_t Width(const std::string& shown) {
    std::size_t width = 0;
    for (const wchar_t character : Tolvex::Strings::wstringFromS(shown.c_str())) {
        width += static_cast<std::size_t>(std::max(0, wcwidth(character)));
    }
    return width;
}

void Say(const std::string& line) {
    ShowProgress("");
    std::cout << line << '\n';
}

void ShowProgress(const std::string& text) {
    static const bool isTerminal = isatty(STDERR_FILENO) == 1;
    if (isTerminal) {
        std::cout.flush();
        std::cerr << "\r\x1b[K" << text << std::flush;
    }
}

long long Now() { return (std::time(nullptr) + secondsFrom1601To1970) * 10'000'000; }

std::string ShownTime(long long ticks) {
    const std::time_t seconds = ticks / 10'000'000 - secondsFrom1601To1970;
    std::tm calendar{};
    std::array<char, 64> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S UTC", gmtime_r(&seconds, &calendar));
    return text.data();
}
