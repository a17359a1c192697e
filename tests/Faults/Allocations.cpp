#include "tests/Faults/Allocations.h"

#include <cstdlib>
#include <new>

void* operator new(std::size_t size) {
    OnAllocate(size);
    void* const memory = std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        OnRelease();
        std::free(memory);
    }
}

// The forms that the standard library derives from those above; a sanitizer would have its own.
void* operator new[](std::size_t size) { return ::operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept try {
    return ::operator new(size);
} catch (...) {
    return nullptr;
}
void operator delete[](void* memory) noexcept { ::operator delete(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { ::operator delete(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { ::operator delete(memory); }
