#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "vel/core/api.h"
#include "vel/messages/gdvariant.h"

namespace vel {

/// Values that were made of a table's messages, such as captions, kept so that who asks again need not make them again.
///
/// Nothing is replaced: a value that is found stays until the table goes, and to find one takes no lock. There are
/// kPlaces places, and an owner's stamp says which is its; of owners with one place the first to come has it, and the
/// others' values are not kept. So owners that are to have their values kept take their stamps one after the other, and
/// objects that come and go take none.
///
/// Threads: find() and keep() from any thread at any time; clear() and destruction while no other thread uses it.
class WEBI18N_API KeptValues
{
public:
    static constexpr std::size_t kPlaces = 1024;

    struct Key
    {
        std::uint64_t m_nOwner;  ///< a newStamp(), or 0: for that owner nothing is kept
        std::uint64_t m_nState;  ///< the stamp of what the value depends on beside its owner and the table
    };

    KeptValues() noexcept = default;
    KeptValues(const KeptValues&) = delete;
    KeptValues& operator=(const KeptValues&) = delete;
    ~KeptValues() { clear(); }

    /// The value that was kept under this key, or null. Valid until clear().
    const GDVariant* find(const Key& key) const noexcept
    {
        const Place* const places = m_pPlaces.load(std::memory_order_acquire);
        if (places == nullptr || key.m_nOwner == 0) {
            return nullptr;
        }
        const Place& place = places[key.m_nOwner % kPlaces];
        const bool isIts = place.m_nOwner.load(std::memory_order_acquire) == key.m_nOwner;
        return isIts && place.m_nState == key.m_nState ? &place.m_tValue : nullptr;
    }

    /// Keeps a value, unless its place is taken or memory runs out.
    void keep(const Key& key, const GDVariant& value) noexcept;

    /// Forgets all values and gives their memory back.
    void clear() noexcept;

private:
    /// Free with owner 0. Filled once, by the thread that takes it.
    struct Place
    {
        std::atomic<std::uint64_t> m_nOwner{0};
        std::uint64_t m_nState = 0;
        GDVariant m_tValue;
    };

    static constexpr std::uint64_t kBeingFilled = ~std::uint64_t{0};

    Place* places() noexcept;

    std::atomic<Place*> m_pPlaces{nullptr};  // none until the first value is kept
};

}  // namespace vel
