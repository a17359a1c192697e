#pragma once

/// Texts that the conversions between UTF-8 and wide strings are tried with, whatever system's conversions they are.
namespace UnicodeCorpus {

struct Pair {
    const char* utf8;
    const wchar_t* wide;
};

/// One is the other's form: bounds of the forms of one to four bytes and of the surrogates; code points that are no
/// characters; byte-order marks, which are ordinary characters; composed and decomposed ones, which stay what they are.
inline constexpr Pair valid[] = {{"", L""},
                                 {"\x7F\xC2\x80\xDF\xBF", L"\x7F\x80\x7FF"},
                                 {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD", L"\x800\xD7FF\xE000\xFFFD"},
                                 {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\x10000\x10FFFF"},
                                 {"\xEF\xB7\x90\xEF\xBF\xBE\xEF\xBF\xBF\xF0\x9F\xBF\xBF", L"\xFDD0\xFFFE\xFFFF\x1FFFF"},
                                 {"\xEF\xBB\xBF\xEF\xBB\xBFz\xEF\xBB\xBF", L"\xFEFF\xFEFFz\xFEFF"},
                                 {"e\xCC\x81 \xC3\xA9", L"e\x301 \xE9"},
                                 {"\xCC\x81x", L"\x301x"}};

/// Each makes the whole result empty: bytes that never start a character; forms longer than need be; surrogates and what
/// is above U+10FFFF; characters cut short by the end or by another; what is beside a byte-order mark.
inline constexpr const char* invalidUtf8[] = {"\x80",
                                              "\xBF",
                                              "a\xFE",
                                              "a\xFFz",
                                              "\xF5\x80\x80\x80",
                                              "\xF8\x88\x80\x80\x80",
                                              "\xFC\x84\x80\x80\x80\x80",
                                              "\xC0\x80",
                                              "\xC1\xBF",
                                              "\xE0\x80\x80",
                                              "\xE0\x9F\xBF",
                                              "\xF0\x80\x80\x80",
                                              "\xF0\x8F\xBF\xBF",
                                              "\xED\xA0\x80",
                                              "\xED\xBF\xBF",
                                              "\xED\xA0\xBD\xED\xB8\x80",
                                              "\xF4\x90\x80\x80",
                                              "\xC3",
                                              "\xE2\x82",
                                              "\xF0\x9F\x8E",
                                              "\xC3z",
                                              "\xE2\x82z",
                                              "\xF0\x9F\x8Ez",
                                              "\xE2\xE2\x82\xAC",
                                              "\xEF\xBB\xBF\xFF",
                                              "\xFF\xFE"};

/// Each makes the whole result empty.
inline constexpr const wchar_t* invalidWide[] = {L"\xD800",       L"\xDBFF",     L"a\xDC00z",    L"\xDFFF",
                                                 L"\xD83C\xDFB9", L"\x110000",   L"a\x7FFFFFFF", L"\x80000000",
                                                 L"\xFFFFFFFF",   L"\xFFFE0000", L"\xFEFF\xD800"};

} // namespace UnicodeCorpus
