#include <FrameworkBase/Files/FileStream.h>

#include "tests/support/DiskTest.h"
#include "tests/support/TolvexExceptionMatcher.h"
#include <FrameworkBase/Files/FileHandle.h>

#include <fcntl.h>
#include <memory>

namespace {

std::FILE* Open(const std::string& path, unsigned int access, unsigned int disposition) {
    return CreateFile(path.c_str(), access, 0, 0, disposition, 0, 0);
}

using CreateFileTest = DiskTest;

constexpr int notOpened = -1;
constexpr int unsupported = -2;

/// Opens the file and closes it. Returns its mode: O_RDONLY, O_WRONLY or O_RDWR; or one of the above.
int ModeOf(const std::string& path, unsigned int access, unsigned int disposition) {
    try {
        std::FILE* const file = Open(path, access, disposition);
        if (file == INVALID_HANDLE_VALUE) {
            return notOpened;
        }
        const int mode = fcntl(fileno(file), F_GETFL) & (O_ACCMODE | O_APPEND);
        EXPECT_EQ(std::fclose(file), 0);
        return mode;
    } catch (const TolvexException& exception) {
        EXPECT_EQ(exception.message, "Unsupported");
        return unsupported;
    }
}

struct OpenCase {
    unsigned int access;
    unsigned int disposition;
    int missing;         ///< the mode of a file that is created
    int existing;        ///< the mode of one that exists
    const char* content; ///< of the one that held "old"
};

TEST_F(CreateFileTest, OpensAsAccessAndDispositionSay) {
    constexpr unsigned int both = GENERIC_READ | GENERIC_WRITE;
    constexpr unsigned int unknown = 1;
    const OpenCase cases[] = {
        {GENERIC_READ, CREATE_ALWAYS, notOpened, O_RDONLY, "old"},
        {GENERIC_READ, OPEN_EXISTING, notOpened, O_RDONLY, "old"},
        {GENERIC_READ, OPEN_ALWAYS, O_RDWR, O_RDONLY, "old"},
        {GENERIC_READ, unknown, notOpened, O_RDONLY, "old"},
        {GENERIC_WRITE, CREATE_ALWAYS, O_WRONLY, O_WRONLY, ""},
        {GENERIC_WRITE, OPEN_EXISTING, notOpened, O_RDWR, "old"},
        {GENERIC_WRITE, OPEN_ALWAYS, unsupported, unsupported, "old"},
        {GENERIC_WRITE, unknown, unsupported, unsupported, "old"},
        {both, CREATE_ALWAYS, O_RDWR, O_RDWR, ""},
        {both, OPEN_EXISTING, notOpened, O_RDWR, "old"},
        {both, OPEN_ALWAYS, O_RDWR, O_RDWR, "old"},
        {both, unknown, unsupported, unsupported, "old"},
    };
    for (const auto& [access, disposition, missing, existing, content] : cases) {
        SCOPED_TRACE("access " + std::to_string(access) + ", disposition " + std::to_string(disposition));
        std::filesystem::remove(Path("f"));
        EXPECT_EQ(ModeOf(Path("f"), access, disposition), missing);
        EXPECT_EQ(std::filesystem::exists(Path("f")), missing >= 0);
        MakeFile("f", "old");
        EXPECT_EQ(ModeOf(Path("f"), access, disposition), existing);
        EXPECT_EQ(Content(Path("f")), content);
    }
}

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
    EXPECT_EQ(file.GetSizeLeft(), 4);
    EXPECT_EQ(file.GetCurrentPosition(), 6);
    EXPECT_EQ(file.Seek(-1, SEEK_SET), 4294967295) << "the failure";
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

TEST_F(FileStreamTest, CopiesShareOneStream) {
    Open("0123456789");
    const std::unique_ptr<FlapFiles::CFileBase> clone(file.Clone());
    EXPECT_EQ(clone->Seek(3, SEEK_SET), 3);
    EXPECT_EQ(file.GetCurrentPosition(), 3);
}

TEST_F(FileStreamTest, FailedOpeningThrows) {
    const auto open = [this] { file.DoCreate(Path("no").c_str(), GENERIC_READ, 0, OPEN_EXISTING); };
    EXPECT_THAT(open, ThrowsTolvexException("Error opening file"));
    EXPECT_EQ(file.handle, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(file.Close());
}

TEST_F(FileStreamTest, IntegersAreLittleEndian) {
    Open("");
    file.WriteData(-2);
    file.WriteData(0x0102030405060708LL);
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(Content(Path("f")), "\xFE\xFF\xFF\xFF\x8\x7\x6\x5\x4\x3\x2\x1");
    file.Seek(0, SEEK_SET);
    int number = 0;
    long long longNumber = 0;
    file.ReadData(number);
    file.ReadData(longNumber);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(longNumber, 0x0102030405060708);
    EXPECT_THAT([&] { file.ReadData(number); }, ThrowsTolvexException("Error reading data"));
    EXPECT_THAT([&] { file.ReadData(longNumber); }, ThrowsTolvexException("Error reading data"));
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
        {6, {"a\0b\xFF\0c", 6}, "a", 6},   {2147483647, "abc", "", 3}, {-1, "abc", "", 0},   {3, "abc", "abc", 3},
        {255, x300, x300.substr(45), 255}, {300, x300, x300, 300},     {301, x300, "", 300},
    };
    for (const auto& [length, body, string, bytesRead] : cases) {
        Open(std::string(reinterpret_cast<const char*>(&length), 4) + body);
        EXPECT_EQ(DeSerializeString(file), string) << length;
        EXPECT_EQ(file.GetCurrentPosition(), 4 + bytesRead) << length;
        EXPECT_TRUE(file.Close());
    }
}

/// Throws where the bytes of a string are read.
struct DamagedFile : FlapFiles::CFile {
    long long Read(void* data, long long size) override {
        if (size != 4) {
            throw TolvexException("damaged");
        }
        *static_cast<int*>(data) = 9;
        return size;
    }
};

TEST_F(FileStreamTest, StringLetsTolvexExceptionsThrough) {
    DamagedFile damaged;
    EXPECT_THAT([&] { DeSerializeString(damaged); }, ThrowsTolvexException("damaged"));
}

} // namespace
