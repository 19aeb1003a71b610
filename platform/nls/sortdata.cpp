#include "sortdata.h"

#include <algorithm>

namespace vel::nls {

namespace {

CollatorPtr tertiaryClone(const UCollator* collator)
{
    CollatorPtr clone = cloneCollator(collator);
    ucol_setStrength(clone.get(), UCOL_TERTIARY);
    return clone;
}

}  // namespace

SortData::SortData(const UCollator* collator)
    : m_tRules(collator),
      m_pCollator(tertiaryClone(collator)),
      m_tPool(m_pCollator.get()),
      m_tUnknown(m_pCollator.get()),
      m_tNumbers(m_pCollator.get())
{}

const Opening& SortData::careOf(char32_t c) const noexcept
{
    const auto found = std::lower_bound(m_tCare.begin(), m_tCare.end(), std::pair(c, std::uint32_t{0}));
    return found != m_tCare.end() && found->first == c ? m_tOpenings[found->second] : m_tOnlyOrder;
}

CodedElement SortData::encode(const Element& element) const
{
    CodedElement coded;
    if (element.m_nPrimary != 0) {
        coded.m_tPrimary = m_tPrimaries->codeOf(element.m_nPrimary);
    }
    coded.m_bSecondary = element.m_nSecondary != 0;
    if (coded.m_bSecondary) {
        coded.m_tSecondary = m_tSecondaries->codeOf(element.m_nSecondary);
    }
    coded.m_bTertiary = element.m_nTertiary != 0;
    if (coded.m_bTertiary) {
        coded.m_tTertiary = m_tTertiaries->codeOf(element.m_nTertiary);
    }
    coded.m_bVariable = element.m_bVariable;
    coded.m_bMerge = element.m_nPrimary == kMergeSeparator;
    coded.m_nQuaternary = element.m_nQuaternary;
    return coded;
}

std::size_t SortData::memory() const noexcept
{
    std::size_t total = sizeof *this + m_tPages.memory() + m_tPrimaries->memory() + m_tSecondaries->memory() +
                        m_tTertiaries->memory() + m_tElements.capacity() * sizeof(CodedElement) +
                        m_tLists.capacity() * sizeof(ElementList) + m_tOpenings.capacity() * sizeof(Opening) +
                        m_tCare.capacity() * sizeof m_tCare[0];
    for (const Opening& opening : m_tOpenings) {
        total += opening.m_tSlots.capacity() * sizeof(Opening::Slot);
    }
    return total;
}

}  // namespace vel::nls
