#pragma once

#include <array>
#include <cstring>
#include <exception>
#include <memory>
#include <string>

/// Reads as DeSerializeString does, from any source that has a `Read`.
template <class Source>
std::string ReadTextField(Source& source) {
    try {
        int length = 0;
        source.Read(&length, sizeof length);
        if (length < 0) {
            return {};
        }
        const auto size = static_cast<std::size_t>(length);
        std::array<char, 256> shortText;
        std::unique_ptr<char[]> longText;
        char* text = shortText.data();
        if (size > shortText.size()) {
            longText.reset(new char[size]); // not cleared, so that an absurd length uses no memory
            text = longText.get();
        }
        if (source.Read(text, length) != length) {
            return {};
        }
        return {text, strnlen(text, size)};
    } catch (const std::exception&) {
        return {};
    }
}
