#include "SampleFiles.h"

#include "OpenFile.h"

#include <array>
#include <cmath>
#include <cstdint>

void WriteTone(const std::string& path, double frequency) {
    constexpr int samplesPerSecond = 44100;
    std::array<std::int16_t, samplesPerSecond / 10> samples{};
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double turns = frequency * static_cast<double>(i) / samplesPerSecond;
        samples.at(i) = static_cast<std::int16_t>(8000 * std::sin(turns * 2 * 3.14159265358979));
    }
    constexpr int dataSize = sizeof samples;
    constexpr int high = 1 << 16; // two fields of 16 bits are written as one of 32, the second in its high half
    const OpenFile file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
    file->Write("RIFF", 4);
    file->WriteData(36 + dataSize);
    file->Write("WAVEfmt ", 8);
    file->WriteData(16);
    file->WriteData(1 + 1 * high); // PCM, one channel
    file->WriteData(samplesPerSecond);
    file->WriteData(2 * samplesPerSecond);
    file->WriteData(2 + 16 * high); // bytes and bits of a sample
    file->Write("data", 4);
    file->WriteData(dataSize);
    file->Write(samples.data(), dataSize);
}

void WriteFile(const std::string& path, const std::string& content) {
    const OpenFile file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
    file->Write(content.data(), static_cast<long long>(content.size()));
}

std::string ReadFile(const std::string& path) {
    const OpenFile file = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::string content(static_cast<std::size_t>(file->GetSizeLeft()), '\0');
    file->Read(content.data(), static_cast<long long>(content.size()));
    return content;
}
