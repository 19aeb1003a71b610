#pragma once

#include <string_view>

#include "vel/core/api.h"

namespace vel {

/// Unicode simple case folding of one character (statuses C and S of the Unicode data): one character to one character,
/// the same in every process locale. Values that are no code points are returned as they are.
///
///     L'A' -> L'a'    U+0130 -> U+0130 (no simple folding)    U+1E9E -> U+00DF    U+03C2 -> U+03C3
WEBI18N_API wchar_t foldCase(wchar_t character) noexcept;

/// Compares after folding each character, by code point: negative, zero or positive.
///
///     L"en-US", L"EN-us" -> 0    L"a", L"B" -> negative    L"en", L"en-us" -> negative
WEBI18N_API int compareNoCase(std::wstring_view a, std::wstring_view b) noexcept;

/// The ordering of every map keyed by a locale name, a list name or a character-set label. Transparent: a map that uses
/// it is searched by view, without building a String.
struct NoCaseCompareLess
{
    using is_transparent =
        void;  // NOLINT(readability-identifier-naming): the name that the standard containers ask for

    bool operator()(std::wstring_view a, std::wstring_view b) const noexcept { return compareNoCase(a, b) < 0; }
};

}  // namespace vel
