#include "benchmarks/Jobs.h"
#include <unicode/ustring.h>

static constexpr std::int32_t capacity = 8000;

static std::wstring ToWide(const char* text) {
    std::array<UChar, capacity> middle;
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(middle.data(), capacity, &length, text, -1, &error);
    std::array<UChar32, capacity> wide;
    u_strToUTF32(wide.data(), capacity, &length, middle.data(), length, &error);
    return U_SUCCESS(error) ? std::wstring(wide.begin(), wide.begin() + length) : std::wstring();
}
static std::string ToUtf8(const wchar_t* text) {
    std::array<UChar, capacity> middle;
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF32(middle.data(), capacity, &length, reinterpret_cast<const UChar32*>(text), -1, &error);
    std::array<char, capacity> utf8;
    u_strToUTF8(utf8.data(), capacity, &length, middle.data(), length, &error);
    return U_SUCCESS(error) ? std::string(utf8.data(), static_cast<std::size_t>(length)) : std::string();
}

const Registration icuTexts([] { OnTexts("ICU", ToWide, ToUtf8); });
