#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "icuhandles.h"

namespace vel::nls {

/// The strings whose elements are not those of their characters one by one.
struct SortContexts
{
    /// Strings that are read as one: Czech "ch".
    std::vector<std::u32string> m_tContractions;
    /// Strings whose end is read otherwise after what stands before it: Japanese length marks.
    std::vector<std::u32string> m_tPrefixed;
    /// Code units of the longest string.
    std::size_t m_nLongest = 1;
};

/// Throws std::bad_alloc.
SortContexts readContexts(const UCollator* collator);

/// Whether a character may take part in a sequence of marks behind a base: it, or what it decomposes to first, has a
/// combining class.
bool isMark(char32_t c) noexcept;
/// Whether a mark behind the character may have to be brought into order with the character's own.
bool endsInMark(char32_t c) noexcept;
/// The combining class of the character, or of the first or last one that it decomposes to; 0 for what is no mark.
int firstClass(char32_t c) noexcept;
int lastClass(char32_t c) noexcept;
/// Whether ICU takes the character apart wherever it normalizes, though nothing is out of order: so the vowel signs of
/// Tibetan that are made of two marks.
bool isSplitAlways(char32_t c) noexcept;

std::u16string utf16Of(std::u32string_view text);

}  // namespace vel::nls
