// The part of KeyWriter that has ICU read what the table cannot.

#include <algorithm>
#include <cstring>
#include <vector>

#include "keywriter.h"
#include "sorttext.h"

namespace vel::nls {

/// Where what begins at `i` surely has ended: so many plain characters in a row are part of no sequence together. Then
/// nothing before that place changes what follows.
std::size_t KeyWriter::cutAfter(std::size_t i) const noexcept
{
    std::size_t plain = 0;
    std::size_t width = characterAt(i).m_nWidth;
    for (i += width; i < m_nUnits; i += width) {
        const Character c = characterAt(i);
        width = c.m_nWidth;
        if (!entry::isPlain(c.m_nEntry)) {
            plain = 0;
        } else if (++plain > m_rData.m_nCutRun) {
            return i;
        }
    }
    return m_nUnits;
}

/// An element of which only the primary weight counts. The others are the common ones, which count by their number.
void KeyWriter::addCommon(std::uint32_t primary)
{
    const Element element = m_rData.m_tRules.apply({primary, kCommonWeight, kCommonWeight});
    const PrimaryCode code = m_rData.m_tPrimaries->codeOf(element.m_nPrimary);
    m_tPrimary.reserve(code.m_aBytes.size());
    std::memcpy(m_tPrimary.end(), code.m_aBytes.data(), code.m_aBytes.size());
    m_tPrimary.setEnd(m_tPrimary.end() + code.m_nLength);
    ++m_nElements;
    m_bIgnoring = false;
}

/// Characters from `i` on that are read by themselves; nothing before them is looked at.
std::size_t KeyWriter::addBeyond(std::size_t i)
{
    while (i < m_nUnits) {
        const Character c = characterAt(i);
        const std::uint32_t primary = m_rData.primaryBeyond(c.m_cCode, c.m_nEntry);
        if (primary == 0) {
            break;
        }
        addCommon(primary);
        i += c.m_nWidth;
    }
    return i;
}

std::size_t KeyWriter::endOfDigits(std::size_t i) const noexcept
{
    while (i < m_nUnits) {
        const Character c = characterAt(i);
        if (digitValue(c.m_cCode) < 0) {
            break;
        }
        i += c.m_nWidth;
    }
    return i;
}

/// Digits from `i` on, in a sort that reads them together. They are part of no sequence there.
std::size_t KeyWriter::addNumber(std::size_t i)
{
    const std::size_t end = m_rData.m_tNumbers.areComputed() ? endOfDigits(i) : i;
    if (end == i) {
        return i;
    }
    const std::size_t mostWeights = NumberWeights::mostWeights(end - i);
    const ThreadScratch scratch(mostWeights * sizeof(std::uint32_t) + (end - i));
    auto* const weights = scratch.as<std::uint32_t>();
    auto* const digits = reinterpret_cast<std::uint8_t*>(weights + mostWeights);
    std::size_t count = 0;
    while (i < end) {
        const Character c = characterAt(i);
        digits[count++] = static_cast<std::uint8_t>(digitValue(c.m_cCode));
        i += c.m_nWidth;
    }
    const std::size_t weightCount = m_rData.m_tNumbers.weightsOf(digits, count, weights);
    for (std::size_t k = 0; k < weightCount; ++k) {
        addCommon(weights[k]);
    }
    return end;
}

/// Reads from `i` on what the table does not hold, up to a place before which nothing has to be looked at.
std::size_t KeyWriter::slow(std::size_t i)
{
    std::size_t next = addBeyond(i);
    if (next == i) {
        next = addNumber(i);
    }
    if (next == i) {
        next = addByIcu(i);
        retryFrom(next);
    }
    m_nLastCut = next;
    return next;
}

/// Has ICU read from `i` up to the next cut. It also gets what stands between the last cut and `i`, for prefixes.
std::size_t KeyWriter::addByIcu(std::size_t i)
{
    const std::size_t end = cutAfter(i);
    const std::size_t before =
        entry::isKind(characterAt(i).m_nEntry, kPrefixKind) || entry::isKind(characterAt(i).m_nEntry, kSlowKind)
            ? m_nLastCut - std::min(m_nLastCut, m_rData.m_nCutRun)
            : i;
    const ThreadScratch text(2 * (end - before) + 2);
    const std::size_t length = decodeBigEndian(m_pText + 2 * before, 2 * (end - before), text.as<char16_t>());
    addSlow(text.as<char16_t>(), length, i - before);
    m_nSlowUnits += end - i;
    return end;
}

/// The elements of `text` from the unit `skip` on, where a sequence begins.
void KeyWriter::addSlow(const char16_t* text, std::size_t length, std::size_t skip)
{
    std::vector<std::uint8_t> quaternaries;
    if (m_tLevels.hasQuaternary()) {
        quaternaries = readQuaternaries(m_rData.m_pUnshifted.get(), text, length);
    }
    std::size_t number = 0;
    const ElementPool::Loan loan(m_rData.m_tPool, text, length);
    ElementReader reader(loan.get(), skip != 0);
    for (RawElement raw; reader.next(raw);) {
        Element element = m_rData.m_tRules.apply(raw);
        if (element.m_nTertiary != 0 && number < quaternaries.size()) {
            element.m_nQuaternary = quaternaries[number++];
        }
        if (skip == 0 || static_cast<std::size_t>(reader.end()) > skip) {
            addElement(m_rData.encode(element));
        }
    }
}

}  // namespace vel::nls
