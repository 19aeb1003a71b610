#include "xmlplace.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>

namespace vel::xml_details {

namespace {

bool isContinuation(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

unsigned maskOf(__m128i comparison) noexcept
{
    return static_cast<unsigned>(_mm_movemask_epi8(comparison));
}

/// For masks with few bits, without a processor that counts them.
std::uint32_t countBits(unsigned mask) noexcept
{
    std::uint32_t count = 0;
    for (; mask != 0; mask &= mask - 1) {
        ++count;
    }
    return count;
}

/// Drops the carriage returns that a line feed follows: that line ends with the line feed.
unsigned dropPairs(unsigned returns, const char* block) noexcept
{
    unsigned kept = 0;
    for (; returns != 0; returns &= returns - 1) {
        const int bit = std::countr_zero(returns);
        kept |= block[bit + 1] == '\n' ? 0U : 1U << bit;
    }
    return kept;
}

}  // namespace

XmlPlace placeOf(std::string_view text, std::size_t offset) noexcept
{
    offset = std::min(offset, text.size());
    XmlPlace place{1, 1};
    for (std::size_t i = text.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0; i < offset; ++i) {
        const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (text[i] == '\n' || (text[i] == '\r' && !isPair)) {
            place = {place.m_nLine + 1, 1};
        } else if (!isContinuation(text[i])) {
            ++place.m_nColumn;
        }
    }
    return place;
}

XmlPlaceCounter::XmlPlaceCounter(std::string_view text) noexcept
    : m_pText(text.data()), m_nScanned(text.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0), m_nColumnBase(m_nScanned)
{}

void XmlPlaceCounter::scanTo(std::size_t offset) noexcept
{
    const __m128i feed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    // Continuation bytes are 0x80 to 0xBF, the lowest 64 as signed values.
    const __m128i pastContinuations = _mm_set1_epi8(-64);
    for (std::size_t at = m_nScanned; at < offset; at += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(m_pText + at));
        const unsigned valid = offset - at >= 16 ? 0xFFFFU : (1U << (offset - at)) - 1;
        const unsigned feeds = maskOf(_mm_cmpeq_epi8(block, feed)) & valid;
        const unsigned returns = maskOf(_mm_cmpeq_epi8(block, carriageReturn)) & valid;
        unsigned continuations = maskOf(_mm_cmplt_epi8(block, pastContinuations)) & valid;
        const unsigned breaks = returns == 0 ? feeds : feeds | dropPairs(returns, m_pText + at);
        if (breaks != 0) {
            const int afterLast = 32 - std::countl_zero(breaks);
            m_nLine += countBits(breaks);
            m_nColumnBase = at + static_cast<std::size_t>(afterLast);
            continuations >>= afterLast;
        }
        m_nColumnBase += countBits(continuations);
    }
    m_nScanned = offset;
}

}  // namespace vel::xml_details
