#pragma once

#include <iosfwd>

namespace Tolvex {

/// Returns `std::cerr`, ready for use.
std::ostream& ErrorStream();

} // namespace Tolvex
