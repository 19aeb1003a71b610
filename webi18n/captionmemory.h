#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "vel/core/handle.h"
#include "vel/messages/gdvariant.h"

namespace vel::i18n_details {

/// The captions that one currency was asked for last, one for each table of messages and state of the allowed locales:
/// to make one takes several look-ups and an allocation. They are few, the oldest goes first, and they do not keep
/// their tables.
///
/// Safe from any thread. Nobody waits: who comes while another thread looks finds nothing, and makes its caption anew.
class CaptionMemory final : public RefCounted
{
public:
    static constexpr std::size_t kMostCaptions = 8;

    struct Key
    {
        std::uint64_t m_nMessages;  ///< MessageTable::version()
        std::uint64_t m_nLocales;   ///< NamedLocales::version()
        friend bool operator==(const Key&, const Key&) noexcept = default;
    };

    /// Whether there is a caption of that key, which `out` then is.
    bool find(const Key& key, GDVariantBase& out) noexcept;
    /// Keeps a caption for the next time, unless another thread is at it or has done so.
    void keep(const Key& key, const GDVariant& caption) noexcept;

private:
    struct Place
    {
        Key m_tKey{0, 0};  // versions begin with 1
        GDVariant m_tCaption;
    };

    /// Whether this thread has the places for itself; it then calls leave().
    bool enter() noexcept { return !m_bBusy.exchange(true, std::memory_order_acquire); }
    void leave() noexcept { m_bBusy.store(false, std::memory_order_release); }
    const Place* placeOf(const Key& key) const noexcept;

    std::atomic<bool> m_bBusy{false};
    std::size_t m_nOldest = 0;
    std::array<Place, kMostCaptions> m_aPlaces;
};

}  // namespace vel::i18n_details
