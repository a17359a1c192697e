#include "tests/Faults/Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

void* Allocate(std::size_t size) {
    OnAllocate(size);
    void* const memory = std::malloc(std::max<std::size_t>(size, 1));
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void* AllocateOrNull(std::size_t size) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void Release(void* memory) noexcept {
    if (memory != nullptr) {
        OnRelease();
        std::free(memory);
    }
}

} // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return AllocateOrNull(size); }
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return AllocateOrNull(size); }
void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { Release(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { Release(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { Release(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { Release(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { Release(memory); }
