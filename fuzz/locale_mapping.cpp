// A mapping file and a header from outside: the rules decide as the plain scan does. The input is the file, a zero byte
// and the header.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "../tests/reference/slowmapping.h"
#include "../tests/support/memoryfile.h"
#include "require.h"
#include "vel/config/configreader.h"
#include "vel/core/utf8.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlexception.h"
#include "webi18n/localemapping.h"
#include "webi18n/localetaglookup.h"

namespace {

using fuzzing::require;
using vel::Locale;
using vel::LocaleTagLookup;
using vel::String;

constexpr std::string_view kDefinitions =
    "<d><localeDefinition name=\"en-us\"/><localeDefinition name=\"fr-fr\"/><localeDefinition name=\"de-de\"/></d>";

vel::Handle<const LocaleTagLookup> makeCatalogue()
{
    const vel::Handle<LocaleTagLookup> lookup = vel::makeHandle<LocaleTagLookup>();
    const vel::Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    config->set(L"Localization/AllowedLocales", L"en-us,fr-fr");
    const testsupport::MemoryFile file;
    lookup->loadLocaleDefinitions(*config, file.write(kDefinitions));
    return lookup;
}

void checkDecision(const vel::LocaleMapping& mapping, const std::vector<slowmapping::Rule>& rules, const String& header)
{
    const auto isAllowed = [&](const std::wstring& name) {
        Locale ignored;
        return mapping.getLocaleTagLookup()->findLocaleByDefinitionName(name, ignored);
    };
    const slowmapping::Decision expected = slowmapping::decide(rules, header.view(), isAllowed);
    const vel::LocaleMappingExplanation seen = mapping.explainLocale(header, String());
    require(slowmapping::sameDecision(expected, seen, rules));
    const auto [locale, language] = mapping.mapLocale(header, String());
    require(locale.definitionName() == seen.m_tLocale.definitionName() && language == seen.m_sLanguage);
    require(locale.definitionName() != L"de-de");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const testsupport::MemoryFile kFile;
    static const vel::Handle<const LocaleTagLookup> kCatalogue = makeCatalogue();
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view file = input.substr(0, input.find('\0'));
    const std::string_view headerBytes =
        file.size() == input.size() ? std::string_view() : input.substr(file.size() + 1);
    const String header = vel::stringFromUtf8(headerBytes).value_or(L"fr-FR,fr;q=0.9");
    vel::LocaleMapping mapping(kCatalogue);
    std::vector<slowmapping::Rule> rules;
    try {
        mapping.loadMappings(kFile.write(file));
        rules = slowmapping::rulesOf(vel::XmlDocument::parse(file));
    } catch (const vel::XmlException&) {
        require(rules.empty());
    }
    checkDecision(mapping, rules, header);
    for (const slowmapping::Rule& each : rules) {
        // Texts on both sides of the pattern's border.
        if (rules.size() < 200) {
            checkDecision(mapping, rules, String(each.m_sMatches.substr(0, each.m_sMatches.find(L'*'))));
            checkDecision(mapping, rules, String(each.m_sMatches + L"x"));
        }
    }
    return 0;
}
