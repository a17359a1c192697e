#pragma once

#include <cstddef>

// A program that links Allocations.cpp has every operator new and delete call these two, which it defines. What the
// first throws comes out of operator new.
void OnAllocate(std::size_t size);
void OnRelease() noexcept;
