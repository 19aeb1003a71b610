#include "vel/transcoding/utf16.h"

#include <string_view>

#include "avx2.h"
#include "utf16units.h"

namespace vel {

using namespace transcoding_details;

namespace {

/// The longest text that is taken for a short one.
constexpr std::size_t kShortText = 64;
constexpr std::size_t kHalfBlock = kUtf16Block / 2;

/// Writes four characters of the Basic Multilingual Plane as eight bytes; false when one is none of those.
bool writeHalfBlock(const wchar_t* in, char* out) noexcept
{
    const __m128i lanes = loadWide(in);
    const __m128i words = narrowToWords(lanes, lanes);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), swapBytesOfWords(words));
    return hasNoneOf(lanes, 0xFFFF0000U) && !hasSurrogateWord(words);
}

/// A short text of the Basic Multilingual Plane, in blocks of which the last overlaps the one before: names and words
/// are mostly a block and a piece of one. False when it is no such text; what is at `out` then counts for nothing.
bool encodeShortText(const wchar_t* text, std::size_t length, char* out) noexcept
{
    if (length < kUtf16Block) {
        const std::size_t last = length - kHalfBlock;
        return writeHalfBlock(text, out) && writeHalfBlock(text + last, out + 2 * last);
    }
    const std::size_t last = length - kUtf16Block;
    for (std::size_t i = 0; i < last; i += kUtf16Block) {
        if (!writeUtf16Block<kBigEndian>(text + i, out + 2 * i)) {
            return false;
        }
    }
    return writeUtf16Block<kBigEndian>(text + last, out + 2 * last);
}

}  // namespace

std::size_t encodeUtf16BigEndian(const wchar_t* pText, std::size_t nLength, char* pOut) noexcept
{
    if (nLength >= kHalfBlock && nLength <= kShortText && encodeShortText(pText, nLength, pOut)) {
        return 2 * nLength;
    }
    const wchar_t* textEnd = pText + nLength;
    char* out = pOut;
    const bool isVectorised = hasAvx2();
    for (;;) {
        if (isVectorised) {
            encodeUtf16BigEndianBlocksAvx2(pText, textEnd, out);
        }
        while (textEnd - pText >= kUtf16Block && writeUtf16Block<kBigEndian>(pText, out)) {
            pText += kUtf16Block;
            out += 2 * kUtf16Block;
        }
        const wchar_t* singlesEnd = textEnd - pText < kUtf16Block ? textEnd : pText + kUtf16Block;
        for (; pText < singlesEnd; ++pText) {
            const std::uint32_t code = codeOf(*pText);
            out = writeUtf16Character<kBigEndian>(isScalarValue(code) ? code : 0xFFFD, out);
        }
        if (pText == textEnd) {
            return static_cast<std::size_t>(out - pOut);
        }
    }
}

std::size_t encodeUtf16BigEndian(const wchar_t* pText, std::size_t nLength, char* pOut, std::size_t nCapacity) noexcept
{
    constexpr std::size_t kShort = kAvx2Block;
    return nLength <= kShort && nCapacity >= 2 * kShort && hasAvx2()
               ? encodeUtf16BigEndianShortAvx2(pText, nLength, pOut)
               : encodeUtf16BigEndian(pText, nLength, pOut);
}

std::size_t decodeUtf16BigEndian(const char* pBytes, std::size_t nSize, wchar_t* pOut,
                                 std::size_t* pErrorOffset) noexcept
{
    // Text never has more characters than units.
    const DecodeRun run = readUtf16<kBigEndian>(pBytes, pBytes + nSize, pOut, pOut + nSize / 2);
    *pErrorOffset = run.m_pIn == pBytes + nSize ? std::string_view::npos : static_cast<std::size_t>(run.m_pIn - pBytes);
    return static_cast<std::size_t>(run.m_pOut - pOut);
}

}  // namespace vel
