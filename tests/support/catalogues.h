#pragma once

#include <string>
#include <vector>

#include "locales.h"
#include "temporaryfolder.h"
#include "vel/config/configreader.h"
#include "webi18n/localetaglookup.h"

// Catalogues filled from XML text.
namespace testsupport {

/// A configuration of the two keys that choose the allowed locales.
inline vel::Handle<vel::MemoryConfigReader> allowing(const vel::String& names, const vel::String& listsFile = L"")
{
    const vel::Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    config->set(L"Localization/AllowedLocales", names);
    config->set(L"Localization/AllowedLocalesFile", listsFile);
    return config;
}

/// A catalogue and a folder for the files it loads.
class Catalogue
{
public:
    vel::LocaleTagLookup& lookup() const { return *m_hLookup; }
    vel::Handle<const vel::LocaleTagLookup> handle() const { return m_hLookup; }
    const TemporaryFolder& folder() const { return m_tFolder; }

    vel::String write(const std::string& xml, const std::string& name = "definitions.xml") const
    {
        return m_tFolder.write(name, xml).toString();
    }
    /// Loads a file of these definitions and allows what the comma-separated names say.
    void load(const std::string& definitions, const vel::String& allowed) const
    {
        m_hLookup->loadLocaleDefinitions(*allowing(allowed), write(definitionsFile(definitions)));
    }
    void allow(const vel::String& names) const { m_hLookup->loadConfig(*allowing(names), vel::kConfigReload); }

    /// The allowed locale of that name; an invalid one when there is none.
    vel::Locale find(const vel::String& name) const
    {
        vel::Locale locale;
        m_hLookup->findLocaleByDefinitionName(name, locale);
        return locale;
    }
    /// The definition names of the allowed locales, in the catalogue's order.
    std::vector<vel::String> allowedNames() const
    {
        std::vector<vel::Locale> locales;
        m_hLookup->getSupportedLocales(locales);
        std::vector<vel::String> names;
        for (const vel::Locale& each : locales) {
            names.push_back(each.definitionName());
        }
        return names;
    }

private:
    TemporaryFolder m_tFolder;
    vel::Handle<vel::LocaleTagLookup> m_hLookup = vel::makeHandle<vel::LocaleTagLookup>();
};

}  // namespace testsupport
