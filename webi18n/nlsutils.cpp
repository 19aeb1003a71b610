#include "webi18n/nlsutils.h"

#include <string_view>

#include "vel/core/uppercase.h"

namespace vel {

namespace {

/// Without a hyphen neither output is assigned.
void splitLangLocaleString(std::wstring_view tag, std::wstring_view& language, std::wstring_view& country)
{
    const std::size_t hyphen = tag.find(L'-');
    if (hyphen == std::wstring_view::npos) {
        return;
    }
    language = tag.substr(0, hyphen);
    country = tag.substr(hyphen + 1);
}

JavaLocale makeJavaLocale(std::wstring_view language, std::wstring_view country)
{
    return {String(language), toUpperCase(country), String()};
}

}  // namespace

String JavaLocale::toString() const
{
    String text = m_sLanguage;
    if (!m_sCountry.isEmpty() || !m_sVariant.isEmpty()) {
        text += L'_';
    }
    text += m_sCountry;
    if (!m_sVariant.isEmpty()) {
        text += L'_';
        text += m_sVariant;
    }
    return text;
}

JavaLocale NLSUtils::localeToJavaLocale(const Locale& rLocale)
{
    std::wstring_view language;
    std::wstring_view country;
    splitLangLocaleString(rLocale.definitionName(), language, country);
    return makeJavaLocale(language, country);
}

JavaLocale NLSUtils::languageLocaleToJavaLocale(const KWWUILanguage& rLanguage, const Locale& rLocale)
{
    const std::wstring_view tag = rLanguage.GetTag();
    std::wstring_view language;
    std::wstring_view country;
    splitLangLocaleString(rLocale.definitionName(), language, country);
    if (tag.find(L'-') != std::wstring_view::npos) {
        splitLangLocaleString(tag, language, country);
        return makeJavaLocale(language, country);
    }
    const std::wstring_view prefix = tag.substr(0, 2);
    return makeJavaLocale(compareNoCase(language, prefix) == 0 ? language : prefix, country);
}

}  // namespace vel
