#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

/// @addtogroup handles
/// @{

/// The exception of the binary file functions, thrown if a file cannot be opened, read or written.
///
/// The messages are fixed English strings: "Error opening file", "Error reading data", "Error writing data", "Error
/// writing to file" and "Unsupported". It is thrown by value and can be caught by reference in any module. It has no
/// base class: a handler for `std::exception` does not catch it.
///
/// The type is the same in the whole process because only the library defines its virtual table and type record. They
/// are emitted where the first virtual function that is not inline is defined: `KeyFunction`. If the destructor were
/// that function, programs would have to find one more name in the library.
class FRAMEWORKBASE_EXPORT TolvexException {
public:
    /// Copies the zero-terminated string `text`. Null gives an empty message.
    explicit TolvexException(const char* text) {
        if (text != nullptr) {
            message = text;
        }
    }

    virtual ~TolvexException() = default;

    /// Is never called. Its definition ties the type record to this library.
    virtual void KeyFunction();

    /// The string given to the constructor.
    std::string message;
};

/// @}
