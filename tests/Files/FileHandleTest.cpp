#include <FrameworkBase/Files/FileHandle.h>

#include "tests/support/DiskTest.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace {

using FileHandle = DiskTest;

std::FILE* Open(const std::string& path, unsigned int access, unsigned int disposition) {
    return CreateFile(path.c_str(), access, 0, 0, disposition, 0, 0);
}

/// How CreateFile opens: "r", "w", "rw", "-" for not at all, "no" for unsupported; then the size of the file on the disk.
std::string Opened(const std::string& path, unsigned int access, unsigned int disposition) {
    std::string result = "-";
    try {
        if (std::FILE* const file = Open(path, access, disposition); file != INVALID_HANDLE_VALUE) {
            const int mode = fcntl(fileno(file), F_GETFL) & (O_ACCMODE | O_APPEND);
            result = mode == O_RDONLY ? "r" : mode == O_WRONLY ? "w" : mode == O_RDWR ? "rw" : "other";
            EXPECT_EQ(std::fclose(file), 0);
        }
    } catch (const TolvexException& exception) {
        EXPECT_EQ(exception.message, "Unsupported");
        result = "no";
    }
    return std::filesystem::exists(path) ? result + std::to_string(std::filesystem::file_size(path)) : result;
}

TEST_F(FileHandle, AnotherAccessOrDispositionIsTaken) {
    constexpr unsigned int dispositions[] = {CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS, 1, ~0U};
    using Results = std::array<std::string, 4>; // by disposition, the last two being alike
    const std::tuple<std::vector<unsigned int>, Results, Results> rows[] = {
        {{0, GENERIC_READ, 0xBFFFFFFF}, {"-", "-", "rw0", "-"}, {"r3", "r3", "r3", "r3"}},
        {{GENERIC_WRITE, 0x7FFFFFFF}, {"w0", "-", "no", "no"}, {"w0", "rw3", "no3", "no3"}},
        {{GENERIC_READ | GENERIC_WRITE, ~0U}, {"rw0", "-", "rw0", "no"}, {"rw0", "rw3", "rw3", "no3"}}};
    for (const auto& [accesses, missing, existing] : rows) {
        for (const unsigned int access : accesses) {
            for (std::size_t i = 0; i < std::size(dispositions); ++i) {
                SCOPED_TRACE(testing::Message() << std::hex << access << " with " << dispositions[i]);
                std::filesystem::remove(Path("f"));
                EXPECT_EQ(Opened(Path("f"), access, dispositions[i]), missing[std::min<std::size_t>(i, 3)]);
                EXPECT_EQ(Opened(MakeFile("f", "old"), access, dispositions[i]), existing[std::min<std::size_t>(i, 3)]);
            }
        }
    }
    EXPECT_EQ(chmod(MakeFile("f", "old").c_str(), 0), 0);
    const AsOrdinaryUser user;
    EXPECT_EQ(Opened(Path("f"), GENERIC_READ, OPEN_ALWAYS), "-3");
    EXPECT_EQ(Opened(Path("f"), GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS), "-3");
    EXPECT_EQ(Opened(Path("f"), GENERIC_WRITE, CREATE_ALWAYS), "-3");
}

TEST_F(FileHandle, WrittenBytesAreMiscounted) {
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
}

TEST_F(FileHandle, ShortWriteCountsAsFailure) {
    std::array<char, 8> room{};
    unsigned int written = 0;
    std::FILE* file = fmemopen(room.data(), room.size(), "wb");
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    EXPECT_EQ(WriteFile(file, "0123456789", 10, &written, 0), 1);
    EXPECT_TRUE(written > 0 && written < 10) << written;
    EXPECT_EQ(CloseHandle(file), 1);
    file = Open("/dev/full", GENERIC_WRITE, OPEN_EXISTING);
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    EXPECT_EQ(WriteFile(file, "ab", 2, &written, 0), 0);
    EXPECT_TRUE(written == 0 && std::ferror(file) != 0);
    EXPECT_EQ(TolvexFlushFileBuffers(file), 1) << "failures are not told";
    EXPECT_EQ(CloseHandle(file), 1);
    file = Open("/dev/full", GENERIC_WRITE, OPEN_EXISTING);
    EXPECT_EQ(WriteFile(file, "ab", 2, &written, 0), 1);
    EXPECT_EQ(CloseHandle(file), 0);
}

} // namespace
