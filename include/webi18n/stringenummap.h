#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "vel/core/assertion.h"
#include "vel/core/string.h"

namespace vel {

/// A fixed two-way table between the enumerators of `Enum` and their names. Built once, then only read, from any
/// thread.
template <typename Enum>
class StringEnumMap
{
public:
    struct Entry
    {
        Enum m_eValue;
        const wchar_t* m_pName;
    };

    /// Entries in any order. An enumerator that stands twice is reported and keeps its first name, though the other
    /// names lead to it too; a name that stands twice is reported and keeps its first enumerator; an entry that is
    /// repeated whole is reported as both. `sentinel` is what the lookup of an unknown name gives.
    template <std::size_t nEntries>
    StringEnumMap(const Entry (&entries)[nEntries], Enum sentinel) : m_eSentinel(sentinel)
    {
        for (const Entry& each : entries) {
            add(each.m_eValue, each.m_pName);
        }
        const std::size_t nNewSize = m_mStringKeyedMap.size();
        const auto less = [](const Named& a, const Named& b) { return isBefore(a.first, b.first); };
        const auto same = [](const Named& a, const Named& b) { return a.first == b.first; };
        std::stable_sort(m_mStringKeyedMap.begin(), m_mStringKeyedMap.end(), less);
        m_mStringKeyedMap.erase(std::unique(m_mStringKeyedMap.begin(), m_mStringKeyedMap.end(), same),
                                m_mStringKeyedMap.end());
        VEL_ASSERT(m_mStringKeyedMap.size() == nNewSize);
    }

    /// The enumerator of exactly that name, or the sentinel.
    Enum find(std::wstring_view name) const noexcept
    {
        const auto found =
            std::lower_bound(m_mStringKeyedMap.begin(), m_mStringKeyedMap.end(), name,
                             [](const Named& each, std::wstring_view key) { return isBefore(each.first, key); });
        return found == m_mStringKeyedMap.end() || found->first != name ? m_eSentinel : found->second;
    }

    /// The name of an enumerator, or an empty string that lives as long as the process.
    const String& find(Enum value) const noexcept
    {
        static const String kEmpty;
        const auto found = m_mEnumKeyedMap.find(value);
        return found == m_mEnumKeyedMap.end() ? kEmpty : found->second;
    }

    std::size_t size() const noexcept { return m_mStringKeyedMap.size(); }

private:
    using Named = std::pair<String, Enum>;

    /// By length first: it tells most names apart without a look at their characters.
    static bool isBefore(std::wstring_view a, std::wstring_view b) noexcept
    {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    }

    void add(Enum eEnumValue, const wchar_t* name)
    {
        VEL_ASSERT(m_mEnumKeyedMap.find(eEnumValue) == m_mEnumKeyedMap.end());
        m_mEnumKeyedMap.emplace(eEnumValue, name);
        m_mStringKeyedMap.emplace_back(name, eEnumValue);
    }

    std::vector<Named> m_mStringKeyedMap;  // sorted by length and name
    std::unordered_map<Enum, String> m_mEnumKeyedMap;
    Enum m_eSentinel;
};

}  // namespace vel
