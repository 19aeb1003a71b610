// The part of KeyWriter that has ICU read what the table cannot.

#include <algorithm>
#include <cstring>
#include <vector>

#include "keywriter.h"
#include "longruns.h"
#include "sorttext.h"

namespace vel::nls {

namespace {

/// More marks in a row than texts have: for these ICU's time grows with the square of their number.
constexpr std::size_t kMostMarksOfIcu = 16;

}  // namespace

/// Where what begins at `i` surely has ended: so many plain characters in a row are part of no sequence together. Then
/// nothing before that place changes what follows.
KeyWriter::Stretch KeyWriter::stretchFrom(std::size_t i, std::size_t mostMarks) const noexcept
{
    std::size_t plain = 0;
    std::size_t marks = 0;
    for (bool isFirst = true; i < m_nUnits; isFirst = false) {
        const Character c = characterAt(i);
        marks = (c.m_nEntry & entry::kMark) != 0 ? marks + 1 : 0;
        if (marks > mostMarks) {
            return {i, true};
        }
        plain = isFirst || !entry::isPlain(c.m_nEntry) ? 0 : plain + 1;
        if (plain > m_rData.m_nCutRun) {
            return {i, false};
        }
        i += c.m_nWidth;
    }
    return {m_nUnits, false};
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

/// Hands over what stands from `i` on, up to the long run that goes through `within` and as far behind it as one
/// sequence may go. Returns the end.
std::size_t KeyWriter::collectLongRun(std::size_t i, std::size_t within, LongRuns& runs) const
{
    for (std::size_t behind = 0; i < m_nUnits;) {
        const Character c = characterAt(i);
        const bool isMark = (c.m_nEntry & entry::kMark) != 0;
        if (i > within && !isMark && behind++ == m_rData.m_nCutRun) {
            break;
        }
        runs.add(c.m_cCode, i);
        i += c.m_nWidth;
    }
    runs.finish();
    return i;
}

/// Reads from `i` to the first character behind the long run of marks that goes through `within`. Returns where it goes
/// on: before that where only ICU knows, so perhaps at `i`.
std::size_t KeyWriter::addLongRun(std::size_t i, std::size_t within)
{
    LongRuns runs(m_rData);
    const std::size_t end = collectLongRun(i, within, runs);
    const Checkpoint before = save();
    LongRuns::Step step;
    bool isBehind = false;
    while (!isBehind && runs.next(step)) {
        if (step.m_nPrimary != 0) {
            addCommon(step.m_nPrimary);
        } else {
            addEntry(step.m_nEntry);
        }
        isBehind = runs.isAtStarter() && runs.place(end) > within;
    }
    m_nRunWork += runs.work();
    if (!runs.isAtStarter()) {
        restore(before);
        return i;
    }
    return runs.place(end);
}

/// Has ICU read from `i` up to the next cut. It also gets what stands between the last cut and `i`, for prefixes.
std::size_t KeyWriter::addByIcu(std::size_t i)
{
    const Stretch stretch = stretchFrom(i, kMostMarksOfIcu);
    if (stretch.m_bLongRun) {
        const std::size_t next = addLongRun(i, stretch.m_nEnd);
        if (next != i) {
            return next;
        }
    }
    const std::size_t end = stretch.m_bLongRun ? stretchFrom(i, m_nUnits).m_nEnd : stretch.m_nEnd;
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
