#include "avx2.h"
#include "closedwords.h"
#include "codec.h"

namespace vel::transcoding_details {

namespace {

using View = PagedTable<std::uint16_t>::View;

/// The values of eight characters below U+10000.
VEL_AVX2 inline __m128i valuesOf(View bytes, const wchar_t* in) noexcept
{
    __m128i values = _mm_cvtsi32_si128(bytes[codeOf(in[0])]);
    values = _mm_insert_epi16(values, bytes[codeOf(in[1])], 1);
    values = _mm_insert_epi16(values, bytes[codeOf(in[2])], 2);
    values = _mm_insert_epi16(values, bytes[codeOf(in[3])], 3);
    values = _mm_insert_epi16(values, bytes[codeOf(in[4])], 4);
    values = _mm_insert_epi16(values, bytes[codeOf(in[5])], 5);
    values = _mm_insert_epi16(values, bytes[codeOf(in[6])], 6);
    return _mm_insert_epi16(values, bytes[codeOf(in[7])], 7);
}

/// A bit for each word that is zero.
VEL_AVX2 inline unsigned zeroWords(__m128i words) noexcept
{
    const __m128i isZero = _mm_cmpeq_epi16(words, _mm_setzero_si128());
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(isZero, _mm_setzero_si128())));
}

/// Eight characters below U+10000; false when one has no value.
VEL_AVX2 inline bool encodeEight(View bytes, const wchar_t* in, char*& out) noexcept
{
    const __m128i values = valuesOf(bytes, in);
    if (zeroWords(values) != 0) [[unlikely]] {
        return false;
    }
    out = storeClosed(values, zeroWords(_mm_srli_epi16(values, 8)) ^ 0xFF, out);
    return true;
}

}  // namespace

void encodeDoubleByteBlocksAvx2(View bytes, bool isAsciiOwn, const wchar_t*& in, const wchar_t* inEnd, char*& out,
                                const char* outEnd) noexcept
{
    const wchar_t* from = in;
    char* to = out;
    while (inEnd - from >= kAvx2Block && outEnd - to >= 2 * kAvx2Block) {
        const __m256i first = loadEight(from);
        const __m256i second = loadEight(from + 8);
        const __m256i any = _mm256_or_si256(first, second);
        if (isAsciiOwn && isBelow(any, 0x80)) {
            to = writeAscii(first, second, to);
            from += kAvx2Block;
            continue;
        }
        if (!isBelow(any, 0x10000) || !encodeEight(bytes, from, to)) {
            break;
        }
        from += 8;
        if (!encodeEight(bytes, from, to)) {
            break;
        }
        from += 8;
    }
    in = from;
    out = to;
}

}  // namespace vel::transcoding_details
