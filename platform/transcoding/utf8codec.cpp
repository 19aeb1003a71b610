#include <algorithm>
#include <string_view>

#include "avx2.h"
#include "codecs.h"
#include "vel/core/utf8.h"
#include "widelanes.h"

namespace vel::transcoding_details {

namespace {

/// The same for both kinds of blocks.
constexpr std::ptrdiff_t kBlock = kAvx2Block;
constexpr std::ptrdiff_t kBlockRoom = kUtf8BlockRoom;

/// Lanes of U+0080 to U+07FF as their two bytes, the first one lowest.
inline __m128i twoByteLanes(__m128i codes) noexcept
{
    const __m128i last = _mm_slli_epi32(_mm_and_si128(codes, _mm_set1_epi32(0x3F)), 8);
    return _mm_or_si128(_mm_or_si128(_mm_srli_epi32(codes, 6), last), _mm_set1_epi32(0x80C0));
}

/// Lanes of U+0800 to U+FFFF as their three bytes, the first one lowest.
inline __m128i threeByteLanes(__m128i codes) noexcept
{
    const __m128i middle = _mm_and_si128(_mm_slli_epi32(codes, 2), _mm_set1_epi32(0x3F00));
    const __m128i last = _mm_slli_epi32(_mm_and_si128(codes, _mm_set1_epi32(0x3F)), 16);
    const __m128i bits = _mm_or_si128(_mm_or_si128(_mm_srli_epi32(codes, 12), middle), last);
    return _mm_or_si128(bits, _mm_set1_epi32(0x8080E0));
}

/// All ones in the lanes of characters at or above `limit`. Of characters that are not negative.
inline __m128i notBelow(__m128i codes, int limit) noexcept
{
    return _mm_cmpgt_epi32(codes, _mm_set1_epi32(limit - 1));
}

/// Four characters of three bytes each, closed up. Writes 14 bytes, of which 12 count.
inline char* writeThreeByteLanes(__m128i codes, char* out) noexcept
{
    const __m128i lanes = threeByteLanes(codes);
    const __m128i firsts = _mm_and_si128(lanes, _mm_set1_epi64x(0xFFFFFF));
    const __m128i seconds = _mm_and_si128(_mm_srli_epi64(lanes, 8), _mm_set1_epi64x(0xFFFFFF000000LL));
    const __m128i pairs = _mm_or_si128(firsts, seconds);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), pairs);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 6), _mm_unpackhi_epi64(pairs, pairs));
    return out + 12;
}

/// Writes four lanes of up to four bytes, each behind the bytes of the one before that count.
inline char* writeLanes(__m128i lanes, __m128i lengths, char* out) noexcept
{
    const std::uint64_t firstPair = static_cast<std::uint64_t>(_mm_cvtsi128_si64(lanes));
    const std::uint64_t secondPair = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(lanes, lanes)));
    // The four lengths in the four bytes of one number.
    const __m128i words = _mm_packs_epi32(lengths, lengths);
    const std::uint32_t counts = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
    // Where each one ends, counted from the first.
    const std::uint32_t ends = counts * 0x01010101U;
    storeFour(out, static_cast<std::uint32_t>(firstPair));
    storeFour(out + (ends & 0xFF), static_cast<std::uint32_t>(firstPair >> 32));
    storeFour(out + (ends >> 8 & 0xFF), static_cast<std::uint32_t>(secondPair));
    storeFour(out + (ends >> 16 & 0xFF), static_cast<std::uint32_t>(secondPair >> 32));
    return out + (ends >> 24);
}

/// Four characters below U+0800.
inline char* writeUpToTwoBytes(__m128i codes, char* out) noexcept
{
    const __m128i isTwo = notBelow(codes, 0x80);
    const __m128i lanes = _mm_or_si128(_mm_and_si128(isTwo, twoByteLanes(codes)), _mm_andnot_si128(isTwo, codes));
    return writeLanes(lanes, _mm_sub_epi32(_mm_set1_epi32(1), isTwo), out);
}

/// Four characters below U+10000 that are no surrogates.
inline char* writeUpToThreeBytes(__m128i codes, char* out) noexcept
{
    const __m128i isThree = notBelow(codes, 0x800);
    if (_mm_movemask_epi8(isThree) == 0xFFFF) {
        return writeThreeByteLanes(codes, out);
    }
    const __m128i isTwo = notBelow(codes, 0x80);
    const __m128i shorter = _mm_or_si128(_mm_and_si128(isTwo, twoByteLanes(codes)), _mm_andnot_si128(isTwo, codes));
    const __m128i lanes =
        _mm_or_si128(_mm_and_si128(isThree, threeByteLanes(codes)), _mm_andnot_si128(isThree, shorter));
    return writeLanes(lanes, _mm_sub_epi32(_mm_sub_epi32(_mm_set1_epi32(1), isTwo), isThree), out);
}

/// Whether a lane is a surrogate. Of characters below U+10000.
inline bool hasSurrogate(__m128i codes) noexcept
{
    const __m128i top = _mm_and_si128(codes, _mm_set1_epi32(0xF800));
    return _mm_movemask_epi8(_mm_cmpeq_epi32(top, _mm_set1_epi32(0xD800))) != 0;
}

/// One character anywhere in Unicode; false when it is no scalar value or does not fit.
inline EStop writeOne(std::uint32_t code, char*& out, const char* outEnd) noexcept
{
    const std::ptrdiff_t length = code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    if (!isScalarValue(code)) {
        return kStopInput;
    }
    if (outEnd - out < length) {
        return kStopOutputFull;
    }
    if (length == 1) {
        *out++ = static_cast<char>(code);
        return kStopInputEnd;
    }
    // The marks of the first byte: 110 for two, 1110 for three, 11110 for four.
    const std::uint32_t mark = 0xF00U >> length & 0xFFU;
    *out++ = static_cast<char>(mark | code >> 6 * (length - 1));
    for (std::ptrdiff_t i = length - 2; i >= 0; --i) {
        *out++ = static_cast<char>(0x80U | (code >> 6 * i & 0x3FU));
    }
    return kStopInputEnd;
}

/// Writes a block when its characters allow; false when one is a surrogate or above U+FFFF.
inline bool writeBlock(const wchar_t* in, char*& out) noexcept
{
    const SixteenWide block(in);
    const __m128i any = block.any();
    if (hasNoneOf(any, ~0x7FU)) [[likely]] {
        storeVector(out, block.bytes());
        out += kBlock;
        return true;
    }
    if (hasNoneOf(any, ~0x7FFU)) {
        for (const __m128i codes : block.m_a) {
            out = writeUpToTwoBytes(codes, out);
        }
        return true;
    }
    if (!hasNoneOf(any, ~0xFFFFU)) {
        return false;
    }
    for (const __m128i codes : block.m_a) {
        if (hasSurrogate(codes)) [[unlikely]] {
            return false;
        }
    }
    for (const __m128i codes : block.m_a) {
        out = writeUpToThreeBytes(codes, out);
    }
    return true;
}

class Utf8Codec final : public Codec
{
public:
    Utf8Codec() : Codec({"\xEF\xBF\xBD", "\xEF\xBF\xBD", {}, false}) {}

    EncodeRun encode(const wchar_t* in, const wchar_t* inEnd, char* out, char* outEnd) const noexcept override
    {
        const bool isVectorised = hasAvx2();
        for (;;) {
            if (isVectorised) {
                encodeUtf8BlocksAvx2(in, inEnd, out, outEnd);
            }
            while (!isVectorised && inEnd - in >= kBlock && outEnd - out >= kBlockRoom && writeBlock(in, out)) {
                in += kBlock;
            }
            // What no block takes: the rest, and blocks with characters of four bytes or none.
            const wchar_t* singlesEnd = inEnd - in < kBlock ? inEnd : in + kBlock;
            for (; in < singlesEnd; ++in) {
                const EStop stop = writeOne(codeOf(*in), out, outEnd);
                if (stop != kStopInputEnd) [[unlikely]] {
                    return {in, out, stop};
                }
            }
            if (in == inEnd) {
                return {in, out, kStopInputEnd};
            }
        }
    }

    DecodeRun decode(const char* in, const char* inEnd, wchar_t* out, wchar_t* outEnd) const noexcept override
    {
        // Text never grows in characters, so that many bytes find room.
        const std::size_t rest = static_cast<std::size_t>(inEnd - in);
        const std::size_t size = std::min(rest, static_cast<std::size_t>(outEnd - out));
        std::size_t errorOffset = 0;
        out += decodeUtf8({in, size}, out, &errorOffset);
        if (errorOffset == std::string_view::npos) {
            return {in + size, out, size == rest ? kStopInputEnd : kStopOutputFull};
        }
        // Near the end of a piece the fault may be that the piece ends, not the text.
        const bool isCut = size < rest && size - errorOffset < 4;
        return {in + errorOffset, out, isCut ? kStopOutputFull : kStopInput};
    }
};

}  // namespace

Handle<const Codec> makeUtf8Codec()
{
    return makeHandle<const Utf8Codec>();
}

}  // namespace vel::transcoding_details
