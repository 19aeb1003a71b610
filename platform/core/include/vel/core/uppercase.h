#pragma once

#include <string_view>

#include "vel/core/api.h"
#include "vel/core/string.h"

namespace vel {

/// Unicode simple upper-case mapping of one character: one character to one character, the same in every process
/// locale. Values that are no code points are returned as they are.
///
///     L'a' -> L'A'    U+00E9 -> U+00C9    U+00DF -> U+00DF (no simple mapping)    U+0131 -> L'I'
WEBI18N_API wchar_t toUpperCase(wchar_t character) noexcept;

/// The text with every character mapped.
///
///     "us" -> "US"    "hant-tw" -> "HANT-TW"    "" -> ""
WEBI18N_API String toUpperCase(std::wstring_view text);

}  // namespace vel
