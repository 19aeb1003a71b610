// The part of KeyWriter that reads what is not one plain character: sequences, and characters of many elements.

#include <cstring>

#include "keywriter.h"
#include "markedcharacter.h"

namespace vel::nls {

bool KeyWriter::followsCare(std::size_t i) const noexcept
{
    return i > 0 && (characterBefore(i).m_nEntry & entry::kCare) != 0;
}

/// Reads the character at `i`, which is special, and what belongs to it.
std::size_t KeyWriter::special(std::size_t i, bool isCareful)
{
    const Character c = characterAt(i);
    const SortEntry e = c.m_nEntry;
    if ((e & entry::kMark) != 0 && !isCareful && followsCare(i)) {
        return kBail;
    }
    if (entry::isKind(e, kSlowKind)) {
        return slow(i);
    }
    if (entry::isKind(e, kStartKind)) {
        const Opening& opening = m_rData.m_tOpenings[entry::index(e)];
        return start(i, c, opening, opening.m_nAlone);
    }
    if (isCareful && (e & entry::kCare) != 0) {
        return start(i, c, m_rData.careOf(c.m_cCode), e & ~entry::kCare);
    }
    if (entry::isKind(e, kPrefixKind)) {
        return prefixed(i, c, m_rData.m_tOpenings[entry::index(e)]);
    }
    addEntry(e);
    return i + c.m_nWidth;
}

bool KeyWriter::areMarksAt(std::size_t i) const noexcept
{
    return i < m_nUnits && (characterAt(i).m_nEntry & entry::kMark) != 0;
}

/// Whether the marks at `i`, behind a character, surely stand in order, as those of Thai mostly do. More of them than
/// texts have are not looked through, so that each mark of a run may ask. One that ICU reads may be taken apart, and
/// those before it with it.
bool KeyWriter::areMarksInOrder(char32_t before, std::size_t i) const noexcept
{
    constexpr int kMostMarks = 8;
    for (int k = 0; k < kMostMarks; ++k) {
        if (!areMarksAt(i)) {
            return true;
        }
        const Character mark = characterAt(i);
        if (entry::isKind(mark.m_nEntry, kSlowKind) || !m_rData.m_pDecompositions->isInOrder(before, mark.m_cCode)) {
            return false;
        }
        before = mark.m_cCode;
        i += mark.m_nWidth;
    }
    return false;
}

/// Whether the marks behind a character, the first of which may be the next one, may stand between what belongs
/// together, or have to change places.
bool KeyWriter::mayMarksMove(char32_t before, const Opening& opening, const Character& next, bool isMember,
                             std::size_t place) const noexcept
{
    const std::size_t behind = place + next.m_nWidth;
    const bool isMark = (next.m_nEntry & entry::kMark) != 0;
    if (m_rData.m_tRules.isNormalizing()) {
        // Characters that end in a mark have `kCare` there.
        if (!isMark) {
            return (next.m_nEntry & entry::kCare) != 0 && !opening.m_tSlots.empty() &&
                   !areMarksInOrder(next.m_cCode, behind);
        }
        if (!areMarksInOrder(before, place)) {
            return true;
        }
    }
    return isMark && !isMember && opening.m_bMarks && areMarksAt(behind);
}

/// A character, of which `alone` says all, and those behind it that belong to it: the longest sequence that stands
/// there.
std::size_t KeyWriter::start(std::size_t i, const Character& c, const Opening& opening, SortEntry alone)
{
    const Opening* members = &opening;
    char32_t last = c.m_cCode;
    std::size_t place = i + c.m_nWidth;
    std::size_t end = place;
    while (place < m_nUnits) {
        const Character next = characterAt(place);
        const SortEntry* member = members->find(next.m_cCode);
        if (mayMarksMove(last, *members, next, member != nullptr, place)) {
            return members == &opening ? startMarked(i, c, opening, alone) : slow(i);
        }
        if (member == nullptr) {
            break;
        }
        place += next.m_nWidth;
        last = next.m_cCode;
        members = entry::isKind(*member, kStartKind) ? &m_rData.m_tOpenings[entry::index(*member)] : nullptr;
        const SortEntry whole = members == nullptr ? *member : members->m_nAlone;
        if (!entry::isKind(whole, kSlowKind)) {
            alone = whole;
            end = place;
        }
        if (members == nullptr) {
            break;
        }
    }
    // Behind the sequence stands the beginning of a longer one, which is none: a mark further on may belong to this
    // one.
    if (end != place && areMarksAt(end) && areMarksAt(end + characterAt(end).m_nWidth)) {
        return slow(i);
    }
    addEntry(alone);
    return end;
}

/// A character and all marks behind it, of which some may have to change places, or belong to the character though
/// others stand between.
std::size_t KeyWriter::startMarked(std::size_t i, const Character& c, const Opening& opening, SortEntry alone)
{
    MarkedCharacter marked(m_rData);
    bool isKnown = marked.begin(c.m_cCode, opening, alone);
    std::size_t end = i + c.m_nWidth;
    while (isKnown && areMarksAt(end)) {
        const Character mark = characterAt(end);
        isKnown = marked.add(mark.m_cCode, mark.m_nEntry);
        end += mark.m_nWidth;
    }
    if (!isKnown || !marked.join() || (marked.mayGoOn() && end < m_nUnits)) {
        return slow(i);
    }
    marked.forEachEntry([this](SortEntry e) { addEntry(e); });
    return end;
}

/// A character that is read otherwise behind some.
std::size_t KeyWriter::prefixed(std::size_t i, const Character& c, const Opening& opening)
{
    if (i == 0) {
        addEntry(opening.m_nAlone);
        return c.m_nWidth;
    }
    const Character before = characterBefore(i);
    const SortEntry* both = opening.find(before.m_cCode);
    // Of marks that have to change places another one may come to stand before the character.
    const bool mayChange = m_rData.m_tRules.isNormalizing() && (before.m_nEntry & (entry::kMark | entry::kCare)) != 0;
    if (mayChange || (both != nullptr && entry::isKind(*both, kSlowKind))) {
        return slow(i);
    }
    addEntry(both == nullptr ? opening.m_nAlone : *both);
    return i + c.m_nWidth;
}

/// Passes over what is ignored behind a shifted character. What is not plain finds out by itself; so does, read with
/// care, a mark that may change places with one that ends the ignoring: a vowel sign of Thai.
std::size_t KeyWriter::skipIgnored(std::size_t i, bool isCareful) noexcept
{
    const SortEntry leave = entry::kSpecial | (isCareful ? entry::kCare : 0);
    for (; i < m_nUnits; ++i) {
        const SortEntry e = m_rData.m_tPages.findUnit(unit(i));
        if ((e & leave) != 0) {
            return i;
        }
        if (entry::primaryLength(e) != 0) {
            m_bIgnoring = false;
            return i;
        }
    }
    return i;
}

// ------------------------------------------------------------------------------------------------------------ elements

void KeyWriter::addEntry(SortEntry e)
{
    if ((e & entry::kSpecial) == 0) {
        addPlain(e);
        return;
    }
    if (entry::kind(e) == kHangulKind) {
        addHangul(entry::index(e));
        return;
    }
    const ElementList list = m_rData.m_tLists[entry::index(e)];
    for (std::uint32_t k = 0; k < list.m_nCount; ++k) {
        addElement(m_rData.m_tElements[list.m_nFirst + k]);
    }
}

void KeyWriter::addPlain(SortEntry e)
{
    if (m_bIgnoring) {
        if (entry::primaryLength(e) == 0) {
            return;
        }
        m_bIgnoring = false;
    }
    makeRoom(1);
    const std::uint32_t bytes = entry::primaryBytes(e);
    std::memcpy(m_tPrimary.end(), &bytes, sizeof bytes);
    m_tPrimary.setEnd(m_tPrimary.end() + entry::primaryLength(e));
    if (m_tLevels.hasSecondary() && entry::secondary(e) != 0) {
        m_tLevels.secondary(m_nElements + entry::elements(e) - 1, entry::secondary(e));
    }
    if (m_tLevels.hasTertiary() && entry::tertiary(e) != 0) {
        m_tLevels.tertiary(m_nElements, entry::tertiary(e));
    }
    if (m_tLevels.hasQuaternary() && entry::quaternary(e) != 0) {
        m_tLevels.quaternary(m_nElements, entry::quaternary(e));
    }
    m_nElements += entry::elements(e);
}

/// A syllable is its letters, of which the last may be missing.
void KeyWriter::addHangul(std::uint32_t number)
{
    constexpr std::uint32_t kLast = 28;
    constexpr std::uint32_t kVowels = 21;
    addEntry(m_rData.m_tPages.find(0x1100 + number / (kVowels * kLast)));
    addEntry(m_rData.m_tPages.find(0x1161 + number / kLast % kVowels));
    if (number % kLast != 0) {
        addEntry(m_rData.m_tPages.find(0x11A7 + number % kLast));
    }
}

void KeyWriter::addElement(const CodedElement& element)
{
    if (element.m_bVariable) {
        if (m_tLevels.isShifted()) {
            m_tLevels.variable(m_nElements, element.m_tPrimary);
        }
        m_bIgnoring = true;
        return;
    }
    if (element.m_tPrimary.m_nLength == 0) {
        if (m_bIgnoring) {
            return;
        }
    } else {
        m_bIgnoring = false;
        m_tPrimary.reserve(element.m_tPrimary.m_nLength);
        m_tPrimary.put(element.m_tPrimary.m_aBytes.data(), element.m_tPrimary.m_nLength);
    }
    if (!element.m_bSecondary && !element.m_bTertiary) {
        return;
    }
    addSecondary(element);
    addTertiary(element);
    if (m_tLevels.hasQuaternary() && element.m_nQuaternary != 0) {
        m_tLevels.quaternary(m_nElements, element.m_nQuaternary);
    }
    ++m_nElements;
}

void KeyWriter::addSecondary(const CodedElement& element)
{
    if (!element.m_bSecondary) {
        m_tLevels.skipSecondary();
    } else if (m_tLevels.hasSecondary() && element.m_bMerge && m_rData.m_tRules.isFrench()) {
        m_tLevels.mergeSeparator(m_nElements);
    } else if (m_tLevels.hasSecondary() && element.m_tSecondary.m_nLength != 0) {
        m_tLevels.secondary(m_nElements, element.m_tSecondary);
    }
}

void KeyWriter::addTertiary(const CodedElement& element)
{
    if (!element.m_bTertiary) {
        m_tLevels.skipTertiary();
    } else if (m_tLevels.hasTertiary() && element.m_tTertiary.m_nLength != 0) {
        m_tLevels.tertiary(m_nElements, element.m_tTertiary);
    }
}

}  // namespace vel::nls
