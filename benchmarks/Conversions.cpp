#include <FrameworkBase/Base/Strings.h>

#include <QString>
#include <array>
#include <benchmark/benchmark.h>
#include <glib.h>
#include <iconv.h>
#include <unicode/ustring.h>

using Tolvex::Strings::stringFromW;
using Tolvex::Strings::wstringFromS;

namespace {

constexpr std::size_t capacity = 6000; ///< of the buffers of the peers that convert into one

template <class To, class From>
std::basic_string<To> Iconv(iconv_t descriptor, const From* text) {
    std::array<To, capacity> buffer;
    char* in = reinterpret_cast<char*>(const_cast<From*>(text)); // iconv does not write there
    std::size_t inLeft = std::char_traits<From>::length(text) * sizeof(From);
    char* out = reinterpret_cast<char*>(buffer.data());
    std::size_t outLeft = sizeof buffer;
    iconv(descriptor, &in, &inLeft, &out, &outLeft);
    return {buffer.data(), (sizeof buffer - outLeft) / sizeof(To)};
}

std::wstring WideByIconv(const char* text) {
    static const iconv_t descriptor = iconv_open("WCHAR_T", "UTF-8");
    return Iconv<wchar_t>(descriptor, text);
}

std::string Utf8ByIconv(const wchar_t* text) {
    static const iconv_t descriptor = iconv_open("UTF-8", "WCHAR_T");
    return Iconv<char>(descriptor, text);
}

std::wstring WideByIcu(const char* text) {
    std::array<UChar, capacity> utf16;
    std::array<wchar_t, capacity> characters;
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(utf16.data(), capacity, &length, text, -1, &error);
    u_strToWCS(characters.data(), capacity, &length, utf16.data(), length, &error);
    return {characters.data(), static_cast<std::size_t>(length)};
}

std::string Utf8ByIcu(const wchar_t* text) {
    std::array<UChar, capacity> utf16;
    std::array<char, capacity> bytes;
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromWCS(utf16.data(), capacity, &length, text, -1, &error);
    u_strToUTF8(bytes.data(), capacity, &length, utf16.data(), length, &error);
    return {bytes.data(), static_cast<std::size_t>(length)};
}

std::wstring WideByQt(const char* text) { return QString::fromUtf8(text).toStdWString(); }

std::string Utf8ByQt(const wchar_t* text) { return QString::fromWCharArray(text).toStdString(); }

std::wstring WideByGlib(const char* text) {
    glong length = 0;
    gunichar* const characters = g_utf8_to_ucs4(text, -1, nullptr, &length, nullptr);
    std::wstring result(characters, characters + length);
    g_free(characters);
    return result;
}

std::string Utf8ByGlib(const wchar_t* text) {
    const auto* const characters = reinterpret_cast<const gunichar*>(text);
    glong size = 0;
    char* const bytes = g_ucs4_to_utf8(characters, -1, nullptr, &size, nullptr);
    std::string result(bytes, static_cast<std::size_t>(size));
    g_free(bytes);
    return result;
}

/// Each has 20 characters; the texts that are measured repeat them.
const std::array<std::string, 3> utf8 = {"take 12 - lead guit.", "Über die Brücke, çà!",
                                         "夜想曲第二番変ホ長調🎹作品九の二ショパン"};
const std::array<std::wstring, 3> wide = {L"take 12 - lead guit.", L"Über die Brücke, çà!",
                                          L"夜想曲第二番変ホ長調🎹作品九の二ショパン"};

template <class Texts, class Call>
void Convert(benchmark::State& state, const Texts& texts, Call call) {
    const std::array<const char*, 3> labels = {"ASCII", "Latin", "Japanese"};
    const auto kind = static_cast<std::size_t>(state.range(0));
    state.SetLabel(labels.at(kind));
    auto text = texts.at(kind);
    for (std::int64_t length = 20; length < state.range(1); length += 20) {
        text += texts.at(kind);
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(text.data()));
    }
}

void Texts(benchmark::internal::Benchmark* job) {
    job->ArgNames({"text", "characters"})->ArgsProduct({{0, 1, 2}, {20, 200, 1'500}});
}

constexpr auto WideFromUtf8 = [](benchmark::State& state, auto call) { Convert(state, utf8, call); };

BENCHMARK_CAPTURE(WideFromUtf8, FrameworkBase, wstringFromS)->Apply(Texts);
BENCHMARK_CAPTURE(WideFromUtf8, floor, [](const char* text) { return std::string(text); })->Apply(Texts);
BENCHMARK_CAPTURE(WideFromUtf8, iconv, WideByIconv)->Apply(Texts);
BENCHMARK_CAPTURE(WideFromUtf8, ICU, WideByIcu)->Apply(Texts);
BENCHMARK_CAPTURE(WideFromUtf8, Qt, WideByQt)->Apply(Texts);
BENCHMARK_CAPTURE(WideFromUtf8, GLib, WideByGlib)->Apply(Texts);

constexpr auto Utf8FromWide = [](benchmark::State& state, auto call) { Convert(state, wide, call); };

BENCHMARK_CAPTURE(Utf8FromWide, FrameworkBase, stringFromW)->Apply(Texts);
BENCHMARK_CAPTURE(Utf8FromWide, floor, [](const wchar_t* text) { return std::wstring(text); })->Apply(Texts);
BENCHMARK_CAPTURE(Utf8FromWide, iconv, Utf8ByIconv)->Apply(Texts);
BENCHMARK_CAPTURE(Utf8FromWide, ICU, Utf8ByIcu)->Apply(Texts);
BENCHMARK_CAPTURE(Utf8FromWide, Qt, Utf8ByQt)->Apply(Texts);
BENCHMARK_CAPTURE(Utf8FromWide, GLib, Utf8ByGlib)->Apply(Texts);

} // namespace
