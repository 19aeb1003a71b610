// Java locales: whatever the interface language (before the first zero) and the definition's name, the parts are pieces
// of what was given.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "require.h"
#include "vel/core/uppercase.h"
#include "vel/xml/xmldocument.h"
#include "webi18n/nlsutils.h"
#include "widebytes.h"

namespace {

using fuzzing::require;
using vel::JavaLocale;
using vel::Locale;
using vel::String;

/// A locale with that definition name; as many characters of it as XML takes.
Locale named(std::wstring_view name)
{
    std::string xml = "<localeDefinition name=\"";
    for (const wchar_t each : name) {
        if (each >= 0x20 &&
            (each < 0xD800 || (each >= 0xE000 && each < 0xFFFE) || (each >= 0x10000 && each < 0x110000))) {
            xml += "&#" + std::to_string(static_cast<unsigned>(each)) + ";";
        }
    }
    Locale locale;
    locale.applyXmlDefinition(vel::XmlDocument::parse(xml + "\"/>").root());
    return locale;
}

/// The rules once more, in their simplest form.
JavaLocale split(std::wstring_view tag)
{
    const std::size_t hyphen = tag.find(L'-');
    return hyphen == std::wstring_view::npos
               ? JavaLocale()
               : JavaLocale{String(tag.substr(0, hyphen)), vel::toUpperCase(tag.substr(hyphen + 1)), String()};
}

void requireJoined(const JavaLocale& java)
{
    const String expected =
        java.m_sCountry.isEmpty() ? java.m_sLanguage : java.m_sLanguage + L"_" + java.m_sCountry.view();
    require(java.m_sVariant.isEmpty() && java.toString() == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = fuzzing::widen(data, size);
    const std::size_t zero = text.find(L'\0');
    const std::wstring language = text.substr(0, zero);
    const Locale locale = named(zero == std::wstring::npos ? L"" : std::wstring_view(text).substr(zero + 1));

    const JavaLocale own = vel::NLSUtils::localeToJavaLocale(locale);
    require(own == split(locale.definitionName()));
    requireJoined(own);

    const JavaLocale both = vel::NLSUtils::languageLocaleToJavaLocale(vel::KWWUILanguage(String(language)), locale);
    requireJoined(both);
    if (language.find(L'-') != std::wstring::npos) {
        require(both == split(language));
    } else {
        require(both.m_sCountry == own.m_sCountry && both.m_sLanguage.equalsNoCase(language.substr(0, 2)));
    }
    return 0;
}
