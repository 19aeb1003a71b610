#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>

#include "vel/core/nocasecompare.h"
#include "vel/core/string.h"
#include "webi18n/localetaglookup.h"

namespace cli {

/// Names without regard to case.
using NameSet = std::set<vel::String, vel::NoCaseCompareLess>;

/// What the checked files refer to, as far as it was loaded. Where something is not known, what depends on it is not
/// judged: one file that cannot be read must not make every name in the others look wrong.
struct Knowledge
{
    // Ordered, as what a file names must not be able to make a table slow.
    using TagsBySymbol = std::map<vel::String, vel::String>;

    vel::LocaleMap m_tDefinitions;                        ///< by name, with what they inherit
    bool m_bAllDefinitionsRead = true;                    ///< no definitions file was unreadable
    std::optional<NameSet> m_tAllowed;                    ///< nothing: not configured, or unreadable
    std::optional<std::set<vel::String>> m_tMessageKeys;  ///< of all languages; nothing: no messages
    TagsBySymbol m_tInternationalSymbols;                 ///< of international currencies
    std::map<vel::String, TagsBySymbol, vel::NoCaseCompareLess> m_tLocalSymbols;  ///< of local ones, by locale

    std::map<vel::String, vel::String, vel::NoCaseCompareLess> m_tCharacterSets;      ///< the converter used, by label
    std::map<vel::String, std::size_t, vel::NoCaseCompareLess> m_tCharacterSetLists;  ///< as how many entries, by name
    bool m_bAllCharacterSetsRead = true;      ///< no file of them was unreadable
    bool m_bAllCharacterSetListsRead = true;  ///< no file of them was unreadable

    bool knowsDefinitions() const noexcept { return m_bAllDefinitionsRead && !m_tDefinitions.empty(); }
    bool isDefined(std::wstring_view name) const { return m_tDefinitions.find(name) != m_tDefinitions.end(); }
    /// Whether the library takes the name as a target; what is not known is taken to be so.
    bool isUsable(std::wstring_view name) const
    {
        return m_tAllowed ? m_tAllowed->find(name) != m_tAllowed->end() : !knowsDefinitions() || isDefined(name);
    }
};

}  // namespace cli
