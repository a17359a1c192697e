#include "FrameworkBase/Files/FileHandle.h"

#include "tests/support/DiskTest.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <functional>
#include <sys/stat.h>

namespace {

using FileHandle = DiskTest;

std::FILE* Open(const std::string& path, unsigned int access, unsigned int disposition) {
    return CreateFile(path.c_str(), access, 0, 0, disposition, 0, 0);
}

/// Opens with the first of one or two modes that works; no mode is unsupported.
std::FILE* OpenWithModes(const std::string& path, const std::string& modes) {
    const std::size_t space = modes.find(' ');
    std::FILE* file =
        std::fopen(path.c_str(), modes.empty() ? throw TolvexException("Unsupported") : modes.substr(0, space).c_str());
    file = file == nullptr && space != std::string::npos ? std::fopen(path.c_str(), modes.c_str() + space + 1) : file;
    return file == nullptr ? INVALID_HANDLE_VALUE : file;
}

/// All that an ordinary user can tell of what `open` gives and leaves at `path`.
std::string Observe(const std::string& path, const std::function<std::FILE*()>& open) {
    const AsOrdinaryUser user;
    std::string observed;
    try {
        if (std::FILE* const file = open(); file == INVALID_HANDLE_VALUE) {
            observed = std::strerror(errno);
        } else {
            observed = std::fgetc(file) != EOF || std::ferror(file) == 0 ? "reads" : "";
            std::rewind(file);
            observed += std::fputc('N', file) != EOF && std::fflush(file) == 0 ? " writes" : "";
            std::fclose(file);
        }
    } catch (const TolvexException& exception) {
        observed = exception.message;
    }
    struct stat status {};
    return observed + (stat(path.c_str(), &status) == 0 ? ", size " + std::to_string(status.st_size) : ", missing");
}

TEST_F(FileHandle, OpensWithTheModeOfAccessAndDisposition) {
    constexpr std::array<unsigned int, 7> dispositions = {CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS, 0, 1, 5,
                                                          0x80000003};
    // Accesses and their modes by disposition, those from the fourth on being alike; none where it throws.
    const std::pair<std::vector<unsigned int>, std::array<std::string, 4>> rows[] = {
        {{0, GENERIC_READ, 0x20000000, 0xBFFFFFFF}, {"rb", "rb", "rb w+b", "rb"}},
        {{GENERIC_WRITE, 0x50000000, 0x7FFFFFFF}, {"wb", "r+b", "", ""}},
        {{GENERIC_READ | GENERIC_WRITE, 0xE0000000, 0xFFFFFFFF}, {"w+b", "r+b", "r+b w+b", ""}}};
    const std::string path = Path("file");
    const auto makeFile = [&](mode_t mode) { EXPECT_EQ(chmod(MakeFile("file", "old").c_str(), mode), 0); };
    const std::function<void()> states[] = {[] {}, [&] { makeFile(0666); }, [&] { makeFile(0444); },
                                            [&] { makeFile(0222); }, [&] { MakeFolder("file"); }};
    const auto expectMode = [&](const std::function<void()>& makeState, unsigned int access, unsigned int disposition,
                                const std::string& modes) {
        makeState();
        const std::string observed = Observe(path, [&] { return Open(path, access, disposition); });
        std::filesystem::remove(path);
        makeState();
        EXPECT_EQ(observed, Observe(path, [&] { return OpenWithModes(path, modes); })) << access << ' ' << disposition;
        std::filesystem::remove(path);
    };
    for (const auto& makeState : states) {
        for (const auto& [accesses, modes] : rows) {
            for (const unsigned int access : accesses) {
                for (std::size_t i = 0; i < dispositions.size(); ++i) {
                    expectMode(makeState, access, dispositions[i], modes[std::min<std::size_t>(i, 3)]);
                }
            }
        }
    }
}

TEST_F(FileHandle, WriteFileTellsWhatTheStreamTook) {
    unsigned int written = 77;
    EXPECT_EQ(WriteFile(INVALID_HANDLE_VALUE, nullptr, 0, &written, 0), 1);
    EXPECT_EQ(WriteFile(nullptr, "abcde", 0, &written, 0), 1);
    EXPECT_EQ(WriteFile(nullptr, "abcde", 5, &written, 0), 0);
    EXPECT_EQ(written, 77U);
    std::FILE* file = Open(MakeFile("f"), GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_EQ(WriteFile(file, "a\0b", 3, &written, 1), 1);
    EXPECT_EQ(written, 3U);
    EXPECT_EQ(WriteFile(file, "cd", 2, nullptr, 0), 1);
    EXPECT_EQ(TolvexFlushFileBuffers(file) + TolvexFlushFileBuffers(nullptr), 2);
    EXPECT_EQ(Content(Path("f")), std::string("a\0bcd", 5));
    EXPECT_EQ(CloseHandle(file), 1);
    EXPECT_EQ(CloseHandle(nullptr) + CloseHandle(INVALID_HANDLE_VALUE), 0);

    std::array<char, 8> room{};
    file = fmemopen(room.data(), room.size(), "wb");
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    EXPECT_EQ(WriteFile(file, "0123456789", 10, &written, 0), 1) << "a short write counts as success";
    EXPECT_TRUE(written > 0 && written < 10) << written;
    EXPECT_EQ(CloseHandle(file), 1);
}

TEST_F(FileHandle, FullDiskIsNoticedWhenTheBufferIsWritten) {
    unsigned int written = 77;
    std::FILE* file = Open("/dev/full", GENERIC_WRITE, OPEN_EXISTING);
    EXPECT_EQ(WriteFile(file, "ab", 2, &written, 0), 1);
    EXPECT_EQ(CloseHandle(file), 0);
    file = Open("/dev/full", GENERIC_WRITE, OPEN_EXISTING);
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    EXPECT_EQ(WriteFile(file, "ab", 2, &written, 0), 0);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(TolvexFlushFileBuffers(file), 1);
    EXPECT_NE(std::ferror(file), 0);
    EXPECT_EQ(CloseHandle(file), 1);
}

} // namespace
