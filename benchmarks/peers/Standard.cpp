#include "benchmarks/peers/Filesystem.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iconv.h>

namespace {

namespace fs = std::filesystem;

void Load(Records& records) {
    std::ifstream file(DatabaseFile(), std::ios::binary);
    ReadRecords(records, [&](char* to, std::size_t size) { file.read(to, static_cast<std::streamsize>(size)); });
}

void Save(Records& records) {
    std::ofstream file(DatabaseFile(), std::ios::binary);
    WriteRecords(records,
                 [&](const char* data, std::size_t size) { file.write(data, static_cast<std::streamsize>(size)); });
    file.close();
    records.clear();
}

/// Converts at most 1,500 characters through a descriptor that is opened once.
template <class To, class From>
std::basic_string<To> Convert(iconv_t descriptor, From* text) {
    std::array<To, 6000> buffer;
    auto* in = reinterpret_cast<char*>(const_cast<std::remove_const_t<From>*>(text)); // iconv does not write there
    std::size_t inLeft = std::char_traits<std::remove_const_t<From>>::length(text) * sizeof(From);
    auto* out = reinterpret_cast<char*>(buffer.data());
    std::size_t outLeft = sizeof buffer;
    iconv(descriptor, &in, &inLeft, &out, &outLeft);
    return {buffer.data(), (sizeof buffer - outLeft) / sizeof(To)};
}

const Registration standard([] {
    AddFilesystem<fs::path, fs::directory_iterator, fs::copy_options>("std::filesystem");
    OnDatabase<Records>("std::fstream", Load, Save);
    const auto write = [](Path path, const auto& values) {
        std::ofstream file(path, std::ios::binary);
        for (const auto& value : values) {
            file.write(reinterpret_cast<const char*>(&value), sizeof value);
        }
    };
    const auto read = [](Path path, auto& values) {
        std::ifstream file(path, std::ios::binary);
        for (auto& value : values) {
            file.read(reinterpret_cast<char*>(&value), sizeof value);
        }
    };
    OnStreams("std::fstream", write, read);
    static iconv_t const toWide = iconv_open("UTF-32LE", "UTF-8");
    static iconv_t const toUtf8 = iconv_open("UTF-8", "UTF-32LE");
    OnTexts(
        "iconv", [](const char* text) { return Convert<wchar_t>(toWide, text); },
        [](const wchar_t* text) { return Convert<char>(toUtf8, text); });
});

} // namespace
