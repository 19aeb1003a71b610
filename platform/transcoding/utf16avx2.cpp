#include <immintrin.h>

#include <algorithm>

#include "avx2.h"
#include "vel/transcoding/utf16.h"

namespace vel::transcoding_details {

namespace {

/// Sixteen characters as words in their order; `stopping` gets bits where one is a surrogate or has no word.
VEL_AVX2 inline __m256i narrowBlock(__m256i first, __m256i second, __m256i& stopping) noexcept
{
    // Packing works on halves: put the quarters back into their order.
    const __m256i words = _mm256_permute4x64_epi64(_mm256_packus_epi32(first, second), 0xD8);
    const __m256i top = _mm256_and_si256(words, _mm256_set1_epi16(static_cast<short>(0xF800)));
    const __m256i surrogates = _mm256_cmpeq_epi16(top, _mm256_set1_epi16(static_cast<short>(0xD800)));
    const __m256i beyond =
        _mm256_and_si256(_mm256_or_si256(first, second), _mm256_set1_epi32(static_cast<int>(0xFFFF0000)));
    stopping = _mm256_or_si256(surrogates, beyond);
    return words;
}

VEL_AVX2 inline __m256i swapBytesOfWords(__m256i words) noexcept
{
    const __m128i swap = _mm_set_epi64x(0x0E0F0C0D0A0B0809LL, 0x0607040502030001LL);
    return _mm256_shuffle_epi8(words, _mm256_broadcastsi128_si256(swap));
}

template <bool bSwapped>
VEL_AVX2 inline void encodeBlocks(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    const wchar_t* from = in;
    char* to = out;
    for (; inEnd - from >= kAvx2Block; from += kAvx2Block, to += 2 * kAvx2Block) {
        __m256i stopping;
        const __m256i words = narrowBlock(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)),
                                          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + 8)), stopping);
        if (_mm256_testz_si256(stopping, stopping) == 0) {
            break;
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), bSwapped ? swapBytesOfWords(words) : words);
    }
    in = from;
    out = to;
}

/// The first `count` of eight characters, the others 0. Nothing is read behind them.
VEL_AVX2 inline __m256i loadFirst(const wchar_t* text, std::size_t count) noexcept
{
    static constexpr std::int32_t kMasks[16] = {-1, -1, -1, -1, -1, -1, -1, -1};
    const __m256i mask = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(kMasks + 8 - count));
    return _mm256_maskload_epi32(reinterpret_cast<const int*>(text), mask);
}

}  // namespace

void encodeUtf16BigEndianBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    encodeBlocks<true>(in, inEnd, out);
}

std::size_t encodeUtf16BigEndianShortAvx2(const wchar_t* text, std::size_t length, char* out) noexcept
{
    const std::size_t half = std::min<std::size_t>(length, 8);
    __m256i stopping;
    const __m256i words = narrowBlock(loadFirst(text, half), loadFirst(text + half, length - half), stopping);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), swapBytesOfWords(words));
    return _mm256_testz_si256(stopping, stopping) != 0 ? 2 * length : encodeUtf16BigEndian(text, length, out);
}

void encodeUtf16LittleEndianBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    encodeBlocks<false>(in, inEnd, out);
}

}  // namespace vel::transcoding_details
