#pragma once

#include <iosfwd>

namespace Tolvex {

/// `std::cerr`, ready for use.
std::ostream& ErrorStream();

} // namespace Tolvex
