#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::Strings {

/// @addtogroup strings
/// Conversions between UTF-8 and wide strings of one code point per `wchar_t`. An overlong form, a
/// surrogate, a value above U+10FFFF or a truncated sequence makes the whole result empty. A byte-order mark is an
/// ordinary character. The only exception is `std::bad_alloc`. Callable from any thread.
/// @{

/// Converts a zero-terminated UTF-8 string, which must not be null, to a wide string.
///
///     ""           => L""
///     "\xC3\xA9"   => L"\u00E9"       one element, also for characters beyond U+FFFF
///     "a\xFF"      => L""             not valid UTF-8
///     "\xED\xA0\x80" => L""           a surrogate
FRAMEWORKBASE_EXPORT std::wstring wstringFromS(const char* text);

/// Converts a zero-terminated wide string, which must not be null, to UTF-8. A string of 2000 characters or more
/// converts to the empty string. `text` must not be a constant, although it is not modified.
///
///     L""                  => ""
///     L"\u00E9"            => "\xC3\xA9"
///     1999 characters      => their UTF-8 form
///     2000 characters      => ""
///     a lone 0xD800        => ""
FRAMEWORKBASE_EXPORT std::string stringFromW(wchar_t* text);

/// @}

} // namespace Tolvex::Strings
