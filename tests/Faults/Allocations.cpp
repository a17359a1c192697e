#include "tests/Faults/Faults.h"

#include <cstdlib>
#include <new>

// The forms that the others come down to.
void* operator new(std::size_t size) {
    Faults::OnAllocate();
    void* const memory = std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    memory != nullptr ? Faults::OnRelease() : void();
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept { ::operator delete(memory); }
