#include <FrameworkBase/Files/FileStream.h>

#include "tests/support/DiskTest.h"
#include "tests/support/MemoryStream.h"
#include <FrameworkBase/Files/FileHandle.h>

#include <limits>
#include <memory>
#include <stdexcept>

namespace {

constexpr long long seekFailed = 4294967295;
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
    EXPECT_EQ(file.Seek(2, SEEK_SET), 2);
    EXPECT_EQ(file.Seek(3, SEEK_CUR), 5);
    EXPECT_EQ(file.Seek(-4, SEEK_END), 6);
    EXPECT_EQ(file.GetSizeLeft(), 4);
    char text[] = "..........";
    EXPECT_EQ(file.Read(text, fourGiB + 3), 3) << "the low 32 bits of the size count";
    EXPECT_STREQ(text, "678.......");
    EXPECT_EQ(file.Read(text, 10), 1);
    EXPECT_EQ(file.Seek(fourGiB, SEEK_SET), fourGiB);
    EXPECT_EQ(file.GetSizeLeft(), 10 - fourGiB);
    EXPECT_EQ(file.Seek(-1, SEEK_SET), seekFailed);
    EXPECT_TRUE(file.Close());
}

TEST_F(FileStream, ClosedFileIsTouched) {
    for (int openings = 0; openings < 2; ++openings) {
        EXPECT_EQ(file.handle, nullptr);
        EXPECT_EQ(file.GetCurrentPosition(), seekFailed);
        EXPECT_EQ(file.Write("ab", 0), 0);
        EXPECT_EQ(MessageOf([&] { file.Write("ab", 2); }), "Error writing to file");
        EXPECT_TRUE(file.Flush());
        EXPECT_FALSE(file.Close());
        Open("");
        EXPECT_EQ(MessageOf([&] { file.Write("ab", fourGiB); }), "Error writing to file");
        EXPECT_EQ(MessageOf([&] { file.Write("ab", fourGiB + 2); }), "Error writing to file");
        EXPECT_TRUE(file.Close());
    }
}

TEST_F(FileStream, OpeningClosesOrKeepsTheOldHandle) {
    Open("first");
    const std::unique_ptr<FlapFiles::CFileBase> first(file.Clone()); // on the same stream
    Open("second");
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(first->Seek(3, SEEK_SET), 3);
    EXPECT_EQ(FlapFiles::CFile(dynamic_cast<FlapFiles::CFile&>(*first)).Seek(1, SEEK_CUR), 4); // destroyed, not closed
    EXPECT_TRUE(first->Close());
    EXPECT_EQ(MessageOf([this] { file.DoCreate(Path("no").c_str(), GENERIC_READ, 0, 1); }), "Error opening file");
    EXPECT_EQ(file.handle, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(file.Close());
}

TEST_F(FileStream, IntegersChangeOrShortOnesPass) {
    Open("");
    file.WriteData(-2);
    file.WriteData(0x0102030405060708LL);
    int number = 0;
    long long longNumber = 0;
    file.Seek(0, SEEK_SET);
    EXPECT_EQ(Content(Path("f")), "\xFE\xFF\xFF\xFF\x8\x7\x6\x5\x4\x3\x2\x1");
    file.ReadData(number);
    file.ReadData(longNumber);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(longNumber, 0x0102030405060708);
    file.Seek(-2, SEEK_END);
    EXPECT_EQ(MessageOf([&] { file.ReadData(number); }), "Error reading data");
    EXPECT_EQ(number, static_cast<int>(0xFFFF0102)) << "the bytes that came are kept";
    EXPECT_EQ(MessageOf([&] { file.ReadData(longNumber); }), "Error reading data");
    EXPECT_TRUE(file.Close());
    MemoryStream other;
    other.largestWrite = 7;
    EXPECT_EQ(MessageOf([&] { other.WriteData(1), other.WriteData(1LL); }), "Error writing data");
}

TEST(DeSerializeString, OtherBytesAreTaken) {
    const std::string x300(300, 'x');
    const std::tuple<int, std::string, std::string, std::size_t> cases[] = {{4, {"abc\0next", 8}, "abc", 4},
                                                                            {6, {"a\0b\xFF\0c", 6}, "a", 6},
                                                                            {2, "abc", "ab", 2},
                                                                            {0, "abc", "", 0},
                                                                            {10, "abc", "", 3},
                                                                            {-1, "abc", "", 0},
                                                                            {300, x300 + "y", x300, 300},
                                                                            {301, x300 + "y", x300 + "y", 301},
                                                                            {301, x300, "", 300}};
    for (const auto& [length, body, text, bytesRead] : cases) {
        MemoryStream stream;
        EXPECT_EQ(DeSerializeString(stream), "") << "no length";
        stream.WriteData(length);
        stream.content += body;
        EXPECT_EQ(DeSerializeString(stream), text) << length;
        EXPECT_EQ(stream.position, 4 + bytesRead);
    }
    for (int length = 250; length < 260; ++length) { // either side of what fits into a buffer
        MemoryStream stream;
        stream.WriteData(length);
        stream.content += x300;
        EXPECT_EQ(DeSerializeString(stream), x300.substr(0, static_cast<std::size_t>(length)));
    }
}

TEST(DeSerializeString, OtherExceptionsAreSwallowed) {
    for (const long long failingRead : {4, 9}) { // the length, and the text
        const auto read = [failingRead](const auto& exception) {
            MemoryStream stream;
            stream.content = std::string("\x9\0\0\0take.wav\0", 13);
            stream.beforeRead = [&](long long size) { size == failingRead ? throw exception : void(); };
            return DeSerializeString(stream);
        };
        EXPECT_EQ(read(std::bad_alloc()) + read(std::runtime_error("damaged")), "");
        EXPECT_EQ(MessageOf([&] { read(TolvexException("Error reading data")); }), "Error reading data");
        EXPECT_THROW(read(5), int);
    }
}

} // namespace
