#include "sortelements.h"

#include <algorithm>

#include "threadscratch.h"

namespace vel::nls {

// ------------------------------------------------------------------------------------------------------- ElementReader

ElementReader::ElementReader(UCollationElements* elements, bool needsEnds)
    : m_pElements(elements), m_bNeedsEnds(needsEnds)
{
    readHalf();
}

void ElementReader::readHalf()
{
    UErrorCode status = U_ZERO_ERROR;
    m_nHalf = ucol_next(m_pElements, &status);
    throwOnFailure(status);
    if (m_bNeedsEnds) {
        m_nHalfEnd = ucol_getOffset(m_pElements);
    }
}

// -------------------------------------------------------------------------------------------------------- ElementRules

namespace {

bool isOn(const UCollator* collator, UColAttribute attribute, UColAttributeValue value)
{
    UErrorCode status = U_ZERO_ERROR;
    return ucol_getAttribute(collator, attribute, &status) == value;
}

bool hasReorderCodes(const UCollator* collator)
{
    UErrorCode status = U_ZERO_ERROR;
    return ucol_getReorderCodes(collator, nullptr, 0, &status) > 0;
}

}  // namespace

ElementRules::ElementRules(const UCollator* collator)
    : m_bShifted(isOn(collator, UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED)),
      m_bFrench(isOn(collator, UCOL_FRENCH_COLLATION, UCOL_ON)),
      m_bNormalizing(isOn(collator, UCOL_NORMALIZATION_MODE, UCOL_ON)),
      m_bNumeric(isOn(collator, UCOL_NUMERIC_COLLATION, UCOL_ON)),
      m_bCaseLevel(isOn(collator, UCOL_CASE_LEVEL, UCOL_ON)),
      m_bReordering(hasReorderCodes(collator)),
      m_eCaseFirst(isOn(collator, UCOL_CASE_FIRST, UCOL_UPPER_FIRST)   ? kUpper
                   : isOn(collator, UCOL_CASE_FIRST, UCOL_LOWER_FIRST) ? kLower
                                                                       : kOff)
{
    UErrorCode status = U_ZERO_ERROR;
    m_nVariableTop = ucol_getVariableTop(collator, &status);
    throwOnFailure(status);
}

void ElementRules::addLeadSample(std::uint32_t primary, unsigned char lead)
{
    m_tLeads.push_back({primary & 0xFFFF0000U, (std::uint32_t{lead} << 24) - (primary & 0xFF000000U)});
}

void ElementRules::finishLeadSamples()
{
    std::sort(m_tLeads.begin(), m_tLeads.end(),
              [](const LeadSample& left, const LeadSample& right) { return left.m_nFrom < right.m_nFrom; });
    // Scripts move as wholes: neighbours mostly have the same offset.
    m_tLeads.erase(
        std::unique(m_tLeads.begin(), m_tLeads.end(),
                    [](const LeadSample& left, const LeadSample& right) { return left.m_nOffset == right.m_nOffset; }),
        m_tLeads.end());
}

std::uint32_t ElementRules::reordered(std::uint32_t primary) const noexcept
{
    const auto next =
        std::upper_bound(m_tLeads.begin(), m_tLeads.end(), primary,
                         [](std::uint32_t value, const LeadSample& sample) { return value < sample.m_nFrom; });
    return next == m_tLeads.begin() ? primary : primary + std::prev(next)->m_nOffset;
}

/// With capitals first the bits of the case are turned around, but not those of elements that have only a tertiary
/// weight, which stay above all others.
std::uint16_t ElementRules::tertiaryByCase(const RawElement& raw) const noexcept
{
    const unsigned weight = raw.m_nTertiary & 0xFF3FU;
    if (m_eCaseFirst == kLower || weight == 0) {
        return static_cast<std::uint16_t>(weight);
    }
    if (raw.m_nSecondary == 0) {
        return static_cast<std::uint16_t>(weight + 0x4000);
    }
    const unsigned turned = weight ^ 0xC000U;
    return static_cast<std::uint16_t>(turned < 0xC500 ? turned - 0x4000 : turned);
}

// -------------------------------------------------------------------------------------------------------- quaternaries

namespace {

/// How ICU's keys write the fourth level: bytes up to here are runs of common weights, 1C..8C before a lower weight or
/// the end, 8C..FC before a higher one, 8C being the longest; then FD, FE and FF.
constexpr unsigned kRunLow = 0x1C;
constexpr unsigned kRunMiddle = 0x8C;
constexpr unsigned kRunHigh = 0xFC;

void appendQuaternaries(const unsigned char* begin, const unsigned char* end, std::vector<std::uint8_t>& out)
{
    for (; begin != end; ++begin) {
        if (*begin > kRunHigh) {
            out.push_back(static_cast<std::uint8_t>(*begin - kRunHigh));
        } else if (*begin >= kRunLow) {
            out.insert(out.end(), *begin <= kRunMiddle ? *begin - kRunLow + 1 : kRunHigh - *begin + 1, 0);
        }
    }
}

}  // namespace

std::vector<std::uint8_t> readQuaternaries(const UCollator* collator, const char16_t* text, std::size_t length)
{
    ThreadScratch key(16 * length + 64);
    const auto make = [&] {
        return static_cast<std::size_t>(ucol_getSortKey(collator, text, static_cast<int32_t>(length), key.data(),
                                                        static_cast<int32_t>(key.size())));
    };
    std::size_t size = make();
    if (size > key.size()) {
        ThreadScratch larger(size);
        key.swap(larger);
        size = make();
    }
    const unsigned char* begin = key.data();
    const unsigned char* const end = begin + size - 1;
    for (int level = 0; level < 3; ++level) {
        begin = std::find(begin, end, 1);
        begin += begin == end ? 0 : 1;
    }
    std::vector<std::uint8_t> result;
    appendQuaternaries(begin, end, result);
    return result;
}

}  // namespace vel::nls
