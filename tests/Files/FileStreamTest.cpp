#include <FrameworkBase/Files/FileStream.h>

#include "tests/support/DiskTest.h"
#include "tests/support/TolvexExceptionMatcher.h"
#include <FrameworkBase/Files/FileHandle.h>

#include <array>
#include <fcntl.h>
#include <memory>
#include <stdexcept>

namespace {

std::FILE* Open(const std::string& path, unsigned int access, unsigned int disposition) {
    return CreateFile(path.c_str(), access, 0, 0, disposition, 0, 0);
}

enum class Opened { ReadOnly, WriteOnly, ReadAndWrite, Not, Unsupported };

struct OpenCase {
    unsigned int access;
    unsigned int disposition;
    Opened missing;
    Opened existing;
    const char* content; ///< of the file that held "old"
};

class CreateFileTest : public DiskTest {
protected:
    Opened Try(unsigned int access, unsigned int disposition) const {
        std::FILE* file = nullptr;
        try {
            file = Open(Path("f"), access, disposition);
        } catch (const TolvexException& exception) {
            EXPECT_EQ(exception.message, "Unsupported");
            return Opened::Unsupported;
        }
        if (file == INVALID_HANDLE_VALUE) {
            return Opened::Not;
        }
        const int mode = fcntl(fileno(file), F_GETFL) & (O_ACCMODE | O_APPEND);
        EXPECT_EQ(std::fclose(file), 0);
        switch (mode) {
        case O_RDONLY:
            return Opened::ReadOnly;
        case O_WRONLY:
            return Opened::WriteOnly;
        default:
            EXPECT_EQ(mode, O_RDWR);
            return Opened::ReadAndWrite;
        }
    }
};

TEST_F(CreateFileTest, OpensAsAccessAndDispositionSay) {
    constexpr unsigned int both = GENERIC_READ | GENERIC_WRITE;
    constexpr unsigned int unknown = 1;
    const OpenCase cases[] = {
        {GENERIC_READ, CREATE_ALWAYS, Opened::Not, Opened::ReadOnly, "old"},
        {GENERIC_READ, OPEN_EXISTING, Opened::Not, Opened::ReadOnly, "old"},
        {GENERIC_READ, OPEN_ALWAYS, Opened::ReadAndWrite, Opened::ReadOnly, "old"},
        {GENERIC_READ, unknown, Opened::Not, Opened::ReadOnly, "old"},
        {GENERIC_WRITE, CREATE_ALWAYS, Opened::WriteOnly, Opened::WriteOnly, ""},
        {GENERIC_WRITE, OPEN_EXISTING, Opened::Not, Opened::ReadAndWrite, "old"},
        {GENERIC_WRITE, OPEN_ALWAYS, Opened::Unsupported, Opened::Unsupported, "old"},
        {GENERIC_WRITE, unknown, Opened::Unsupported, Opened::Unsupported, "old"},
        {both, CREATE_ALWAYS, Opened::ReadAndWrite, Opened::ReadAndWrite, ""},
        {both, OPEN_EXISTING, Opened::Not, Opened::ReadAndWrite, "old"},
        {both, OPEN_ALWAYS, Opened::ReadAndWrite, Opened::ReadAndWrite, "old"},
        {both, unknown, Opened::Unsupported, Opened::Unsupported, "old"},
        {0, OPEN_EXISTING, Opened::Not, Opened::ReadOnly, "old"}, // the other bits do not count
        {0xBFFFFFFF, OPEN_EXISTING, Opened::Not, Opened::ReadOnly, "old"},
        {0x7FFFFFFF, OPEN_EXISTING, Opened::Not, Opened::ReadAndWrite, "old"},
    };
    for (const auto& [access, disposition, missing, existing, content] : cases) {
        SCOPED_TRACE("access " + std::to_string(access) + ", disposition " + std::to_string(disposition));
        std::filesystem::remove(Path("f"));
        const bool isCreated = missing != Opened::Not && missing != Opened::Unsupported;
        EXPECT_EQ(Try(access, disposition), missing);
        EXPECT_EQ(TreeOf(folder), isCreated ? (Tree{{"f", ""}}) : Tree());
        MakeFile("f", "old");
        EXPECT_EQ(Try(access, disposition), existing);
        EXPECT_EQ(Content(Path("f")), content);
    }
}

TEST_F(CreateFileTest, OpensNoFileThatPermissionsForbid) {
    std::filesystem::permissions(MakeFile("f"), std::filesystem::perms::none);
    const AsOrdinaryUser ordinary;
    EXPECT_EQ(Try(GENERIC_READ, OPEN_ALWAYS), Opened::Not);
    EXPECT_EQ(Try(GENERIC_WRITE, CREATE_ALWAYS), Opened::Not);
}

using WriteFileTest = DiskTest;

TEST_F(WriteFileTest, CountsTheBytesWritten) {
    unsigned int written = 77;
    std::FILE* const file = Open(Path("f"), GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_EQ(WriteFile(file, "a\0b", 3, &written, 1), 1);
    EXPECT_EQ(written, 3U);
    EXPECT_EQ(WriteFile(file, "cd", 2, nullptr, 0), 1);
    EXPECT_EQ(TolvexFlushFileBuffers(file), 1);
    EXPECT_EQ(Content(Path("f")), std::string("a\0bcd", 5));
    EXPECT_EQ(CloseHandle(file), 1);
}

TEST_F(WriteFileTest, SucceedsWithFewerBytes) {
    std::array<char, 8> room{};
    std::FILE* const file = fmemopen(room.data(), room.size(), "wb");
    ASSERT_EQ(std::setvbuf(file, nullptr, _IONBF, 0), 0);
    unsigned int written = 0;
    EXPECT_EQ(WriteFile(file, "0123456789", 10, &written, 0), 1);
    EXPECT_GT(written, 0U);
    EXPECT_LT(written, 10U);
    EXPECT_EQ(CloseHandle(file), 1);
}

TEST_F(WriteFileTest, FailsWithoutAFileUnlessNothingIsWritten) {
    unsigned int written = 77;
    EXPECT_EQ(WriteFile(nullptr, "abcde", 0, &written, 0), 1);
    EXPECT_EQ(WriteFile(nullptr, "abcde", 5, &written, 0), 0);
    EXPECT_EQ(written, 77U);
    EXPECT_EQ(TolvexFlushFileBuffers(nullptr), 1);
    EXPECT_EQ(CloseHandle(nullptr), 0);
    EXPECT_EQ(CloseHandle(INVALID_HANDLE_VALUE), 0);
}

TEST_F(WriteFileTest, ReportsAFullDiskByTheWriteOrByClosing) {
    std::FILE* const buffered = Open(MakeFile("a"), GENERIC_WRITE, OPEN_EXISTING);
    std::FILE* const unbuffered = Open(MakeFile("b"), GENERIC_WRITE, OPEN_EXISTING);
    EXPECT_EQ(std::setvbuf(unbuffered, nullptr, _IONBF, 0), 0);
    const FullDisk fullDisk;
    EXPECT_EQ(WriteFile(buffered, "ab", 2, nullptr, 0), 1);
    EXPECT_EQ(CloseHandle(buffered), 0);
    EXPECT_EQ(WriteFile(unbuffered, "ab", 2, nullptr, 0), 0);
    EXPECT_EQ(CloseHandle(unbuffered), 1);
}

constexpr long long fourGiB = 1LL << 32;

class FileStreamTest : public DiskTest {
protected:
    /// Opens `file` on a new file of this content, for reading and writing.
    void Open(const std::string& content) {
        file.DoCreate(MakeFile("f", content).c_str(), GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
    }

    void TearDown() override {
        file.Close();
        DiskTest::TearDown();
    }

    FlapFiles::CFile file;
};

TEST_F(FileStreamTest, SeekMovesFromStartPositionAndEnd) {
    Open("0123456789");
    EXPECT_EQ(file.Seek(2, SEEK_SET), 2);
    EXPECT_EQ(file.Seek(3, SEEK_CUR), 5);
    EXPECT_EQ(file.Seek(-4, SEEK_END), 6);
    EXPECT_EQ(file.GetCurrentPosition(), 6);
    EXPECT_EQ(file.GetSizeLeft(), 4);
}

TEST_F(FileStreamTest, SeekReachesBeyondFourGiB) {
    Open("0123456789");
    EXPECT_EQ(file.Seek(fourGiB, SEEK_SET), fourGiB);
    EXPECT_EQ(file.GetSizeLeft(), 10 - fourGiB);
    EXPECT_EQ(file.Seek(-1, SEEK_SET), 4294967295) << "the failure";
}

TEST_F(FileStreamTest, ReadReturnsTheBytesThatWereLeft) {
    Open("012345");
    char bytes[] = "..........";
    EXPECT_EQ(file.Read(bytes, 4), 4);
    EXPECT_EQ(file.Read(bytes, 10), 2);
    EXPECT_STREQ(bytes, "4523......");
}

TEST_F(FileStreamTest, SizesCountModuloFourGiB) {
    Open("012345");
    char bytes[] = "..........";
    EXPECT_EQ(file.Read(bytes, fourGiB + 3), 3);
    EXPECT_STREQ(bytes, "012.......");
    EXPECT_THAT([&] { file.Write("ab", fourGiB + 2); }, ThrowsTolvexException("Error writing to file"));
    EXPECT_EQ(file.GetCurrentPosition(), 5);
}

TEST_F(FileStreamTest, FlushedBytesAreInTheFile) {
    Open("");
    EXPECT_EQ(file.Write("01234", 5), 5);
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(Content(Path("f")), "01234");
    EXPECT_TRUE(file.Close());
}

TEST_F(FileStreamTest, ClosedStreamTakesNothing) {
    Open("");
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(file.GetCurrentPosition(), 4294967295);
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(file.Write("ab", 0), 0);
    EXPECT_THAT([&] { file.Write("ab", 2); }, ThrowsTolvexException("Error writing to file"));
}

TEST_F(FileStreamTest, CopiesShareOneStreamThatDestructionLeavesOpen) {
    Open("0123456789");
    const std::unique_ptr<FlapFiles::CFileBase> clone(file.Clone());
    EXPECT_EQ(clone->Seek(3, SEEK_SET), 3);
    EXPECT_EQ(FlapFiles::CFile(file).Seek(1, SEEK_CUR), 4);
    EXPECT_EQ(file.GetCurrentPosition(), 4);
}

TEST_F(FileStreamTest, OpeningAnotherFileLeavesTheFirstOpen) {
    Open("first");
    FlapFiles::CFile first = file;
    Open("second");
    EXPECT_TRUE(first.Close());
}

TEST_F(FileStreamTest, FailedOpeningThrows) {
    const auto open = [this] { file.DoCreate(Path("no").c_str(), GENERIC_READ, 0, OPEN_EXISTING); };
    EXPECT_THAT(open, ThrowsTolvexException("Error opening file"));
    EXPECT_EQ(file.handle, INVALID_HANDLE_VALUE);
}

TEST_F(FileStreamTest, IntegersAreLittleEndian) {
    Open("\xFE\xFF\xFF\xFF\x8\x7\x6\x5\x4\x3\x2\x1");
    int number = 0;
    long long longNumber = 0;
    file.ReadData(number);
    file.ReadData(longNumber);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(longNumber, 0x0102030405060708);
    file.Seek(0, SEEK_SET);
    file.WriteData(longNumber);
    file.WriteData(number);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(Content(Path("f")), "\x8\x7\x6\x5\x4\x3\x2\x1\xFE\xFF\xFF\xFF");
}

TEST_F(FileStreamTest, IntegerThatIsCutThrowsAndKeepsTheBytesThatCame) {
    Open("\x2\x1");
    int number = -1;
    long long longNumber = 0;
    EXPECT_THAT([&] { file.ReadData(number); }, ThrowsTolvexException("Error reading data"));
    EXPECT_EQ(number, static_cast<int>(0xFFFF0102));
    EXPECT_THAT([&] { file.ReadData(longNumber); }, ThrowsTolvexException("Error reading data"));
}

TEST_F(FileStreamTest, IntegerThatIsWrittenInPartThrows) {
    struct : FlapFiles::CFile {
        long long Write(const void* /*data*/, long long size) override { return size - 1; }
    } narrow;
    EXPECT_THAT([&] { narrow.WriteData(1); }, ThrowsTolvexException("Error writing data"));
    EXPECT_THAT([&] { narrow.WriteData(1LL); }, ThrowsTolvexException("Error writing data"));
}

struct StringCase {
    int length;
    std::string body; ///< what follows the length
    std::string string;
    int bytesRead; ///< of the body
};

TEST_F(FileStreamTest, StringsEndAtTheirLengthOrFirstZeroByte) {
    const std::string x300(300, 'x');
    const StringCase cases[] = {
        {6, {"a\0b\xFF\0c", 6}, "a", 6},
        {10, "abc", "", 3},
        {2147483647, "abc", "", 3},
        {-1, "abc", "", 0},
        {0, "abc", "", 0},
        {3, "abc", "abc", 3},
        {255, x300, x300.substr(45), 255},
        {300, x300, x300, 300},
        {301, x300, "", 300},
    };
    for (const auto& [length, body, string, bytesRead] : cases) {
        Open(std::string(reinterpret_cast<const char*>(&length), 4) + body);
        EXPECT_EQ(DeSerializeString(file), string) << length;
        EXPECT_EQ(file.GetCurrentPosition(), 4 + bytesRead) << length;
        EXPECT_TRUE(file.Close());
    }
}

/// Reads a length of 9, and throws what it is made with in place of the 9 bytes.
template <class Exception>
struct DamagedFile : FlapFiles::CFile {
    explicit DamagedFile(Exception thrown) : exception(std::move(thrown)) {}

    long long Read(void* data, long long size) override {
        if (size != 4) {
            throw exception;
        }
        *static_cast<int*>(data) = 9;
        return size;
    }

    Exception exception;
};

TEST_F(FileStreamTest, StringIsEmptyAfterAnyStandardException) {
    DamagedFile damaged(std::runtime_error("damaged"));
    EXPECT_EQ(DeSerializeString(damaged), "");
}

TEST_F(FileStreamTest, StringLetsOtherExceptionsThrough) {
    DamagedFile damaged(TolvexException("damaged"));
    EXPECT_THAT([&] { DeSerializeString(damaged); }, ThrowsTolvexException("damaged"));
    DamagedFile thrower(5);
    EXPECT_THROW(DeSerializeString(thrower), int);
}

} // namespace
