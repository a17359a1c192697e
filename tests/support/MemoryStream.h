#pragma once

#include "FrameworkBase/Files/FileStream.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

/// A stream of the tests' own, in memory: it takes and gives as much at a time as the test allows.
struct MemoryStream : FlapFiles::CFileBase {
    explicit MemoryStream(std::string text = "") : content(std::move(text)) {}

    long long Write(const void* data, long long size) override {
        const long long count = std::min(size, largestWrite);
        content.append(static_cast<const char*>(data), static_cast<std::size_t>(count));
        return count;
    }
    long long Read(void* data, long long size) override {
        beforeRead(size);
        const auto most = static_cast<std::size_t>(std::min(size, largestRead));
        const std::size_t count = content.copy(static_cast<char*>(data), most, position);
        position += count;
        return static_cast<long long>(count);
    }
    long long Seek(long long, unsigned int) override { return 0; }
    CFileBase* Clone() override { return nullptr; }
    bool Close() override { return std::exchange(isOpen, false); }
    bool Flush() override { return isOpen; }

    std::string content;
    std::size_t position = 0;
    bool isOpen = true;
    long long largestWrite = std::numeric_limits<long long>::max();
    long long largestRead = std::numeric_limits<long long>::max();
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
