#include "iculocales.h"

#include <stdexcept>

namespace shipped {
namespace {

std::map<std::string, icu::Locale> readLocales()
{
    std::map<std::string, icu::Locale> result;
    int32_t count = 0;
    const icu::Locale* available = icu::Locale::getAvailableLocales(count);
    for (int32_t index = 0; index < count; ++index) {
        const icu::Locale& locale = available[index];
        const bool isWanted = *locale.getCountry() != '\0' && *locale.getVariant() == '\0';
        if (isWanted && !result.emplace(maximalName(locale), locale).second) {
            throw std::runtime_error(std::string("ICU has another locale like ") + locale.getName());
        }
    }
    return result;
}

}  // namespace

std::string maximalName(icu::Locale locale)
{
    UErrorCode status = U_ZERO_ERROR;
    locale.addLikelySubtags(status);
    return locale.getName();
}

const std::map<std::string, icu::Locale>& icuLocales()
{
    static const std::map<std::string, icu::Locale> all = readLocales();
    return all;
}

icu::Locale icuLocale(const std::string& definition)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale = icuLocales().at(maximalName(icu::Locale::forLanguageTag(definition, status)));
    locale.setUnicodeKeywordValue("ca", "gregory", status);
    locale.setUnicodeKeywordValue("nu", "latn", status);
    if (U_FAILURE(status)) {
        throw std::runtime_error("no ICU locale for " + definition);
    }
    return locale;
}

std::string plainText(const icu::UnicodeString& text)
{
    icu::UnicodeString result(text);
    for (const char16_t blank : {u'\u00A0', u'\u202F', u'\u2009'}) {
        result.findAndReplace(icu::UnicodeString(blank), icu::UnicodeString(u' '));
    }
    for (const char16_t mark : {u'\u200E', u'\u200F', u'\u061C'}) {
        result.findAndReplace(icu::UnicodeString(mark), icu::UnicodeString());
    }
    result.findAndReplace(icu::UnicodeString(u'\u2212'), icu::UnicodeString(u'-'));
    std::string bytes;
    return result.toUTF8String(bytes);
}

std::string plainSeparator(const icu::UnicodeString& text)
{
    icu::UnicodeString result(text);
    result.findAndReplace(icu::UnicodeString(u'\u2019'), icu::UnicodeString(u'\''));
    result.findAndReplace(icu::UnicodeString(u'\u060C'), icu::UnicodeString(u','));
    return plainText(result);
}

}  // namespace shipped
