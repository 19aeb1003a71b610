#include "sorttext.h"

#include <emmintrin.h>

#include <algorithm>

namespace vel::nls {

namespace {

unsigned char* putUnit(unsigned char* out, char32_t unit) noexcept
{
    out[0] = static_cast<unsigned char>(unit >> 8);
    out[1] = static_cast<unsigned char>(unit);
    return out + 2;
}

}  // namespace

std::size_t decodeBigEndian(const unsigned char* utf16be, std::size_t byteCount, char16_t* out) noexcept
{
    const std::size_t units = byteCount / 2;
    std::size_t n = 0;
    for (std::size_t i = 0; i < units; ++i) {
        const char16_t unit = bigEndianUnit(utf16be + 2 * i);
        if (!isSurrogate(unit)) {
            out[n++] = unit;
            continue;
        }
        const char16_t next = i + 1 < units ? bigEndianUnit(utf16be + 2 * i + 2) : char16_t{0};
        if (isLeadSurrogate(unit) && isTrailSurrogate(next)) {
            out[n++] = unit;
            out[n++] = next;
            ++i;
        } else {
            out[n++] = static_cast<char16_t>(kReplacement);
        }
    }
    if (byteCount % 2 != 0) {
        out[n++] = static_cast<char16_t>(kReplacement);
    }
    return n;
}

namespace {

/// Eight characters at a time; false when one of them needs two units.
bool encodeEight(const wchar_t* text, unsigned char* out) noexcept
{
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 4));
    const __m128i beyond = _mm_srli_epi32(_mm_or_si128(low, high), 16);
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(beyond, _mm_setzero_si128())) != 0xFFFF) {
        return false;
    }
    // Signed, so that packing keeps the bits of every unit.
    const auto extend = [](__m128i units) { return _mm_srai_epi32(_mm_slli_epi32(units, 16), 16); };
    const __m128i units = _mm_packs_epi32(extend(low), extend(high));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8)));
    return true;
}

unsigned char* encodeOne(char32_t c, unsigned char* out) noexcept
{
    if (c < 0x10000) {
        return putUnit(out, c);
    }
    if (c > 0x10FFFF) {
        return putUnit(out, kReplacement);
    }
    c -= 0x10000;
    return putUnit(putUnit(out, 0xD800 + (c >> 10)), 0xDC00 + (c & 0x3FF));
}

}  // namespace

std::size_t encodeBigEndian(const wchar_t* text, std::size_t length, unsigned char* out) noexcept
{
    unsigned char* end = out;
    std::size_t i = 0;
    while (i < length) {
        if (length - i >= 8 && encodeEight(text + i, end)) {
            end += 16;
            i += 8;
            continue;
        }
        for (const std::size_t stop = std::min(length, i + 8); i < stop; ++i) {
            end = encodeOne(static_cast<char32_t>(text[i]), end);
        }
    }
    return static_cast<std::size_t>(end - out);
}

}  // namespace vel::nls
