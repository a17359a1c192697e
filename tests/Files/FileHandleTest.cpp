#include <FrameworkBase/Files/FileHandle.h>

#include "tests/support/DiskTest.h"

#include <array>
#include <fcntl.h>

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
        result = exception.message == "Unsupported" ? "no" : exception.message;
    }
    return std::filesystem::exists(path) ? result + std::to_string(std::filesystem::file_size(path)) : result;
}

TEST_F(FileHandle, OpensForAnotherAccessOrEmptiesAFile) {
    constexpr unsigned int dispositions[] = {CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS, 1};
    const std::tuple<std::vector<unsigned int>, const char*, const char*> rows[] = {
        {{0, GENERIC_READ, 0xBFFFFFFF}, "- - rw0 -", "r3 r3 r3 r3"},
        {{GENERIC_WRITE, 0x7FFFFFFF}, "w0 - no no", "w0 rw3 no3 no3"},
        {{GENERIC_READ | GENERIC_WRITE, ~0U}, "rw0 - rw0 no", "rw0 rw3 rw3 no3"}};
    for (const auto& [accesses, missing, existing] : rows) {
        for (const unsigned int access : accesses) {
            std::vector<std::string> made;
            std::vector<std::string> found;
            for (const unsigned int disposition : dispositions) {
                std::filesystem::remove(Path("f"));
                made.push_back(Opened(Path("f"), access, disposition));
                found.push_back(Opened(MakeFile("f", "old"), access, disposition));
            }
            EXPECT_EQ(made, Cells(missing, " ")) << access;
            EXPECT_EQ(found, Cells(existing, " ")) << access;
        }
    }
    std::filesystem::permissions(MakeFile("f", "old"), std::filesystem::perms::none);
    const AsOrdinaryUser user;
    for (const unsigned int access : {GENERIC_READ, GENERIC_READ | GENERIC_WRITE}) {
        EXPECT_EQ(Opened(Path("f"), access, OPEN_ALWAYS), "-3");
    }
    EXPECT_EQ(Opened(Path("f"), GENERIC_WRITE, CREATE_ALWAYS), "-3");
}

TEST_F(FileHandle, WrittenBytesAreMiscounted) {
    unsigned int written = 77;
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
    EXPECT_EQ(WriteFile(file, "ab", 2, &written, 0), 1);
    EXPECT_EQ(CloseHandle(file), 0);
    file = Open("/dev/full", GENERIC_WRITE, OPEN_EXISTING);
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    EXPECT_EQ(WriteFile(file, "ab", 2, &written, 0), 0);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(TolvexFlushFileBuffers(file), 1) << "failures are not told";
    EXPECT_EQ(CloseHandle(file), 1);
}

} // namespace
