#pragma once

#include <cstddef>

// A program that links Allocations.cpp has every form of operator new call these two, which it defines.

/// Before each allocation. What it throws comes out of operator new; the forms that do not throw return null then.
void OnAllocate(std::size_t size);

/// Before memory is released.
void OnRelease() noexcept;
