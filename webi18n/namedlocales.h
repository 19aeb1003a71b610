#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "vel/core/flatindex.h"
#include "webi18n/localetaglookup.h"

namespace vel::i18n_details {

/// Locales by definition name, without regard to case: in order for listing them, hashed for finding one. A name keeps
/// the spelling of its first insertion. Filled by one thread, then only read.
class NamedLocales
{
public:
    /// Equal for names that differ in case only. Worth keeping beside a name that is looked up for every request.
    static std::uint32_t hashOf(std::wstring_view name) noexcept;

    /// The locale of that name, or null. Valid until the next change.
    const Locale* find(std::wstring_view name) const noexcept { return find(name, hashOf(name)); }
    const Locale* find(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        LocaleMap::value_type* const* const found = m_tIndex.find(hash, IsNamed{name});
        return found == nullptr ? nullptr : &(*found)->second;
    }

    /// Adds the locale or replaces that of an equal name. When it throws (memory), nothing has changed.
    void set(std::wstring_view name, const Locale& locale);

    /// Names what is in it: another number after every change, which nothing else in the process has had.
    std::uint64_t version() const noexcept { return m_nVersion; }

    const LocaleMap& inOrder() const noexcept { return m_tInOrder; }
    void swap(NamedLocales& other) noexcept
    {
        m_tInOrder.swap(other.m_tInOrder);
        m_tIndex.swap(other.m_tIndex);
        std::swap(m_nVersion, other.m_nVersion);
    }

private:
    /// Whether an entry is that of a name.
    struct IsNamed
    {
        std::wstring_view m_sName;
        bool operator()(const LocaleMap::value_type* entry) const noexcept
        {
            return compareNoCase(entry->first.view(), m_sName) == 0;
        }
    };

    static std::uint64_t newVersion() noexcept;

    LocaleMap m_tInOrder;
    FlatIndex<LocaleMap::value_type*> m_tIndex;
    std::uint64_t m_nVersion = newVersion();
};

}  // namespace vel::i18n_details
