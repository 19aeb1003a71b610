#include "iculocales.h"

#include <map>
#include <stdexcept>

namespace shipped {
namespace {

std::string maximal(icu::Locale locale)
{
    UErrorCode status = U_ZERO_ERROR;
    locale.addLikelySubtags(status);
    return locale.getName();
}

// ICU's locales with a region and no variant, by what a definition's name and theirs have in common.
std::map<std::string, icu::Locale> localesBySubtags()
{
    std::map<std::string, icu::Locale> result;
    int32_t count = 0;
    const icu::Locale* available = icu::Locale::getAvailableLocales(count);
    for (int32_t index = 0; index < count; ++index) {
        if (*available[index].getCountry() != '\0' && *available[index].getVariant() == '\0') {
            result.emplace(maximal(available[index]), available[index]);
        }
    }
    return result;
}

}  // namespace

icu::Locale icuLocale(const std::string& definition)
{
    static const std::map<std::string, icu::Locale> locales = localesBySubtags();
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale = locales.at(maximal(icu::Locale::forLanguageTag(definition, status)));
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

}  // namespace shipped
