#include <FrameworkBase/Files/FileStream.h>

#include "tests/support/DiskTest.h"
#include <FrameworkBase/Files/FileHandle.h>

#include <fcntl.h>
#include <functional>
#include <memory>
#include <stdexcept>

namespace {

using FileHandle = DiskTest;

std::FILE* Open(const std::string& path, unsigned int access, unsigned int disposition) {
    return CreateFile(path.c_str(), access, 0, 0, disposition, 0, 0);
}

/// How CreateFile opens: "r", "w", "rw", "-" for not at all, "no" for unsupported; then the size of the file on disk.
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

TEST_F(FileHandle, WrittenBytesAreMiscountedOrAShortWriteFails) {
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
    std::array<char, 8> room{};
    file = fmemopen(room.data(), room.size(), "wb");
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    EXPECT_EQ(WriteFile(file, "0123456789", 10, &written, 0), 1);
    EXPECT_TRUE(written > 0 && written < 10) << written;
    EXPECT_EQ(CloseHandle(file), 1);
}

TEST_F(FileHandle, FullDiskIsReportedByUnbufferedWritesOrByClosing) {
    for (const bool isBuffered : {true, false}) {
        std::FILE* file = Open(MakeFile("f"), GENERIC_WRITE, OPEN_EXISTING);
        const FullDisk fullDisk;
        EXPECT_EQ(std::setvbuf(file, nullptr, isBuffered ? _IOFBF : _IONBF, isBuffered ? 4096 : 0), 0);
        EXPECT_EQ(WriteFile(file, "ab", 2, nullptr, 0), isBuffered);
        EXPECT_EQ(CloseHandle(file), !isBuffered);
    }
}

constexpr long long fourGiB = 1LL << 32;

struct FileStream : DiskTest {
    /// Opens `file` on a new file of this content, for reading and writing.
    void Open(const std::string& content) {
        file.DoCreate(MakeFile("f", content).c_str(), GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
    }

    FlapFiles::CFile file;
};

TEST_F(FileStream, PositionIsLost) {
    Open("");
    EXPECT_EQ(file.Write("0123456789", 10), 10);
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(Content(Path("f")), "0123456789");
    EXPECT_EQ(file.GetCurrentPosition(), 10);
    EXPECT_EQ(file.Seek(2, SEEK_SET) + file.Seek(3, SEEK_CUR), 2 + 5);
    EXPECT_EQ(file.Seek(-4, SEEK_END), 6);
    EXPECT_EQ(file.GetSizeLeft(), 4);
    char text[] = "..........";
    EXPECT_EQ(file.Read(text, fourGiB + 3), 3) << "the low 32 bits of the size count";
    EXPECT_STREQ(text, "678.......");
    EXPECT_EQ(file.Read(text, 10), 1);
    EXPECT_EQ(file.Seek(fourGiB, SEEK_SET), fourGiB);
    EXPECT_EQ(file.GetSizeLeft(), 10 - fourGiB);
    EXPECT_EQ(file.Seek(-1, SEEK_SET), 4294967295);
    EXPECT_TRUE(file.Close());
}

TEST_F(FileStream, ClosedFileIsTouchedOrTheOldHandleKept) {
    EXPECT_EQ(file.Write("ab", 0), 0);
    EXPECT_EQ(MessageOf([&] { file.Write("ab", 2); }), "Error writing to file");
    Open("first");
    EXPECT_EQ(MessageOf([&] { file.Write("ab", fourGiB); }), "Error writing to file");
    EXPECT_EQ(MessageOf([&] { file.Write("ab", fourGiB + 2); }), "Error writing to file");
    file.Seek(0, SEEK_SET);
    const std::unique_ptr<FlapFiles::CFileBase> first(file.Clone()); // on the same stream
    Open("second");
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(file.GetCurrentPosition(), 4294967295);
    EXPECT_TRUE(file.Flush());
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(first->Seek(3, SEEK_SET), 3);
    EXPECT_EQ(FlapFiles::CFile(dynamic_cast<FlapFiles::CFile&>(*first)).Seek(1, SEEK_CUR), 4); // destroyed, not closed
    EXPECT_TRUE(first->Close());
    EXPECT_EQ(MessageOf([this] { file.DoCreate(Path("no").c_str(), GENERIC_READ, 0, 1); }), "Error opening file");
    EXPECT_EQ(file.handle, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(file.Close());
}

TEST_F(FileStream, IntegersChangeOrShortOnesPass) {
    Open("\xFE\xFF\xFF\xFF\x8\x7\x6\x5\x4\x3\x2\x1");
    int number = 0;
    long long longNumber = 0;
    file.ReadData(number);
    file.ReadData(longNumber);
    EXPECT_TRUE(number == -2 && longNumber == 0x0102030405060708) << number << ", " << longNumber;
    file.Seek(-2, SEEK_END);
    EXPECT_EQ(MessageOf([&] { file.ReadData(number); }), "Error reading data");
    EXPECT_EQ(number, static_cast<int>(0xFFFF0102)) << "the bytes that came are kept";
    EXPECT_EQ(MessageOf([&] { file.ReadData(longNumber); }), "Error reading data");
    file.Seek(0, SEEK_SET);
    file.WriteData(longNumber);
    file.WriteData(number);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(Content(Path("f")), "\x8\x7\x6\x5\x4\x3\x2\x1\x2\x1\xFF\xFF");
    struct : FlapFiles::CFile {
        long long Write(const void* /*data*/, long long size) override { return std::min(size, 7LL); }
    } narrow;
    EXPECT_EQ(MessageOf([&] { narrow.WriteData(1), narrow.WriteData(1LL); }), "Error writing data");
}

TEST_F(FileStream, TextOfOtherBytesIsTaken) {
    const std::string x300(300, 'x');
    std::vector<std::tuple<int, std::string, std::string, int>> cases = {{6, {"a\0b\xFF\0c", 6}, "a", 6},
                                                                         {10, "abc", "", 3},
                                                                         {2147483647, "abc", "", 3},
                                                                         {-1, "abc", "", 0},
                                                                         {301, x300, "", 300}};
    for (const int length : {0, 4, 255, 256, 257, 300}) { // short texts have another place
        cases.emplace_back(length, x300, x300.substr(0, static_cast<std::size_t>(length)), length);
    }
    for (const auto& [length, body, text, bytesRead] : cases) {
        Open(std::string(reinterpret_cast<const char*>(&length), 4) + body);
        EXPECT_EQ(DeSerializeString(file), text) << length;
        EXPECT_EQ(file.GetCurrentPosition(), 4 + bytesRead);
        file.Seek(0, SEEK_END);
        EXPECT_EQ(DeSerializeString(file), "") << "no length";
        EXPECT_TRUE(file.Close());
    }
    struct : FlapFiles::CFile {
        long long Read(void* data, long long size) override {
            return size == failingRead ? fail(), 0 : (*static_cast<int*>(data) = 9), size;
        }
        long long failingRead = 0;
        std::function<void()> fail;
    } damaged;
    for (damaged.failingRead = 4; damaged.failingRead <= 9; damaged.failingRead += 5) { // the length, and the text
        damaged.fail = [] { throw std::runtime_error("damaged"); };
        EXPECT_EQ(DeSerializeString(damaged), "");
        damaged.fail = [] { throw TolvexException("told"); };
        EXPECT_EQ(MessageOf([&] { DeSerializeString(damaged); }), "told");
        damaged.fail = [] { throw 5; };
        EXPECT_THROW(DeSerializeString(damaged), int);
    }
}

} // namespace
