#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup handles
/// @{

/// What the binary file functions throw when a file cannot be opened, read or written.
///
/// The messages are fixed English texts: "Error opening file", "Error reading data", "Error writing data",
/// "Error writing to file" and "Unsupported". Thrown by value; catch it by reference, in any module. It has no
/// base class, so a handler for `std::exception` does not catch it.
///
/// Its type has one identity in the whole process because the library alone defines its virtual table and type record:
/// they are emitted where the first virtual function that is not inline is defined, and that is `KeyFunction`. With a
/// destructor defined in a source file that would be the destructor, one more name that programs have to find in the
/// library.
class FRAMEWORKBASE_EXPORT TolvexException {
public:
    /// Copies `text`, a zero-terminated text. Null gives an empty message.
    explicit TolvexException(const char* text) {
        if (text != nullptr) {
            message = text;
        }
    }

    virtual ~TolvexException() = default;

    /// Never called; ties the class's type record to this library.
    virtual void KeyFunction();

    /// The text given at construction; empty when there was none.
    std::string message;
};

/// @}
