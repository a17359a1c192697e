#include "FrameworkBase/Files/internal/BufferedFile.h"

#include "tests/support/MemoryStream.h"

#include <gtest/gtest.h>

namespace {

constexpr long long capacity = 65536; // of the buffer: pieces around it are the interesting ones
constexpr long long pieces[] = {1, 7, 1000, capacity - 1, capacity, capacity + 1, 2 * capacity + 1};

std::string Pattern() {
    std::string text(3 * capacity + 5, '\0');
    std::generate(text.begin(), text.end(), [n = 0]() mutable { return static_cast<char>(++n % 251); });
    return text;
}

TEST(BufferedFile, PiecesOfAnySizeArriveInOrder) {
    for (const long long piece : pieces) {
        MemoryStream stream;
        BufferedFile file(stream);
        std::string text;
        for (const std::string pattern = Pattern(); text.size() < pattern.size();) {
            const std::string part = pattern.substr(text.size(), static_cast<std::size_t>(piece));
            const auto size = static_cast<long long>(part.size());
            EXPECT_EQ(file.Write(part.data(), size), size);
            text += part;
        }
        EXPECT_TRUE(file.Flush());
        EXPECT_TRUE(stream.content == text) << piece;
        file.WriteData(0x41414141);
        EXPECT_TRUE(file.Close());
        EXPECT_TRUE(stream.content == text + "AAAA");
        EXPECT_FALSE(file.Flush()) << "the answer of the stream";
    }
}

TEST(BufferedFile, ReadsAllThatTheStreamHasHoweverLittleItGivesAtATime) {
    for (const long long piece : pieces) {
        for (const long long largestRead : {1 << 30, 1001}) {
            MemoryStream stream(Pattern());
            stream.largestRead = largestRead;
            BufferedFile file(stream);
            std::string text;
            std::string buffer(static_cast<std::size_t>(piece), '\0');
            long long count = piece;
            while (count == piece) {
                count = file.Read(buffer.data(), piece);
                text.append(buffer, 0, static_cast<std::size_t>(count));
            }
            EXPECT_TRUE(text == stream.content) << piece;
            EXPECT_EQ(file.Read(buffer.data(), piece), 0);
        }
    }
}

TEST(BufferedFile, MovingAndCloningAreUnsupported) {
    MemoryStream stream("abc");
    BufferedFile file(stream);
    EXPECT_EQ(MessageOf([&] { file.Seek(0, SEEK_SET); }), "Unsupported");
    EXPECT_EQ(MessageOf([&] { file.Clone(); }), "Unsupported");
}

TEST(BufferedFile, FailuresOfTheStreamPassThroughAndLeaveItOpen) {
    struct : MemoryStream {
        long long Write(const void*, long long) override { throw TolvexException("full"); }
    } stream;
    BufferedFile file(stream);
    file.WriteData(1);
    EXPECT_EQ(MessageOf([&] { file.Flush(); }), "full");
    EXPECT_EQ(MessageOf([&] { file.Close(); }), "full");
    EXPECT_TRUE(stream.isOpen);
}

} // namespace
