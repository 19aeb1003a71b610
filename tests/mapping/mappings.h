#pragma once

#include <string>
#include <vector>

#include "catalogues.h"
#include "slowmapping.h"
#include "webi18n/localemapping.h"

// Mapping files as text, and mappings loaded from them.
namespace testsupport {

inline std::string escaped(std::wstring_view text)
{
    std::string result;
    for (const char each : vel::toUtf8Lossy(text)) {
        switch (each) {
        case '<':
            result += "&lt;";
            break;
        case '&':
            result += "&amp;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result.push_back(each);
        }
    }
    return result;
}

inline std::string mappingFile(const std::string& whens)
{
    return "<localeMappings><localeMapping name=\"httpAcceptLanguage\"><choose>" + whens +
           "</choose></localeMapping></localeMappings>";
}

inline std::string whensOf(const std::vector<slowmapping::Rule>& rules)
{
    std::string whens;
    for (const slowmapping::Rule& each : rules) {
        whens += "<when matches=\"" + escaped(each.m_sMatches) + "\">";
        if (each.m_tDefinition) {
            whens += "<localeDefinition name=\"" + escaped(*each.m_tDefinition) + "\"/>";
        }
        whens += "</when>";
    }
    return whens;
}

/// A catalogue that knows en-us, fr-fr, fr-ca and de-de, and a mapping on it.
class MappingOnCatalogue
{
public:
    explicit MappingOnCatalogue(const vel::String& allowed = L"en-us,fr-fr,fr-ca,de-de")
    {
        m_tCatalogue.load(definition("en-us", property("defaultLanguage", "en")) +
                              definition("fr-fr", property("defaultLanguage", "fr")) +
                              definition("fr-ca", "", "fr-fr") + definition("de-de", property("defaultLanguage", "")),
                          allowed);
    }

    const Catalogue& catalogue() const { return m_tCatalogue; }
    vel::LocaleMapping& mapping() { return m_tMapping; }

    void load(const std::string& whens) { loadFile(mappingFile(whens)); }
    void loadFile(const std::string& xml) { m_tMapping.loadMappings(m_tCatalogue.write(xml, "mapping.xml")); }
    /// The definition name of the locale that a text is mapped to; "USA" for the default one.
    vel::String map(const vel::String& text) const
    {
        const vel::Locale locale = m_tMapping.mapLocale(text, L"x").first;
        // The built-in locale has an AM text of its own, the catalogue's en-us has not.
        return locale.getInfoAsString(vel::Locale::kAM) == L"AM" ? vel::String(L"USA") : locale.definitionName();
    }

private:
    Catalogue m_tCatalogue;
    vel::LocaleMapping m_tMapping{m_tCatalogue.handle()};
};

}  // namespace testsupport
