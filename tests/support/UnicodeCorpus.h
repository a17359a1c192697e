#pragma once

/// Texts that the conversions between UTF-8 and wide strings are tried with, whatever system's conversions they are.
namespace UnicodeCorpus {

struct Pair {
    const char* utf8;
    const wchar_t* wide;
};

/// One is the other's form.
inline constexpr Pair valid[] = {
    {"", L""},
    {"a", L"a"},
    {"take 01 final \xE2\x82\xAC mix.wav", L"take 01 final \x20AC mix.wav"},
    // the bounds of the forms of one, two, three and four bytes
    {"\x7F", L"\x7F"},
    {"\xC2\x80\xDF\xBF", L"\x80\x7FF"},
    {"\xE0\xA0\x80\xEF\xBF\xBD", L"\x800\xFFFD"},
    {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\x10000\x10FFFF"},
    // what surrounds the surrogates, and code points that are no characters
    {"\xED\x9F\xBF\xEE\x80\x80", L"\xD7FF\xE000"},
    {"\xEF\xB7\x90\xEF\xBF\xBE", L"\xFDD0\xFFFE"},
    {"\xEF\xBF\xBF\xF0\x9F\xBF\xBF", L"\xFFFF\x1FFFF"},
    // a byte-order mark is an ordinary character
    {"\xEF\xBB\xBF", L"\xFEFF"},
    {"\xEF\xBB\xBF\xEF\xBB\xBFz", L"\xFEFF\xFEFFz"},
    {"z\xEF\xBB\xBF", L"z\xFEFF"},
    // composed and decomposed stay what they are, and a combining mark may come first
    {"e\xCC\x81 \xC3\xA9", L"e\x301 \xE9"},
    {"\xCC\x81x", L"\x301x"},
};

/// Each makes the whole result empty.
inline constexpr const char* invalidUtf8[] = {
    // bytes that never start a character
    "\x80", "\xBF", "a\xFE", "a\xFFz", "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFC\x84\x80\x80\x80\x80",
    // longer than need be
    "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF",
    // surrogates, alone and in a pair, and the first value above U+10FFFF
    "\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB8\x80", "\xF4\x90\x80\x80",
    // cut short by the end of the text
    "\xC3", "\xE2\x82", "\xF0\x9F\x8E", "\xEF\xBB",
    // cut short by another character
    "\xC3z", "\xE2\x82z", "\xF0\x9F\x8Ez", "\xE2\xE2\x82\xAC", "take 01 final mix \xE2\x82.wav",
    // beside a byte-order mark
    "\xEF\xBB\xBF\xFF", "\xFF\xFE"};

/// Each makes the whole result empty.
inline constexpr const wchar_t* invalidWide[] = {
    // surrogates, alone and in a pair
    L"\xD800", L"\xDBFF", L"a\xDC00z", L"\xDFFF", L"\xD83C\xDFB9",
    // above U+10FFFF
    L"\x110000", L"a\x7FFFFFFF", L"\x80000000", L"\xFFFFFFFF",
    // beside a byte-order mark
    L"\xFFFE0000", L"\xFEFF\xD800"};

} // namespace UnicodeCorpus
