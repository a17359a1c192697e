#pragma once

#include <cstddef>
#include <cstring>

/// The place of a virtual function in its class's table, counted from 0. Modules built earlier call by it.
template <class Function>
std::size_t VirtualSlot(Function function) {
    std::size_t offsetPlusOne = 0; // how the platform's ABI stores a pointer to a virtual member function
    std::memcpy(&offsetPlusOne, &function, sizeof offsetPlusOne);
    return (offsetPlusOne - 1) / sizeof(void*);
}
