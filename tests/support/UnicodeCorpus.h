#pragma once

#include <string>
#include <utility>
#include <vector>

/// Texts that the conversions between UTF-8 and wide strings are tried with, whatever system's conversions they are.
namespace UnicodeCorpus {

/// One is the other's form: bounds of the forms of one to four bytes and of the surrogates; code points that are no
/// characters; byte-order marks, which are ordinary characters; composed and decomposed ones, which stay what they are.
inline const std::vector<std::pair<std::string, std::wstring>> valid = {
    {"", L""},
    {"\x7F\xC2\x80\xDF\xBF", L"\x7F\x80\x7FF"},
    {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD", L"\x800\xD7FF\xE000\xFFFD"},
    {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\x10000\x10FFFF"},
    {"\xEF\xB7\x90\xEF\xBF\xBE\xEF\xBF\xBF\xF0\x9F\xBF\xBF", L"\xFDD0\xFFFE\xFFFF\x1FFFF"},
    {"\xEF\xBB\xBF\xEF\xBB\xBFz\xEF\xBB\xBF", L"\xFEFF\xFEFFz\xFEFF"},
    {"\xCC\x81x e\xCC\x81 \xC3\xA9", L"\x301x e\x301 \xE9"}};

/// Malformed texts, one after the other: bytes that never start a character; forms longer than need be; surrogates and
/// what is above U+10FFFF; characters cut short by the end or by another; what is beside a byte-order mark.
inline const std::string invalidUtf8 =
    "\x80 \xBF a\xFE a\xFFz \xF5\x80\x80\x80 \xF8\x88\x80\x80\x80 \xFC\x84\x80\x80\x80\x80 \xC0\x80 \xC1\xBF "
    "\xE0\x80\x80 "
    "\xE0\x9F\xBF \xF0\x80\x80\x80 \xF0\x8F\xBF\xBF \xED\xA0\x80 \xED\xBF\xBF \xED\xA0\xBD\xED\xB8\x80 "
    "\xF4\x90\x80\x80 "
    "\xC3 \xE2\x82 \xF0\x9F\x8E \xC3z \xE2\x82z \xF0\x9F\x8Ez \xE2\xE2\x82\xAC \xEF\xBB\xBF\xFF \xFF\xFE";

/// Characters that make the whole result empty: surrogates, and what is above U+10FFFF.
inline const std::wstring invalidWide = L"\xD800\xDBFF\xDC00\xDFFF\x110000\x7FFFFFFF\x80000000\xFFFFFFFF\xFFFE0000";

} // namespace UnicodeCorpus
