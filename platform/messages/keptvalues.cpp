#include "vel/messages/keptvalues.h"

#include <memory>
#include <new>

namespace vel {

void KeptValues::keep(const Key& key, const GDVariant& value) noexcept
{
    Place* const all = key.m_nOwner == 0 ? nullptr : places();
    if (all == nullptr) {
        return;
    }
    Place& place = all[key.m_nOwner % kPlaces];
    std::uint64_t free = 0;
    if (place.m_nOwner.compare_exchange_strong(free, kBeingFilled, std::memory_order_relaxed)) {
        place.m_nState = key.m_nState;
        place.m_tValue = value;
        place.m_nOwner.store(key.m_nOwner, std::memory_order_release);
    }
}

/// Of several threads that come first together, one provides the places. Null when memory runs out.
KeptValues::Place* KeptValues::places() noexcept
{
    Place* known = m_pPlaces.load(std::memory_order_acquire);
    if (known != nullptr) {
        return known;
    }
    std::unique_ptr<Place[]> fresh(new (std::nothrow) Place[kPlaces]);
    if (fresh && m_pPlaces.compare_exchange_strong(known, fresh.get(), std::memory_order_acq_rel)) {
        return fresh.release();
    }
    return known;
}

void KeptValues::clear() noexcept
{
    delete[] m_pPlaces.exchange(nullptr, std::memory_order_acq_rel);
}

}  // namespace vel
