#pragma once

#include <FrameworkBase/Files/FileStream.h>

#include <algorithm>
#include <functional>

/// A stream of the tests' own, in memory: it takes and gives what the test allows.
struct MemoryStream : FlapFiles::CFileBase {
    long long Write(const void* data, long long size) override {
        size = std::min(size, largestWrite);
        content.append(static_cast<const char*>(data), static_cast<std::size_t>(size));
        return size;
    }
    long long Read(void* data, long long size) override {
        beforeRead(size);
        const std::size_t count = content.copy(static_cast<char*>(data), static_cast<std::size_t>(size), position);
        position += count;
        return static_cast<long long>(count);
    }
    long long Seek(long long, unsigned int) override { return 0; }
    CFileBase* Clone() override { return nullptr; }
    bool Close() override { return false; }
    bool Flush() override { return false; }

    std::string content;
    std::size_t position = 0;
    long long largestWrite = 1 << 30;
    std::function<void(long long size)> beforeRead = [](long long) {};
};

/// The message of the TolvexException that `action` throws; "none" when it throws none.
inline std::string MessageOf(const std::function<void()>& action) {
    try {
        return action(), "none";
    } catch (const TolvexException& exception) {
        return exception.message;
    }
}
