#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "vel/core/api.h"

namespace vel {

/// Appends UTF-8 text to `out` as one wchar_t per code point.
///
/// Accepts exactly what Unicode calls well-formed: no overlong forms, no surrogates, nothing above U+10FFFF. Result:
/// nothing on success, else the byte offset of the first byte of the first ill-formed sequence, a truncated one
/// included; `out` then holds what came before that offset.
///
///     "a"                -> L"a"
///     "\xC3\xA9"         -> L"\u00E9"
///     "a\xC3"            -> offset 1 (truncated)
///     "ab\xC0\xAF"       -> offset 2 (overlong)
///     "\xED\xA0\x80"     -> offset 0 (surrogate)
///     "\xF4\x90\x80\x80" -> offset 0 (above U+10FFFF)
WEBI18N_API std::optional<std::size_t> appendUtf8AsWide(std::string_view utf8, std::wstring& out);

/// Writes UTF-8 text to `out`, which has room for `utf8.size()` characters (text never grows in characters). Returns
/// the number of characters written; `*errorOffset` is set to the offset of the first ill-formed sequence, or to
/// std::string_view::npos.
WEBI18N_API std::size_t decodeUtf8(std::string_view utf8, wchar_t* out, std::size_t* errorOffset) noexcept;

/// Appends wide text to `out` as UTF-8. Result: nothing on success, else the index of the first character that is no
/// Unicode scalar value (a surrogate, negative, or above U+10FFFF); `out` then holds what came before that index.
WEBI18N_API std::optional<std::size_t> appendWideAsUtf8(std::wstring_view wide, std::string& out);

/// Wide text as UTF-8 with U+FFFD in place of every character that is no Unicode scalar value. For messages to people.
WEBI18N_API std::string toUtf8Lossy(std::wstring_view wide);

}  // namespace vel
