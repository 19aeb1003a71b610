#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "vel/core/utf8.h"

namespace vel::xml_details {

inline void widenEight(__m128i words, wchar_t* out) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi16(words, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4), _mm_unpackhi_epi16(words, zero));
}

/// Widens eight bytes; false when one of them is not ASCII, `out` is written anyway.
inline bool widenEightBytes(const char* in, wchar_t* out) noexcept
{
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in));
    widenEight(_mm_unpacklo_epi8(bytes, _mm_setzero_si128()), out);
    return _mm_movemask_epi8(bytes) == 0;
}

inline bool widenSixteenBytes(const char* in, wchar_t* out) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    widenEight(_mm_unpacklo_epi8(bytes, zero), out);
    widenEight(_mm_unpackhi_epi8(bytes, zero), out + 8);
    return _mm_movemask_epi8(bytes) == 0;
}

inline bool widenFourBytes(const char* in, wchar_t* out) noexcept
{
    std::uint32_t word = 0;
    std::memcpy(&word, in, 4);
    const __m128i zero = _mm_setzero_si128();
    const __m128i bytes = _mm_cvtsi32_si128(static_cast<int>(word));
    const __m128i wide = _mm_unpacklo_epi16(_mm_unpacklo_epi8(bytes, zero), zero);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), wide);
    return (word & 0x80808080U) == 0;
}

/// Widens text that is ASCII throughout; false, with `out` partly written, when it is not. Ends are covered by a block
/// that overlaps the one before: nothing outside the two ranges is read or written.
inline bool widenAscii(const char* in, std::size_t size, wchar_t* out) noexcept
{
    if (size >= 8) {
        bool isAscii = true;
        std::size_t i = 0;
        for (; i + 16 <= size; i += 16) {
            isAscii &= widenSixteenBytes(in + i, out + i);
        }
        if (i + 8 <= size) {
            isAscii &= widenEightBytes(in + i, out + i);
        }
        return widenEightBytes(in + size - 8, out + size - 8) && isAscii;
    }
    if (size >= 4) {
        const bool isFrontAscii = widenFourBytes(in, out);
        return widenFourBytes(in + size - 4, out + size - 4) && isFrontAscii;
    }
    unsigned all = 0;
    for (std::size_t i = 0; i < size; ++i) {
        out[i] = static_cast<wchar_t>(static_cast<unsigned char>(in[i]));
        all |= static_cast<unsigned char>(in[i]);
    }
    return all < 0x80;
}

/// Widens well-formed UTF-8; `out` has room for `size` characters. Returns how many were written.
inline std::size_t widen(const char* in, std::size_t size, wchar_t* out) noexcept
{
    if (widenAscii(in, size, out)) [[likely]] {
        return size;
    }
    std::size_t errorOffset = 0;
    return decodeUtf8({in, size}, out, &errorOffset);
}

}  // namespace vel::xml_details
