#include "comparison.h"

#include <algorithm>

#include "equaltext.h"

namespace vel::nls {

// --------------------------------------------------------------------------------------------------------- CompareSide

/// Also where a mark may have to change places, or is ignored behind a shifted character.
bool CompareSide::isCut(std::size_t place) const noexcept
{
    if (place == 0 || place >= m_tText.size()) {
        return true;
    }
    const SortEntry e = m_tText.entryAt(m_rData.m_tPages, place);
    const bool mayBeIgnored = m_rData.m_tRules.isShifted() && entry::primaryLength(e) == 0;
    if ((e & (entry::kMark | entry::kInner)) == 0 && !mayBeIgnored) {
        return true;
    }
    const SortEntry before = m_tText.entryAt(m_rData.m_tPages, place - 1);
    return !entry::mayJoin(before, e) &&
           !(mayBeIgnored && ((before & entry::kSpecial) != 0 || entry::primaryLength(before) == 0));
}

inline bool CompareSide::take(SortEntry e) noexcept
{
    m_nEntry = e;
    m_nBytes = entry::primaryBytes(e);
    m_nLength = entry::primaryLength(e);
    m_nElements = entry::elements(e);
    return true;
}

inline bool CompareSide::next() noexcept
{
    const SortEntry e = m_tText.entryAt(m_rData.m_tPages, m_nNext);
    if ((e & (entry::kSpecial | entry::kCare)) != 0) {
        return nextHard({e, 1});
    }
    ++m_nNext;
    return take(e);
}

bool CompareSide::nextHard(Reading reading) noexcept
{
    if ((reading.m_nEntry & entry::kCare) != 0 && isMarkAt(m_rData.m_tPages, m_tText, m_nNext + 1)) {
        return false;
    }
    if ((reading.m_nEntry & entry::kSpecial) != 0) {
        if (!readSpecial(m_rData, m_tText, m_nNext, reading) ||
            (m_rData.m_tRules.isShifted() && entry::primaryLength(reading.m_nEntry) == 0 &&
             (reading.m_nEntry & entry::kSpecial) == 0)) {
            return false;
        }
    }
    m_nNext += reading.m_nWidth;
    if ((reading.m_nEntry & entry::kSpecial) == 0) {
        return take(reading.m_nEntry);
    }
    SyllableReading syllable;
    if (entry::kind(reading.m_nEntry) == kVariableKind) {
        m_nNext = skipIgnored(m_rData, m_tText, m_nNext);
        // A mark that counts may have to change places with those passed over, which then count as well.
        if (!atEnd() && (m_tText.entryAt(m_rData.m_tPages, m_nNext) & entry::kMark) != 0) {
            return false;
        }
    } else if (!syllable.read(m_rData.m_tPages, entry::index(reading.m_nEntry))) {
        return false;
    }
    m_nEntry = 0;
    m_nBytes = syllable.m_nBytes;
    m_nLength = syllable.m_nLength;
    m_nElements = syllable.m_nElements;
    return true;
}

// ---------------------------------------------------------------------------------------------------------- Comparison

Comparison::Comparison(const SortData& data, WideText a, WideText b, const Beginning& beginning) noexcept
    : m_tLeft(data, a), m_tRight(data, b), m_tLower(beginning.m_tLower)
{
    moveToCut(beginning.m_nEqual, beginning.m_nPassed);
}

/// Back from where the texts differ to where nothing before changes what follows.
void Comparison::moveToCut(std::size_t place, std::size_t least) noexcept
{
    while (place > least && !(m_tLeft.isCut(place) && m_tRight.isCut(place))) {
        --place;
    }
    m_tLeft.moveTo(place);
    m_tRight.moveTo(place);
}

/// To where the texts differ again. Not where what stands before differs and may change what follows; nor past what a
/// difference behind it has to know.
void Comparison::passEqual() noexcept
{
    const WideText& left = m_tLeft.text();
    const WideText& right = m_tRight.text();
    const std::size_t end = std::min(left.size(), right.size());
    const std::size_t place = m_tLeft.place();
    if (place == m_tRight.place() && place < end && left[place] == right[place] && !m_tLower.isOpen() &&
        m_tLeft.isCut() && m_tRight.isCut()) {
        moveToCut(equalUpTo(left.data(), right.data(), place + 1, end), place);
    }
}

std::optional<int> Comparison::run(SortStrength strength) noexcept
{
    for (;;) {
        if (m_tLeft.m_nLength != 0 || m_tRight.m_nLength != 0) {
            if (!refill(m_tLeft) || !refill(m_tRight)) {
                return std::nullopt;
            }
        } else {
            if (m_tLeft.atEnd() && m_tRight.atEnd()) {
                return result(strength);
            }
            if (!readBoth()) {
                return std::nullopt;
            }
        }
        if (m_tLeft.m_nLength == 0 || m_tRight.m_nLength == 0) {
            if (const std::optional<int> order = orderAtEnd()) {
                return order;
            }
        } else if (const int order = takeShared()) {
            return order;
        } else if (m_tLeft.m_nLength == 0 && m_tRight.m_nLength == 0) {
            passEqual();
        }
    }
}

/// Both stand between characters: what follows counts on the lower levels as long as it goes in step.
bool Comparison::readBoth() noexcept
{
    if (m_tLeft.atEnd() || m_tRight.atEnd()) {
        m_bInStep = false;
        CompareSide& side = m_tLeft.atEnd() ? m_tRight : m_tLeft;
        return side.next();
    }
    if (!m_tLeft.next() || !m_tRight.next()) {
        return false;
    }
    m_bInStep = m_bInStep && m_tLeft.m_nLength == m_tRight.m_nLength && m_tLeft.m_nElements == m_tRight.m_nElements;
    m_tLower.add(m_tLeft.m_nEntry, m_tRight.m_nEntry);
    return true;
}

/// One of them has bytes left over: the other one reads on.
bool Comparison::refill(CompareSide& side) noexcept
{
    while (side.m_nLength == 0 && !side.atEnd()) {
        m_bInStep = false;
        if (!side.next()) {
            return false;
        }
    }
    return true;
}

/// Where a side has no bytes: it is at its end, or has read what counts on lower levels only.
std::optional<int> Comparison::orderAtEnd() const noexcept
{
    if (m_tLeft.m_nLength != 0 && m_tRight.atEnd()) {
        return 1;
    }
    if (m_tRight.m_nLength != 0 && m_tLeft.atEnd()) {
        return -1;
    }
    return std::nullopt;
}

/// Compares the bytes that both have, and drops equal ones.
int Comparison::takeShared() noexcept
{
    const unsigned shared = std::min(m_tLeft.m_nLength, m_tRight.m_nLength);
    const std::uint64_t mask = shared == 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * shared)) - 1;
    const std::uint64_t difference = (m_tLeft.m_nBytes ^ m_tRight.m_nBytes) & mask;
    if (difference != 0) {
        const int shift = __builtin_ctzll(difference) & ~7;
        return ((m_tLeft.m_nBytes >> shift) & 0xFF) < ((m_tRight.m_nBytes >> shift) & 0xFF) ? -1 : 1;
    }
    for (CompareSide* side : {&m_tLeft, &m_tRight}) {
        side->m_nBytes = shared == 8 ? 0 : side->m_nBytes >> (8 * shared);
        side->m_nLength -= shared;
    }
    return 0;
}

/// All primary weights are equal.
std::optional<int> Comparison::result(SortStrength strength) const noexcept
{
    if (m_bInStep || strength == SortStrength::kPrimary) {
        return m_tLower.order(strength);
    }
    return std::nullopt;
}

}  // namespace vel::nls
