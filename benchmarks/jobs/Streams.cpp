#include <FrameworkBase/Files/FileStream.h>

#include "benchmarks/Inputs.h"
#include <FrameworkBase/Files/FileHandle.h>

namespace {

const Registration streams([] {
    const auto write = [](Path path, const auto& values) {
        FlapFiles::CFile file;
        file.DoCreate(path.c_str(), GENERIC_WRITE, 0, CREATE_ALWAYS);
        for (const auto& value : values) {
            file.WriteData(value);
        }
        file.Close();
    };
    const auto read = [](Path path, auto& values) {
        FlapFiles::CFile file;
        file.DoCreate(path.c_str(), GENERIC_READ, 0, OPEN_EXISTING);
        for (auto& value : values) {
            file.ReadData(value);
        }
        file.Close();
    };
    OnStreams(library, write, read);
    const auto writeByHand = [](Path path, const auto& values) {
        std::FILE* const file = std::fopen(path.c_str(), "wb");
        for (const auto& value : values) {
            std::fwrite(&value, sizeof value, 1, file);
        }
        std::fclose(file);
    };
    const auto readByHand = [](Path path, auto& values) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        for (auto& value : values) {
            [[maybe_unused]] const std::size_t count = std::fread(&value, sizeof value, 1, file);
        }
        std::fclose(file);
    };
    OnStreams(limit, writeByHand, readByHand);
});

} // namespace
