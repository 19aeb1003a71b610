#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "codec.h"
#include "widelanes.h"

// UTF-16 in both byte orders.

namespace vel::transcoding_details {

enum EByteOrder
{
    kLittleEndian = 0,
    kBigEndian = 1,
    kByteOrderEnd_ = 2
};

inline constexpr std::ptrdiff_t kUtf16Block = 8;

inline __m128i swapBytesOfWords(__m128i words) noexcept
{
    return _mm_or_si128(_mm_slli_epi16(words, 8), _mm_srli_epi16(words, 8));
}

template <EByteOrder eOrder>
__m128i inOrder(__m128i words) noexcept
{
    return eOrder == kBigEndian ? swapBytesOfWords(words) : words;
}

/// Whether a word is a surrogate.
inline bool hasSurrogateWord(__m128i words) noexcept
{
    const __m128i top = _mm_and_si128(words, _mm_set1_epi16(static_cast<short>(0xF800)));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(top, _mm_set1_epi16(static_cast<short>(0xD800)))) != 0;
}

/// Writes eight characters of the Basic Multilingual Plane as 16 bytes; false when one is none of those.
template <EByteOrder eOrder>
bool writeUtf16Block(const wchar_t* in, char* out) noexcept
{
    const __m128i first = loadWide(in);
    const __m128i second = loadWide(in + 4);
    const __m128i words = narrowToWords(first, second);
    storeVector(out, inOrder<eOrder>(words));
    return hasNoneOf(_mm_or_si128(first, second), 0xFFFF0000U) && !hasSurrogateWord(words);
}

template <EByteOrder eOrder>
char* writeUnit(std::uint32_t unit, char* out) noexcept
{
    storeTwo(out, eOrder == kBigEndian ? unit >> 8 | unit << 8 : unit);
    return out + 2;
}

/// `code` is a scalar value. There is room for it.
template <EByteOrder eOrder>
char* writeUtf16Character(std::uint32_t code, char* out) noexcept
{
    if (code < 0x10000) {
        return writeUnit<eOrder>(code, out);
    }
    out = writeUnit<eOrder>(0xD7C0 + (code >> 10), out);
    return writeUnit<eOrder>(0xDC00 + (code & 0x3FF), out);
}

template <EByteOrder eOrder>
std::uint32_t readUnit(const char* in) noexcept
{
    const std::uint32_t low = byteOf(in[eOrder == kBigEndian ? 1 : 0]);
    return low | byteOf(in[eOrder == kBigEndian ? 0 : 1]) << 8;
}

/// Reads eight units that are no surrogates; false when one is.
template <EByteOrder eOrder>
bool readUtf16Block(const char* in, wchar_t* out) noexcept
{
    const __m128i words = inOrder<eOrder>(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)));
    storeVector(out, _mm_unpacklo_epi16(words, _mm_setzero_si128()));
    storeVector(out + 4, _mm_unpackhi_epi16(words, _mm_setzero_si128()));
    return !hasSurrogateWord(words);
}

/// Bytes of the character at `in`: 2, 4, or 0 when it is ill-formed or truncated.
template <EByteOrder eOrder>
std::ptrdiff_t readUtf16Character(const char* in, const char* inEnd, wchar_t* out) noexcept
{
    if (inEnd - in < 2) {
        return 0;
    }
    const std::uint32_t unit = readUnit<eOrder>(in);
    if ((unit & 0xF800) != 0xD800) {
        *out = static_cast<wchar_t>(unit);
        return 2;
    }
    if (unit >= 0xDC00 || inEnd - in < 4) {
        return 0;
    }
    const std::uint32_t trail = readUnit<eOrder>(in + 2);
    if ((trail & 0xFC00) != 0xDC00) {
        return 0;
    }
    *out = static_cast<wchar_t>((unit << 10) + trail - 0x35FDC00U);
    return 4;
}

template <EByteOrder eOrder>
DecodeRun readUtf16(const char* in, const char* inEnd, wchar_t* out, const wchar_t* outEnd) noexcept
{
    for (;;) {
        while (inEnd - in >= 2 * kUtf16Block && outEnd - out >= kUtf16Block && readUtf16Block<eOrder>(in, out)) {
            in += 2 * kUtf16Block;
            out += kUtf16Block;
        }
        for (int i = 0; i < kUtf16Block; ++i) {
            if (in == inEnd || out == outEnd) {
                return {in, out, in == inEnd ? kStopInputEnd : kStopOutputFull};
            }
            const std::ptrdiff_t size = readUtf16Character<eOrder>(in, inEnd, out);
            if (size == 0) {
                return {in, out, kStopInput};
            }
            in += size;
            ++out;
        }
    }
}

}  // namespace vel::transcoding_details
