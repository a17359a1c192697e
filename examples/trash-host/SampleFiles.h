#pragma once

#include <string>

/// Writes a sine tone of a tenth of a second to `path`: a WAV file of one channel, 16 bits and 44100 samples a second.
void WriteTone(const std::string& path, double frequency);

void WriteFile(const std::string& path, const std::string& content);

std::string ReadFile(const std::string& path);
