#pragma once

#include "namedlocales.h"
#include "vel/core/textnumbers.h"
#include "webi18n/localetaglookup.h"

namespace vel {

/// Every definition that was loaded, the allowed ones by the names under which configuration named them, and the
/// standard data formats.
class LocaleTagLookupState
{
public:
    i18n_details::NamedLocales m_tAllLocales;
    i18n_details::NamedLocales m_tSupportedLocales;
    TextNumbers m_tFormats;  // the empty text is never among them

    /// Allows the locale of that name; an unknown or empty name is skipped.
    void allow(std::wstring_view name)
    {
        if (name.empty()) {
            return;
        }
        if (const Locale* const found = m_tAllLocales.find(name); found != nullptr) {
            m_tSupportedLocales.set(name, *found);
        }
    }

    /// A copy of the base's locale; an empty one where the name is empty or not loaded before.
    Locale baseFor(std::wstring_view basedOn) const
    {
        const Locale* const found = basedOn.empty() ? nullptr : m_tAllLocales.find(basedOn);
        return found == nullptr ? Locale() : *found;
    }

    /// Takes every nameless list entry of a definition, month and day names included, deliberately.
    void addDataFormats(const XmlElement& definition);
};

}  // namespace vel
