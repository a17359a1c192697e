#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::Strings {

/// @addtogroup strings
/// Conversions between UTF-8 and wide strings of one code point per `wchar_t`. Both are strict: overlong forms,
/// surrogates, values above U+10FFFF and truncated sequences make the whole result empty. A byte-order mark is an
/// ordinary character. No state; callable from any thread.
/// @{

/// The wide form of a zero-terminated UTF-8 text, which must not be null.
///
///     ""           => L""
///     "\xC3\xA9"   => L"\u00E9"       one element, also for characters beyond U+FFFF
///     "a\xFF"      => L""             not valid UTF-8
///     "\xED\xA0\x80" => L""           a surrogate
FRAMEWORKBASE_EXPORT std::wstring wstringFromS(const char* text);

/// The UTF-8 form of a zero-terminated wide text, which must not be null. Texts of 2000 characters or more are
/// refused: the result is then empty.
///
///     L""                  => ""
///     L"\u00E9"            => "\xC3\xA9"
///     1999 characters      => their UTF-8 form
///     2000 characters      => ""
///     a lone 0xD800        => ""
FRAMEWORKBASE_EXPORT std::string stringFromW(wchar_t* text);

/// @}

} // namespace Tolvex::Strings
