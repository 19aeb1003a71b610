#include "farideographs.h"

#include <unicode/uchar.h>

#include <string>

#include "sharedplaces.h"
#include "sortcontexts.h"
#include "sortelements.h"

namespace vel::nls {

std::shared_ptr<const FarIdeographs> FarIdeographs::shared()
{
    static constinit SharedPlaces<FarIdeographs> places;
    return places.findOrAdd("far")->get(
        [](std::shared_ptr<void> place) { return std::make_shared<const FarIdeographs>(std::move(place)); });
}

std::uint32_t FarIdeographs::primaryOf(char32_t c) const
{
    if (c < kFirst || c > kLast) {
        return 0;
    }
    std::call_once(m_tOnce, [this] { read(); });
    return c - kFirst < m_tPrimaries.size() ? m_tPrimaries[c - kFirst] : 0;
}

/// The elements of all of them in one go. Each has one, of common weights but for the primary one; should that not be
/// so, none is held.
void FarIdeographs::read() const
{
    std::u32string characters;
    for (char32_t c = kFirst; c <= kLast; ++c) {
        if (u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_UNIFIED_IDEOGRAPH) != 0) {
            characters += c;
        }
    }
    const std::u16string text = utf16Of(characters);
    UErrorCode status = U_ZERO_ERROR;
    const CollatorPtr root(ucol_open("", &status));
    throwOnFailure(status);
    const ElementsPtr elements(ucol_openElements(root.get(), text.data(), static_cast<int32_t>(text.size()), &status));
    throwOnFailure(status);
    std::vector<std::uint32_t> primaries(characters.empty() ? 0 : characters.back() - kFirst + 1);
    std::size_t count = 0;
    ElementReader reader(elements.get());
    for (RawElement element; reader.next(element); ++count) {
        if (count == characters.size() || element.m_nSecondary != kCommonWeight ||
            element.m_nTertiary != kCommonWeight) {
            return;
        }
        primaries[characters[count] - kFirst] = element.m_nPrimary;
    }
    if (count == characters.size()) {
        m_tPrimaries.swap(primaries);
    }
}

}  // namespace vel::nls
