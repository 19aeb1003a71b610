#pragma once

#include <emmintrin.h>

#include <cstddef>

namespace vel::nls {

/// A bit for each of four characters that is the same in both, the first one lowest.
inline unsigned equalOfFour(const wchar_t* a, const wchar_t* b) noexcept
{
    const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
    const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
    return static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(left, right))));
}

/// The same for four to eight characters: those in the middle are looked at twice, which saves a loop whose end is hard
/// to foresee.
inline unsigned equalOfEight(const wchar_t* a, const wchar_t* b, std::size_t count = 8) noexcept
{
    const std::size_t last = count - 4;
    return equalOfFour(a, b) | (equalOfFour(a + last, b + last) << last);
}

/// The same for eight to sixteen.
inline unsigned equalOfSixteen(const wchar_t* a, const wchar_t* b, std::size_t count) noexcept
{
    const std::size_t last = count - 8;
    return equalOfEight(a, b) | (equalOfEight(a + last, b + last) << last);
}

/// How many characters are the same before the first that is not.
inline std::size_t lengthOf(unsigned equal) noexcept
{
    return static_cast<std::size_t>(__builtin_ctz(~equal));
}

/// Where two texts differ from `i` on, or `end`.
inline std::size_t equalUpTo(const wchar_t* a, const wchar_t* b, std::size_t i, std::size_t end) noexcept
{
    constexpr unsigned kAll = 0xFF;
    for (; end - i >= 8; i += 8) {
        if (const unsigned equal = equalOfEight(a + i, b + i); equal != kAll) {
            return i + lengthOf(equal);
        }
    }
    const auto withPassed = [](unsigned equal, std::size_t passed) { return equal | ((1U << passed) - 1); };
    if (end >= 8) {
        const std::size_t begin = end - 8;
        return begin + lengthOf(withPassed(equalOfEight(a + begin, b + begin), i - begin));
    }
    if (end >= 4) {
        return lengthOf(withPassed(equalOfEight(a, b, end), i));
    }
    while (i < end && a[i] == b[i]) {
        ++i;
    }
    return i;
}

/// Where two texts differ, or `end`. Texts of common lengths are looked at whole: how many characters are the same is
/// even harder to foresee than how many there are.
inline std::size_t equalBeginning(const wchar_t* a, const wchar_t* b, std::size_t end) noexcept
{
    if (end >= 8 && end <= 16) {
        return lengthOf(equalOfSixteen(a, b, end));
    }
    return equalUpTo(a, b, 0, end);
}

}  // namespace vel::nls
