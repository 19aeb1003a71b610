#include <array>
#include <cstdint>

#include "avx2.h"
#include "closedwords.h"

// Characters become lanes with their bytes in the low places, and a shuffle that a table knows closes the gaps between
// them.

namespace vel::transcoding_details {

namespace {

/// For four lanes of up to three bytes: the low half of the index has a bit for each lane of two or more, the high half
/// for each of three.
constexpr std::array<Shuffle, 256> threeByteShuffles()
{
    std::array<Shuffle, 256> result{};
    for (unsigned index = 0; index < 256; ++index) {
        unsigned place = 0;
        for (unsigned lane = 0; lane < 4; ++lane) {
            const unsigned bytes = 1 + (index >> lane & 1) + (index >> (4 + lane) & 1);
            for (unsigned i = 0; i < bytes; ++i) {
                result[index][place++] = static_cast<std::uint8_t>(4 * lane + i);
            }
        }
        for (; place < 16; ++place) {
            result[index][place] = kNothing;
        }
    }
    return result;
}

alignas(64) constexpr std::array<Shuffle, 256> kThreeByteShuffles = threeByteShuffles();

/// Sixteen characters below U+0800.
VEL_AVX2 inline char* writeUpToTwoBytes(__m256i first, __m256i second, char* out) noexcept
{
    const __m256i words = wordsOf(first, second);
    const __m256i lower = _mm256_srli_epi16(words, 6);
    const __m256i upper = _mm256_slli_epi16(_mm256_and_si256(words, _mm256_set1_epi16(0x3F)), 8);
    const __m256i marked =
        _mm256_or_si256(_mm256_or_si256(upper, lower), _mm256_set1_epi16(static_cast<short>(0x80C0)));
    const __m256i isTwo = _mm256_cmpgt_epi16(words, _mm256_set1_epi16(0x7F));
    const __m256i lanes = _mm256_blendv_epi8(words, marked, isTwo);
    const unsigned mask = static_cast<unsigned>(
        _mm_movemask_epi8(_mm_packs_epi16(_mm256_castsi256_si128(isTwo), _mm256_extracti128_si256(isTwo, 1))));
    out = storeClosed(_mm256_castsi256_si128(lanes), mask & 0xFF, out);
    return storeClosed(_mm256_extracti128_si256(lanes, 1), mask >> 8, out);
}

/// Eight characters below U+10000.
VEL_AVX2 inline char* writeUpToThreeBytes(__m256i codes, char* out) noexcept
{
    const __m256i low = _mm256_and_si256(codes, _mm256_set1_epi32(0x3F));
    const __m256i shifted = _mm256_srli_epi32(codes, 6);
    const __m256i middle = _mm256_and_si256(shifted, _mm256_set1_epi32(0x3F));
    const __m256i two = _mm256_or_si256(_mm256_or_si256(shifted, _mm256_slli_epi32(low, 8)), _mm256_set1_epi32(0x80C0));
    const __m256i outer = _mm256_or_si256(_mm256_srli_epi32(codes, 12), _mm256_slli_epi32(low, 16));
    const __m256i three =
        _mm256_or_si256(_mm256_or_si256(outer, _mm256_slli_epi32(middle, 8)), _mm256_set1_epi32(0x8080E0));
    const __m256i isTwo = _mm256_cmpgt_epi32(codes, _mm256_set1_epi32(0x7F));
    const __m256i isThree = _mm256_cmpgt_epi32(codes, _mm256_set1_epi32(0x7FF));
    const __m256i lanes = _mm256_blendv_epi8(_mm256_blendv_epi8(codes, two, isTwo), three, isThree);
    const unsigned twos = static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(isTwo)));
    const unsigned threes = static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(isThree)));
    const unsigned first = (twos & 0xF) | (threes & 0xF) << 4;
    const unsigned second = twos >> 4 | (threes & 0xF0);
    store(out, shuffled(_mm256_castsi256_si128(lanes), kThreeByteShuffles[first]));
    out += 4 + __builtin_popcount(first);
    store(out, shuffled(_mm256_extracti128_si256(lanes, 1), kThreeByteShuffles[second]));
    return out + 4 + __builtin_popcount(second);
}

VEL_AVX2 inline bool hasSurrogate(__m256i codes) noexcept
{
    const __m256i top = _mm256_and_si256(codes, _mm256_set1_epi32(0xF800));
    return _mm256_movemask_epi8(_mm256_cmpeq_epi32(top, _mm256_set1_epi32(0xD800))) != 0;
}

/// Thirty-two characters of ASCII at a time, as far as they go.
VEL_AVX2 inline void writeAsciiRun(const wchar_t*& in, const wchar_t* inEnd, char*& out, const char* outEnd) noexcept
{
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    while (inEnd - in >= 32 && outEnd - out >= 32) {
        const __m256i a = loadEight(in);
        const __m256i b = loadEight(in + 8);
        const __m256i c = loadEight(in + 16);
        const __m256i d = loadEight(in + 24);
        if (!isBelow(_mm256_or_si256(_mm256_or_si256(a, b), _mm256_or_si256(c, d)), 0x80)) {
            return;
        }
        const __m256i packed = _mm256_packus_epi16(_mm256_packus_epi32(a, b), _mm256_packus_epi32(c, d));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_permutevar8x32_epi32(packed, order));
        in += 32;
        out += 32;
    }
}

}  // namespace

void encodeUtf8BlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out, const char* outEnd) noexcept
{
    const wchar_t* from = in;
    char* to = out;
    while (inEnd - from >= kAvx2Block && outEnd - to >= kUtf8BlockRoom) {
        const __m256i first = loadEight(from);
        const __m256i second = loadEight(from + 8);
        const __m256i any = _mm256_or_si256(first, second);
        if (isBelow(any, 0x80)) {
            to = writeAscii(first, second, to);
            from += kAvx2Block;
            writeAsciiRun(from, inEnd, to, outEnd);
            continue;
        }
        if (isBelow(any, 0x800)) {
            to = writeUpToTwoBytes(first, second, to);
        } else if (isBelow(any, 0x10000) && !hasSurrogate(first) && !hasSurrogate(second)) {
            to = writeUpToThreeBytes(first, to);
            to = writeUpToThreeBytes(second, to);
        } else {
            break;
        }
        from += kAvx2Block;
    }
    in = from;
    out = to;
}

}  // namespace vel::transcoding_details
