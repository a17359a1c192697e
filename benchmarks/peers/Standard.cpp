#include "benchmarks/peers/Filesystem.h"
#include <iconv.h>

static void Load(Records& records) {
    std::ifstream file(DatabaseFile(), std::ios::binary);
    ReadRecords(records, [&](auto to, auto size) { return bool(file.read(to, static_cast<std::streamsize>(size))); });
}
static void Save(Records& records) {
    std::ofstream file(DatabaseFile(), std::ios::binary);
    WriteRecords(records, [&](auto data, auto size) { file.write(data, static_cast<std::streamsize>(size)); });
}
/// Converts at most 1,500 characters through a descriptor that is opened once.
template <class To, class From>
static std::basic_string<To> Convert(iconv_t descriptor, From* text) {
    std::array<To, 6000> buffer;
    auto* in = reinterpret_cast<char*>(const_cast<std::remove_const_t<From>*>(text)); // iconv does not write there
    std::size_t inLeft = std::char_traits<std::remove_const_t<From>>::length(text) * sizeof(From);
    auto* out = reinterpret_cast<char*>(buffer.data());
    std::size_t outLeft = sizeof buffer;
    iconv(descriptor, &in, &inLeft, &out, &outLeft);
    return {buffer.data(), (sizeof buffer - outLeft) / sizeof(To)};
}

const Registration standard([] {
    benchmark::AddCustomContext("compiler", __VERSION__);
    AddFilesystem<fs::path, fs::directory_iterator, fs::copy_options>("std::filesystem");
    static Records records;
    OnDatabase("std::fstream", records, Load, Save);
    OnStreams(
        "std::fstream",
        [](const char* path, bool reads) { return std::fstream(path, reads ? std::ios::in : std::ios::out); },
        [](auto& file, auto& value) { file.write(reinterpret_cast<char*>(&value), sizeof value); },
        [](auto& file, auto& value) { file.read(reinterpret_cast<char*>(&value), sizeof value); });
    static const iconv_t toWide = iconv_open("UTF-32LE", "UTF-8");
    static const iconv_t toUtf8 = iconv_open("UTF-8", "UTF-32LE");
    OnTexts(
        "iconv", [](const char* text) { return Convert<wchar_t>(toWide, text); },
        [](const wchar_t* text) { return Convert<char>(toUtf8, text); });
});
