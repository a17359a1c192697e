#include <FrameworkBase/Files/internal/BufferedFile.h>

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
        const std::string text = Pattern().substr(0, static_cast<std::size_t>(3 * capacity / piece * piece));
        for (std::size_t start = 0; start < text.size(); start += static_cast<std::size_t>(piece)) {
            EXPECT_EQ(file.Write(text.data() + start, piece), piece);
        }
        EXPECT_TRUE(file.Flush());
        EXPECT_TRUE(stream.content == text) << piece;
        file.WriteData(0x41414141);
        EXPECT_TRUE(file.Close());
        EXPECT_TRUE(stream.content == text + "AAAA");
        EXPECT_FALSE(file.Flush()) << "the answer of the stream";
    }
}

TEST(BufferedFile, ReadsComeOutAsTheyWouldWithoutIt) {
    for (const long long piece : pieces) {
        MemoryStream plain(Pattern());
        plain.faults = {0, 1, 1000, 65000, capacity, capacity + 1, 2 * capacity, 150000, 3 * capacity + 5};
        MemoryStream target(plain);
        BufferedFile file(target);
        std::string expected(static_cast<std::size_t>(piece), '-');
        std::string buffer = expected;
        for (int shortReads = 0; shortReads < 12;) {
            const long long count = plain.Read(expected.data(), piece);
            ASSERT_EQ(file.Read(buffer.data(), piece), count) << piece << " before " << plain.position;
            ASSERT_TRUE(buffer == expected);
            shortReads += count < piece ? 1 : 0;
        }
        EXPECT_EQ(plain.position, plain.content.size());
    }
}

TEST(BufferedFile, WhatItCannotDoAndFailuresOfTheStreamAreThrown) {
    struct : MemoryStream {
        long long Write(const void*, long long) override { throw TolvexException("full"); }
    } stream;
    BufferedFile file(stream);
    EXPECT_EQ(MessageOf([&] { file.Seek(0, SEEK_SET); }), "Unsupported");
    EXPECT_EQ(MessageOf([&] { file.Clone(); }), "Unsupported");
    file.WriteData(1);
    EXPECT_EQ(MessageOf([&] { file.Flush(); }), "full");
    EXPECT_EQ(MessageOf([&] { file.Close(); }), "full");
    EXPECT_TRUE(stream.isOpen) << "whoever opened it closes it";
}

} // namespace
