#include "longruns.h"

#include <algorithm>

#include "sortcontexts.h"

namespace vel::nls {

namespace {

bool isSlow(SortEntry e) noexcept
{
    return entry::isKind(e, kSlowKind);
}

}  // namespace

// --------------------------------------------------------------------------------------------------------------- order

/// ICU begins no segment with a character beyond the basic plane: such a mark stays where it is unless it follows one
/// that has a segment.
void LongRuns::add(char32_t c, std::size_t place)
{
    const int lead = firstClass(c);
    const int trail = lastClass(c);
    if (!m_rData.m_tRules.isNormalizing()) {
        append(c, place, lead, trail);
        return;
    }
    if (m_tSegment.empty() || lead == 0) {
        closeSegment();
        if (trail == 0 || c > 0xFFFF) {
            append(c, place, lead, trail);
            return;
        }
    }
    m_tSegment.push_back({c, static_cast<std::uint8_t>(lead), static_cast<std::uint8_t>(trail), place, kNone, kNone});
}

void LongRuns::append(char32_t c, std::size_t place, int lead, int trail)
{
    const auto self = static_cast<Index>(m_tItems.size());
    m_tItems.push_back(
        {c, static_cast<std::uint8_t>(lead), static_cast<std::uint8_t>(trail), place, self - 1, self + 1});
}

bool LongRuns::isSegmentOrdered() const noexcept
{
    std::uint8_t before = 0;
    for (const Item& each : m_tSegment) {
        if (each.m_nLead != 0 && (before > each.m_nLead || isSplitAlways(each.m_cCode))) {
            return false;
        }
        before = each.m_nTrail;
    }
    return true;
}

/// Takes all characters of the segment apart only where they are not in order, as ICU does.
void LongRuns::closeSegment()
{
    m_nWork += m_tSegment.size();
    if (isSegmentOrdered()) {
        for (const Item& each : m_tSegment) {
            append(each.m_cCode, each.m_nPlace, each.m_nLead, each.m_nTrail);
        }
    } else {
        addOrdered();
    }
    m_tSegment.clear();
}

void LongRuns::addOrdered()
{
    const std::size_t place = m_tSegment.front().m_nPlace;
    for (const Item& each : m_tSegment) {
        m_rData.m_pDecompositions->forEachCharacter(each.m_cCode, [&](char32_t c, unsigned combiningClass) {
            if (combiningClass == 0) {
                append(c, place, 0, 0);
            } else {
                m_tOrder.add(c, combiningClass);
            }
        });
    }
    m_tOrder.order();
    for (const MarkOrder::Mark& mark : m_tOrder) {
        const auto combiningClass = static_cast<int>(mark.m_nClass);
        append(mark.m_cCode, place, combiningClass, combiningClass);
    }
    m_tOrder.clear();
}

// ----------------------------------------------------------------------------------------------------------- sequences

bool LongRuns::next(Step& step)
{
    if (m_nFront == m_tItems.size()) {
        return false;
    }
    step = {};
    const Item& item = m_tItems[m_nFront];
    const Sequence alone = beginningWith(item.m_cCode);
    if (alone.m_pOpening == nullptr) {
        if (!readAlone(item, alone.m_nEntry, step)) {
            return false;
        }
    } else if (isSlow(alone.m_nEntry)) {
        return false;
    } else {
        step.m_nEntry = readSequence(m_nFront, alone);
    }
    m_nFront = nextOf(m_nFront);
    return true;
}

/// The character by itself, and what may go on behind it.
LongRuns::Sequence LongRuns::beginningWith(char32_t c) const noexcept
{
    const SortEntry e = m_rData.m_tPages.find(c);
    const bool isStart = entry::isKind(e, kStartKind);
    if (!isStart && (e & entry::kCare) == 0) {
        return {e, nullptr};
    }
    const Opening& opening = isStart ? m_rData.m_tOpenings[entry::index(e)] : m_rData.careOf(c);
    return {isStart ? opening.m_nAlone : e & ~entry::kCare, opening.m_tSlots.empty() ? nullptr : &opening};
}

/// False where what stands beside the character may matter and is not known.
bool LongRuns::readAlone(const Item& item, SortEntry e, Step& step) const
{
    if (isSlow(e)) {
        step.m_nPrimary = m_rData.primaryBeyond(item.m_cCode, e);
        return step.m_nPrimary != 0;
    }
    if (!entry::isKind(e, kPrefixKind)) {
        step.m_nEntry = e;
        return true;
    }
    const auto self = static_cast<std::size_t>(&item - m_tItems.data());
    if (self == 0) {
        return false;
    }
    const Opening& opening = m_rData.m_tOpenings[entry::index(e)];
    const SortEntry* both = opening.find(m_tItems[self - 1].m_cCode);
    step.m_nEntry = both == nullptr ? opening.m_nAlone : *both;
    return !isSlow(step.m_nEntry);
}

/// What the member makes of the sequence; the entry is slow where that is but the beginning of a longer one.
LongRuns::Sequence LongRuns::extended(Sequence sequence, const SortEntry& member) const noexcept
{
    sequence.m_pOpening = entry::isKind(member, kStartKind) ? &m_rData.m_tOpenings[entry::index(member)] : nullptr;
    sequence.m_nEntry = sequence.m_pOpening == nullptr ? member : sequence.m_pOpening->m_nAlone;
    return sequence;
}

/// The longest sequence of neighbours; `last` is its last one.
LongRuns::Sequence LongRuns::longest(Index first, Sequence sequence, Index& last)
{
    last = first;
    Sequence found = sequence;
    for (Index item = nextOf(first); item != m_tItems.size() && sequence.m_pOpening != nullptr; item = nextOf(item)) {
        ++m_nWork;
        const SortEntry* member = sequence.m_pOpening->find(m_tItems[item].m_cCode);
        if (member == nullptr) {
            break;
        }
        sequence = extended(sequence, *member);
        if (!isSlow(sequence.m_nEntry)) {
            found = sequence;
            last = item;
        }
    }
    return found;
}

/// Takes what belongs to the first character out of the list.
SortEntry LongRuns::readSequence(Index first, const Sequence& alone)
{
    Index last = first;
    Sequence sequence = longest(first, alone, last);
    while (last != first) {
        const Index before = m_tItems[last].m_nBefore;
        remove(last);
        last = before;
    }
    Index behind = nextOf(first);
    if (!isMarkItem(behind)) {
        return sequence.m_nEntry;
    }
    while (sequence.m_pOpening != nullptr && sequence.m_pOpening->m_bMarks) {
        const Index mark = findUnblocked(*sequence.m_pOpening, behind);
        if (mark == kNone) {
            break;
        }
        sequence = extended(sequence, *sequence.m_pOpening->find(m_tItems[mark].m_cCode));
        behind = mark;
        remove(mark);
    }
    return sequence.m_nEntry;
}

void LongRuns::remove(Index item)
{
    const Item& gone = m_tItems[item];
    if (item < m_nRunEnd) {
        m_tIndex.erase(keyOf(item));
    }
    m_tItems[gone.m_nBefore].m_nNext = gone.m_nNext;
    if (gone.m_nNext != m_tItems.size()) {
        m_tItems[gone.m_nNext].m_nBefore = gone.m_nBefore;
        updateIndex(gone.m_nNext);
    }
}

// --------------------------------------------------------------------------------------------------------------- index

std::uint64_t LongRuns::keyOf(Index item) const noexcept
{
    return (std::uint64_t{m_tItems[item].m_cCode} << 32) | item;
}

/// Whether the mark passed over before it leaves it free.
bool LongRuns::isUnblocked(Index item) const noexcept
{
    const Item& self = m_tItems[item];
    return self.m_nBefore != kNone && m_tItems[self.m_nBefore].m_nTrail < self.m_nLead;
}

void LongRuns::updateIndex(Index item)
{
    if (item >= m_nRunEnd) {
        return;
    }
    ++m_nWork;
    if (isUnblocked(item)) {
        m_tIndex.insert(keyOf(item));
    } else {
        m_tIndex.erase(keyOf(item));
    }
}

/// The run of marks in which `first` stands.
void LongRuns::indexRun(Index first)
{
    m_tIndex.clear();
    m_nRunEnd = first;
    Index item = first;
    for (; isMarkItem(item); item = nextOf(item)) {}
    m_nRunEnd = item;
    for (item = first; item != m_nRunEnd; item = nextOf(item)) {
        updateIndex(item);
    }
}

/// The first mark behind another one that is not blocked and makes a sequence; kNone where there is none.
LongRuns::Index LongRuns::findUnblocked(const Opening& opening, Index behind)
{
    if (behind >= m_nRunEnd) {
        indexRun(behind);
    }
    Index found = kNone;
    for (const Opening::Slot& slot : opening.m_tSlots) {
        if (slot.m_cOther == Opening::kNone || isSlow(extended({}, slot.m_nEntry).m_nEntry)) {
            continue;
        }
        ++m_nWork;
        const auto place = m_tIndex.upper_bound((std::uint64_t{slot.m_cOther} << 32) | behind);
        if (place != m_tIndex.end() && *place >> 32 == slot.m_cOther) {
            found = std::min(found, static_cast<Index>(*place));
        }
    }
    return found;
}

}  // namespace vel::nls
