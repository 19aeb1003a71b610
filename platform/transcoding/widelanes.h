#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

// Wide characters, four to a vector. SSE2, which every x86-64 has.

namespace vel::transcoding_details {

inline __m128i loadWide(const wchar_t* in) noexcept
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
}

inline void storeVector(void* out, __m128i value) noexcept
{
    _mm_storeu_si128(static_cast<__m128i*>(out), value);
}

/// Whether no lane has a bit of `bits`.
inline bool hasNoneOf(__m128i lanes, std::uint32_t bits) noexcept
{
    const __m128i found = _mm_and_si128(lanes, _mm_set1_epi32(static_cast<int>(bits)));
    return _mm_movemask_epi8(_mm_cmpeq_epi32(found, _mm_setzero_si128())) == 0xFFFF;
}

/// The low halves of eight lanes. SSE2 narrows with signed saturation only, so the halves are made signed first.
inline __m128i narrowToWords(__m128i first, __m128i second) noexcept
{
    const __m128i low = _mm_srai_epi32(_mm_slli_epi32(first, 16), 16);
    const __m128i high = _mm_srai_epi32(_mm_slli_epi32(second, 16), 16);
    return _mm_packs_epi32(low, high);
}

/// Sixteen characters below U+0100 as sixteen bytes.
struct SixteenWide
{
    __m128i m_a[4];

    explicit SixteenWide(const wchar_t* in) noexcept
        : m_a{loadWide(in), loadWide(in + 4), loadWide(in + 8), loadWide(in + 12)}
    {}
    /// Bits that any of the characters has.
    __m128i any() const noexcept { return _mm_or_si128(_mm_or_si128(m_a[0], m_a[1]), _mm_or_si128(m_a[2], m_a[3])); }
    __m128i bytes() const noexcept
    {
        return _mm_packus_epi16(_mm_packs_epi32(m_a[0], m_a[1]), _mm_packs_epi32(m_a[2], m_a[3]));
    }
};

inline void storeTwo(char* out, std::uint32_t value) noexcept
{
    const std::uint16_t half = static_cast<std::uint16_t>(value);
    std::memcpy(out, &half, 2);
}

inline void storeFour(char* out, std::uint32_t value) noexcept
{
    std::memcpy(out, &value, 4);
}

}  // namespace vel::transcoding_details
