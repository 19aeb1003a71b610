#include "captionmemory.h"

#include <algorithm>

namespace vel::i18n_details {

const CaptionMemory::Place* CaptionMemory::placeOf(const Key& key) const noexcept
{
    const auto found =
        std::find_if(m_aPlaces.begin(), m_aPlaces.end(), [&](const Place& each) { return each.m_tKey == key; });
    return found == m_aPlaces.end() ? nullptr : &*found;
}

bool CaptionMemory::find(const Key& key, GDVariantBase& out) noexcept
{
    if (!enter()) {
        return false;
    }
    const Place* const place = placeOf(key);
    if (place != nullptr) {
        out = place->m_tCaption;
    }
    leave();
    return place != nullptr;
}

void CaptionMemory::keep(const Key& key, const GDVariant& caption) noexcept
{
    if (!enter()) {
        return;
    }
    if (placeOf(key) == nullptr) {
        m_aPlaces[m_nOldest] = {key, caption};
        m_nOldest = (m_nOldest + 1) % kMostCaptions;
    }
    leave();
}

}  // namespace vel::i18n_details
