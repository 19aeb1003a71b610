#include "locales.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "icutext.h"

namespace datapack {
namespace {

std::string lowerCase(std::string text)
{
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return text;
}

icu::Locale withPackKeywords(icu::Locale locale)
{
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", "gregorian", status);
    locale.setKeywordValue("numbers", "latn", status);
    checkIcu(status, std::string("keywords of ") + locale.getName());
    return locale;
}

std::string likelyScript(const std::string& language)
{
    return withLikelySubtags(icu::Locale(language.c_str())).getScript();
}

// The script stands in a name only where it is not the likely one for that language and region.
std::string scriptInName(const PackLocale& locale)
{
    const icu::Locale likely = withLikelySubtags(icu::Locale(locale.language.c_str(), locale.region.c_str()));
    return likely.getScript() == locale.script ? std::string() : locale.script;
}

PackLocale describe(const icu::Locale& source)
{
    PackLocale locale{};
    const icu::Locale full = withLikelySubtags(source);
    locale.icu = withPackKeywords(source);
    locale.language = source.getLanguage();
    locale.script = full.getScript();
    locale.region = source.getCountry();
    const std::string script = scriptInName(locale);
    const std::string scriptTag = script.empty() ? script : "-" + script;
    locale.name = lowerCase(locale.language + scriptTag + "-" + locale.region);
    locale.messageKey = "kmsgLocaleName_" + locale.language + script + locale.region;
    locale.display =
        icu::Locale((locale.language + (script.empty() ? script : "_" + script)).c_str(), locale.region.c_str());
    const bool isUsualScript = locale.script == likelyScript(locale.language);
    locale.uiLanguage = isUsualScript ? locale.language : locale.language + "-" + locale.script;
    return locale;
}

// A language whose likely region ICU has no locale for is led by the first of its names.
std::string mainName(const std::vector<PackLocale>& sorted, const std::string& language, const std::string& script)
{
    const std::string region = withLikelySubtags(icu::Locale((language + "_" + script).c_str())).getCountry();
    std::string first;
    for (const PackLocale& locale : sorted) {
        if (locale.language != language || locale.script != script) {
            continue;
        }
        if (locale.region == region) {
            return locale.name;
        }
        if (first.empty()) {
            first = locale.name;
        }
    }
    return first;
}

std::string leadingScript(const std::vector<PackLocale>& sorted, const std::string& language)
{
    std::string likely = likelyScript(language);
    std::string first;
    for (const PackLocale& locale : sorted) {
        if (locale.language == language) {
            if (locale.script == likely) {
                return likely;
            }
            if (first.empty()) {
                first = locale.script;
            }
        }
    }
    return first;
}

void setBases(std::vector<PackLocale>& sorted)
{
    for (PackLocale& locale : sorted) {
        const std::string scriptMain = mainName(sorted, locale.language, locale.script);
        const std::string languageMain = mainName(sorted, locale.language, leadingScript(sorted, locale.language));
        locale.isScriptMain = locale.name == scriptMain;
        if (!locale.isScriptMain) {
            locale.base = scriptMain;
        } else if (locale.name != languageMain) {
            locale.base = languageMain;
        }
    }
}

void orderByBase(std::vector<PackLocale>& locales)
{
    std::map<std::string, std::string> leading;
    for (const PackLocale& locale : locales) {
        if (leading.count(locale.language) == 0) {
            leading[locale.language] = leadingScript(locales, locale.language);
        }
    }
    const auto key = [&leading](const PackLocale& locale) {
        const bool isOtherScript = locale.script != leading[locale.language];
        return std::make_tuple(locale.language, isOtherScript, locale.script, !locale.isScriptMain, locale.name);
    };
    std::sort(locales.begin(), locales.end(),
              [&key](const PackLocale& left, const PackLocale& right) { return key(left) < key(right); });
}

}  // namespace

icu::Locale withLikelySubtags(const icu::Locale& locale)
{
    icu::Locale full(locale);
    UErrorCode status = U_ZERO_ERROR;
    full.addLikelySubtags(status);
    return U_SUCCESS(status) ? full : locale;
}

std::vector<PackLocale> packLocales()
{
    std::vector<PackLocale> locales;
    std::set<std::string> languagesWithScripts;
    int32_t count = 0;
    const icu::Locale* available = icu::Locale::getAvailableLocales(count);
    for (int32_t index = 0; index < count; ++index) {
        const icu::Locale& source = available[index];
        if (*source.getCountry() == '\0' || *source.getVariant() != '\0') {
            continue;
        }
        locales.push_back(describe(source));
        if (*source.getScript() != '\0') {
            languagesWithScripts.insert(source.getLanguage());
        }
    }
    std::sort(locales.begin(), locales.end(),
              [](const PackLocale& left, const PackLocale& right) { return left.name < right.name; });
    for (PackLocale& locale : locales) {
        locale.hasLanguageScripts = languagesWithScripts.count(locale.language) != 0;
    }
    setBases(locales);
    orderByBase(locales);
    return locales;
}

}  // namespace datapack
