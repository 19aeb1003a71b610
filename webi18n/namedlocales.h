#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "webi18n/localetaglookup.h"

namespace vel::i18n_details {

/// Locales by definition name, without regard to case: in order for listing them, hashed for finding one. A name keeps
/// the spelling of its first insertion. Filled by one thread, then only read.
class NamedLocales
{
public:
    NamedLocales();

    /// Equal for names that differ in case only. Worth keeping beside a name that is looked up for every request.
    static std::uint32_t hashOf(std::wstring_view name) noexcept;

    /// The locale of that name, or null. Valid until the next change.
    const Locale* find(std::wstring_view name) const noexcept { return find(name, hashOf(name)); }
    const Locale* find(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        const LocaleMap::value_type* const entry = m_vSlots[placeOf(name, hash)].m_pEntry;
        return entry == nullptr ? nullptr : &entry->second;
    }

    /// Adds the locale or replaces that of an equal name. When it throws (memory), nothing has changed.
    void set(std::wstring_view name, const Locale& locale);

    const LocaleMap& inOrder() const noexcept { return m_tInOrder; }
    void swap(NamedLocales& other) noexcept
    {
        m_tInOrder.swap(other.m_tInOrder);
        m_vSlots.swap(other.m_vSlots);
    }

private:
    /// A place of the open-addressed table, whose size is a power of two and which is never full.
    struct Slot
    {
        LocaleMap::value_type* m_pEntry = nullptr;
        std::uint32_t m_nHash = 0;
    };

    std::size_t placeOf(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        std::size_t place = hash & (m_vSlots.size() - 1);
        while (m_vSlots[place].m_pEntry != nullptr && !isNamed(m_vSlots[place], name, hash)) {
            place = (place + 1) & (m_vSlots.size() - 1);
        }
        return place;
    }
    static bool isNamed(const Slot& slot, std::wstring_view name, std::uint32_t hash) noexcept
    {
        return slot.m_nHash == hash && compareNoCase(slot.m_pEntry->first.view(), name) == 0;
    }
    void grow();

    LocaleMap m_tInOrder;
    std::vector<Slot> m_vSlots;
};

}  // namespace vel::i18n_details
