#include "markedcharacter.h"

#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "icuhandles.h"

namespace vel::nls {

namespace {

/// Whether the elements of the character do not depend on what stands beside it.
bool standsAlone(SortEntry e) noexcept
{
    return (e & entry::kSpecial) == 0 || entry::isKind(e, kElementsKind) || entry::isKind(e, kVariableKind);
}

}  // namespace

bool MarkedCharacter::begin(char32_t c, const Opening& opening, SortEntry alone) noexcept
{
    if ((alone & entry::kMark) != 0) {
        return opening.m_tSlots.empty() && add(c, alone);
    }
    m_cLetter = m_cLast = c;
    m_bLetter = true;
    m_nEntry = alone;
    m_pOpening = &opening;
    return !entry::isKind(alone, kSlowKind);
}

bool MarkedCharacter::add(char32_t c, SortEntry e) noexcept
{
    m_bInOrder = m_bInOrder && m_rData.m_pDecompositions->isInOrder(m_cLast, c);
    m_cLast = c;
    return putMark(c, e);
}

bool MarkedCharacter::putMark(char32_t c, SortEntry e) noexcept
{
    const int combiningClass = m_rData.m_pDecompositions->classOfWhole(c);
    if (combiningClass == 0 || !standsAlone(e) || m_nMarks == kMostMarks) {
        return false;
    }
    m_aMarks[m_nMarks++] = {c, e, combiningClass};
    return true;
}

/// The letter without its own marks, which come before the others.
bool MarkedCharacter::takeApart()
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&status);
    std::array<char16_t, 32> text{};
    const int32_t length = unorm2_getDecomposition(nfd, static_cast<UChar32>(m_cLetter), text.data(),
                                                   static_cast<int32_t>(text.size()), &status);
    throwOnFailure(status);
    if (length < 0) {
        return true;
    }
    const std::size_t behind = m_nMarks;
    int32_t i = 0;
    UChar32 c = 0;
    U16_NEXT(text, i, length, c);
    bool isKnown = beginLetter(static_cast<char32_t>(c));
    while (isKnown && i < length) {
        U16_NEXT(text, i, length, c);
        isKnown = putMark(static_cast<char32_t>(c), m_rData.m_tPages.find(static_cast<char32_t>(c)));
    }
    std::rotate(m_aMarks.begin(), m_aMarks.begin() + behind, m_aMarks.begin() + m_nMarks);
    return isKnown;
}

bool MarkedCharacter::beginLetter(char32_t c) noexcept
{
    const SortEntry e = m_rData.m_tPages.find(c);
    const bool isStart = entry::isKind(e, kStartKind);
    m_pOpening = isStart ? &m_rData.m_tOpenings[entry::index(e)] : &m_rData.careOf(c);
    m_nEntry = isStart ? m_pOpening->m_nAlone : e;
    return standsAlone(m_nEntry);
}

/// A mark stays behind those of its own class.
void MarkedCharacter::order() noexcept
{
    const auto begin = m_aMarks.begin();
    for (auto each = begin; each != begin + m_nMarks; ++each) {
        std::rotate(
            std::upper_bound(begin, each, *each, [](const Mark& a, const Mark& b) { return a.m_nClass < b.m_nClass; }),
            each, each + 1);
    }
}

/// The first marks belong to the character as far as a sequence goes on with each. Of those behind a mark that does
/// not, each does of which no mark passed over has the class or a higher one.
bool MarkedCharacter::join()
{
    if (!m_bInOrder && m_rData.m_tRules.isNormalizing()) {
        if (m_bLetter && !takeApart()) {
            return false;
        }
        order();
    }
    int passedClass = 0;
    for (std::size_t i = 0; i < m_nMarks; ++i) {
        const Mark mark = m_aMarks[i];
        bool isJoined = false;
        if ((m_nPassed == 0 || passedClass < mark.m_nClass) && !joinMark(mark, isJoined)) {
            return false;
        }
        if (!isJoined) {
            m_aMarks[m_nPassed++] = mark;
            passedClass = mark.m_nClass;
        }
    }
    m_nMarks = m_nPassed;
    return true;
}

/// False where the sequence up to the mark is but the beginning of a longer one.
bool MarkedCharacter::joinMark(const Mark& mark, bool& isJoined) noexcept
{
    const SortEntry* both = m_pOpening == nullptr ? nullptr : m_pOpening->find(mark.m_cCode);
    if (both == nullptr) {
        return true;
    }
    isJoined = true;
    m_pOpening = entry::isKind(*both, kStartKind) ? &m_rData.m_tOpenings[entry::index(*both)] : nullptr;
    m_nEntry = m_pOpening == nullptr ? *both : m_pOpening->m_nAlone;
    return !entry::isKind(m_nEntry, kSlowKind);
}

}  // namespace vel::nls
