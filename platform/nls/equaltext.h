#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace vel::nls {

/// A bit for each byte in which four characters differ, from the first one on.
inline unsigned differencesOfFour(const wchar_t* a, const wchar_t* b) noexcept
{
    const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
    const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
    return ~static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi32(left, right))) & 0xFFFFU;
}

/// Of `count` characters, four to eight, the first that differ from `i` on, or `count`.
inline std::size_t equalOfEight(const wchar_t* a, const wchar_t* b, std::size_t i = 0, std::size_t count = 8) noexcept
{
    const std::size_t last = count - 4;
    const std::uint64_t differences =
        differencesOfFour(a, b) | (std::uint64_t{differencesOfFour(a + last, b + last)} << (4 * last));
    const std::uint64_t stop = std::uint64_t{1} << (4 * count);
    const std::uint64_t before = (std::uint64_t{1} << (4 * i)) - 1;
    return static_cast<std::size_t>(__builtin_ctzll((differences & ~before) | stop)) / sizeof(wchar_t);
}

/// Where two texts differ from `i` on, or `end`. The last characters are read together with some before them, which
/// saves a loop whose end is hard to foresee.
inline std::size_t equalUpTo(const wchar_t* a, const wchar_t* b, std::size_t i, std::size_t end) noexcept
{
    for (; end - i >= 8; i += 8) {
        const std::size_t equal = equalOfEight(a + i, b + i);
        if (equal != 8) {
            return i + equal;
        }
    }
    if (end >= 8) {
        const std::size_t begin = end - 8;
        return begin + equalOfEight(a + begin, b + begin, i - begin);
    }
    if (end >= 4) {
        return equalOfEight(a, b, i, end);
    }
    while (i < end && a[i] == b[i]) {
        ++i;
    }
    return i;
}

}  // namespace vel::nls
