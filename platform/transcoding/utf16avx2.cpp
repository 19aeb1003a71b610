#include <immintrin.h>

#include "avx2.h"

namespace vel::transcoding_details {

namespace {

template <bool bSwapped>
VEL_AVX2 inline void encodeBlocks(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    const __m128i swap = _mm_set_epi64x(0x0E0F0C0D0A0B0809LL, 0x0607040502030001LL);
    const __m256i swapping = _mm256_broadcastsi128_si256(swap);
    const wchar_t* from = in;
    char* to = out;
    for (; inEnd - from >= kAvx2Block; from += kAvx2Block, to += 2 * kAvx2Block) {
        const __m256i first = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
        const __m256i second = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + 8));
        // Packing works on halves: put the quarters back into their order.
        const __m256i words = _mm256_permute4x64_epi64(_mm256_packus_epi32(first, second), 0xD8);
        const __m256i top = _mm256_and_si256(words, _mm256_set1_epi16(static_cast<short>(0xF800)));
        const __m256i surrogates = _mm256_cmpeq_epi16(top, _mm256_set1_epi16(static_cast<short>(0xD800)));
        const __m256i beyond =
            _mm256_and_si256(_mm256_or_si256(first, second), _mm256_set1_epi32(static_cast<int>(0xFFFF0000)));
        const __m256i stopping = _mm256_or_si256(surrogates, beyond);
        if (_mm256_testz_si256(stopping, stopping) == 0) {
            break;
        }
        const __m256i ordered = bSwapped ? _mm256_shuffle_epi8(words, swapping) : words;
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), ordered);
    }
    in = from;
    out = to;
}

}  // namespace

void encodeUtf16BigEndianBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    encodeBlocks<true>(in, inEnd, out);
}

void encodeUtf16LittleEndianBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    encodeBlocks<false>(in, inEnd, out);
}

}  // namespace vel::transcoding_details
