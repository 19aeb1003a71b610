#pragma once

#include <immintrin.h>

#include <array>
#include <cstdint>

#include "avx2.h"

// Words of which only some have two bytes that count: a shuffle that a table knows closes the gaps between them.

namespace vel::transcoding_details {

using Shuffle = std::array<std::uint8_t, 16>;

/// A place that a shuffle fills with zero; it is overwritten by what follows.
inline constexpr std::uint8_t kNothing = 0x80;

/// For eight words, of which those whose bit is set in the index count both bytes, the others the lower one.
constexpr std::array<Shuffle, 256> wordShuffles()
{
    std::array<Shuffle, 256> result{};
    for (unsigned index = 0; index < 256; ++index) {
        unsigned place = 0;
        for (unsigned word = 0; word < 8; ++word) {
            result[index][place++] = static_cast<std::uint8_t>(2 * word);
            if ((index >> word & 1) != 0) {
                result[index][place++] = static_cast<std::uint8_t>(2 * word + 1);
            }
        }
        for (; place < 16; ++place) {
            result[index][place] = kNothing;
        }
    }
    return result;
}

alignas(64) inline constexpr std::array<Shuffle, 256> kWordShuffles = wordShuffles();

VEL_AVX2 inline void store(char* out, __m128i bytes) noexcept
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
}

VEL_AVX2 inline __m128i shuffled(__m128i lanes, const Shuffle& shuffle) noexcept
{
    return _mm_shuffle_epi8(lanes, _mm_load_si128(reinterpret_cast<const __m128i*>(shuffle.data())));
}

/// Writes eight words without gaps: those with a bit in `twos` as two bytes, the others as one. Writes 16 bytes, of
/// which those before the result count.
VEL_AVX2 inline char* storeClosed(__m128i words, unsigned twos, char* out) noexcept
{
    store(out, shuffled(words, kWordShuffles[twos]));
    return out + 8 + __builtin_popcount(twos);
}

VEL_AVX2 inline __m256i loadEight(const wchar_t* in) noexcept
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
}

/// Sixteen characters below U+10000 as words.
VEL_AVX2 inline __m256i wordsOf(__m256i first, __m256i second) noexcept
{
    // Packing works on halves: put the quarters back into their order.
    return _mm256_permute4x64_epi64(_mm256_packus_epi32(first, second), 0xD8);
}

/// Whether all characters are below `limit`, a power of two; `any` has the bits that any of them has.
VEL_AVX2 inline bool isBelow(__m256i any, int limit) noexcept
{
    return _mm256_testz_si256(any, _mm256_set1_epi32(-limit)) != 0;
}

/// Sixteen characters of ASCII.
VEL_AVX2 inline char* writeAscii(__m256i first, __m256i second, char* out) noexcept
{
    const __m256i words = wordsOf(first, second);
    store(out, _mm_packus_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1)));
    return out + 16;
}

}  // namespace vel::transcoding_details
