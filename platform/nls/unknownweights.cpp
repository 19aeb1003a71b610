#include "unknownweights.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <string>

#include "sortcontexts.h"
#include "sortelements.h"

namespace vel::nls {

namespace {

constexpr char32_t kSamples[] = {0x0378, 0xE000, 0xF8FF, 0x3FFFD, 0x50000, 0xF0000, 0x10FFFD};

bool isComputed(UCollationElements* elements, char32_t c)
{
    const std::u16string text = utf16Of(std::u32string_view(&c, 1));
    UErrorCode status = U_ZERO_ERROR;
    ucol_setText(elements, text.data(), static_cast<int32_t>(text.size()), &status);
    throwOnFailure(status);
    ElementReader reader(elements);
    RawElement element;
    const bool isEqual = reader.next(element) && element.m_nPrimary == UnknownWeights::primaryOf(c) &&
                         element.m_nSecondary == kCommonWeight && element.m_nTertiary == kCommonWeight;
    return isEqual && !reader.next(element);
}

}  // namespace

UnknownWeights::UnknownWeights(const UCollator* collator)
{
    UErrorCode status = U_ZERO_ERROR;
    const ElementsPtr elements(ucol_openElements(collator, u"", 0, &status));
    throwOnFailure(status);
    m_bComputed = std::all_of(std::begin(kSamples), std::end(kSamples),
                              [&](char32_t c) { return isComputed(elements.get(), c); });
}

bool UnknownWeights::isUnknown(char32_t c) const noexcept
{
    if (!m_bComputed) {
        return false;
    }
    const int type = u_charType(static_cast<UChar32>(c));
    return type == U_UNASSIGNED || type == U_PRIVATE_USE_CHAR;
}

}  // namespace vel::nls
