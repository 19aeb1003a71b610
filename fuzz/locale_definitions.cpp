// A definitions file from outside: whatever its bytes, it loads or is refused, and every locale of the catalogue
// answers every question.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "../tests/support/memoryfile.h"
#include "require.h"
#include "vel/config/configreader.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlexception.h"
#include "webi18n/localetaglookup.h"

namespace {

using fuzzing::require;
using vel::Locale;
using vel::LocaleTagLookup;
using vel::String;

/// The names of the document's definitions, as a configuration that allows them all.
vel::Handle<vel::MemoryConfigReader> allowEverything(const vel::XmlDocument& document)
{
    String names;
    for (const vel::XmlElement& each : vel::children(document.root())) {
        names.append(each.attribute(L"name")).append(L",");
    }
    const vel::Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    config->set(L"Localization/AllowedLocales", names);
    return config;
}

void checkStrings(const Locale& locale)
{
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        static_cast<void>(locale.getInfoAsString(static_cast<Locale::StringInfo>(info)));
    }
    // Derived input formats always hold their fields.
    const String date = locale.getInfoAsString(Locale::kDateInputFormat);
    require(date.find(L"yyyy") != String::kNotFound && date.find(L"MM") != String::kNotFound);
    require(locale.getInfoAsString(Locale::kTimeInputFormat).startsWith(locale.is24Hours() ? L"HH" : L"hh"));
    require(locale.getDateOrder() < Locale::kDateOrderEnd_);
    require(locale.getFirstDayOfWeek() <= 6);
    // A monetary separator is never empty where the plain one is not.
    require(locale.getInfoAsString(Locale::kDecimalSeparator).isEmpty() ||
            !locale.getInfoAsString(Locale::kMonetaryDecimalSeparator).isEmpty());
    require(locale.getInfoAsString(Locale::kThousandsSeparator).isEmpty() ||
            !locale.getInfoAsString(Locale::kMonetaryThousandsSeparator).isEmpty());
}

void checkNames(const Locale& locale, const LocaleTagLookup& lookup)
{
    for (unsigned type = 0; type <= Locale::kNameTypeEnd_ + 1U; ++type) {
        for (unsigned index = 0; index < 14; ++index) {
            const String name = locale.getNameAsString(static_cast<Locale::NameType>(type), index);
            require(!name.isEmpty() || index > 6 || type > Locale::kAbbreviatedDay);
        }
    }
    std::vector<String> dates;
    std::vector<String> times;
    std::vector<String> both;
    locale.getAllNames(Locale::kDateFormats, dates);
    locale.getAllNames(Locale::kTimeFormats, times);
    // A product of large lists would only measure memory.
    if (dates.size() * times.size() < 10000) {
        locale.getAllNames(Locale::kDateTimeFormats, both);
        require(!both.empty() || dates.empty() || times.empty());
    }
    for (const auto& [name, value] : locale.getScaleFactors()) {
        require(!value.isEmpty());
    }
    require(lookup.isValidDataFormat(L"[MMMM]"));
}

void checkOverrides(const Locale& locale)
{
    const String before = locale.getInfoAsString(Locale::kDateInputFormat);
    const std::size_t shares = locale.shareCount();
    Locale mine = locale;
    mine.setOverridingDateInputFormat(L"~", Locale::kYMD);
    mine.setOverridingTimeInputFormat(L"~", Locale::kIs24HR);
    require(mine.getInfoAsString(Locale::kDateInputFormat) == L"yyyy~MM~dd");
    require(mine.getInfoAsString(Locale::kTimeInputFormat) == L"HH~mm~ss");
    mine.clearOverridingDateInputFormat();
    require(mine.getInfoAsString(Locale::kDateInputFormat) == before);
    require(locale.shareCount() == shares && locale.getInfoAsString(Locale::kDateInputFormat) == before);
}

void checkCatalogue(const LocaleTagLookup& lookup)
{
    std::vector<Locale> locales;
    lookup.getSupportedLocales(locales);
    for (const Locale& each : locales) {
        Locale found;
        require(lookup.findLocaleByDefinitionName(each.definitionName(), found));
        checkStrings(each);
        checkNames(each, lookup);
        checkOverrides(each);
        require(!each.getLocaleMessage({}).isUndefinedOrNull());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const testsupport::MemoryFile kFile;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const String path = kFile.write(bytes);
    const vel::Handle<LocaleTagLookup> lookup = vel::makeHandle<LocaleTagLookup>();
    try {
        const vel::XmlDocument document = vel::XmlDocument::parse(bytes);
        const vel::Handle<vel::MemoryConfigReader> config = allowEverything(document);
        lookup->loadLocaleDefinitions(*config, path);
        checkCatalogue(*lookup);
        // The second time, every definition has its forward bases too.
        lookup->loadLocaleDefinitions(*config, path);
        checkCatalogue(*lookup);
    } catch (const vel::XmlException&) {
        std::vector<Locale> locales;
        lookup->getSupportedLocales(locales);
        require(locales.empty() && !lookup->isValidDataFormat(L"[MMMM]"));
    }
    return 0;
}
