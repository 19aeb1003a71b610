#include "namecorpora.h"

#include <unicode/ucal.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>
#include <unicode/uldnames.h>
#include <unicode/uloc.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <random>
#include <string>

namespace testsupport {

namespace {

constexpr std::size_t kName = 200;

using Texts = std::vector<std::u16string>;

void add(Texts& texts, const char16_t* name, int32_t length, UErrorCode status)
{
    // A name that ICU does not have is its code.
    if (U_SUCCESS(status) && length > 0) {
        texts.emplace_back(name, static_cast<std::size_t>(length));
    }
}

void addDisplayNames(Texts& texts, const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    ULocaleDisplayNames* names = uldn_open(locale, ULDN_STANDARD_NAMES, &status);
    char16_t name[kName];
    for (const char* const* code = uloc_getISOLanguages(); *code != nullptr; ++code) {
        status = U_ZERO_ERROR;
        add(texts, name, uldn_languageDisplayName(names, *code, name, kName, &status), status);
    }
    for (const char* const* code = uloc_getISOCountries(); *code != nullptr; ++code) {
        status = U_ZERO_ERROR;
        add(texts, name, uldn_regionDisplayName(names, *code, name, kName, &status), status);
    }
    for (int32_t script = 0; script <= u_getIntPropertyMaxValue(UCHAR_SCRIPT); ++script) {
        status = U_ZERO_ERROR;
        add(texts, name, uldn_scriptCodeDisplayName(names, static_cast<UScriptCode>(script), name, kName, &status),
            status);
    }
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) {
        status = U_ZERO_ERROR;
        add(texts, name, uldn_localeDisplayName(names, uloc_getAvailable(i), name, kName, &status), status);
    }
    uldn_close(names);
}

void addCurrencies(Texts& texts, const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    UEnumeration* codes = ucurr_openISOCurrencies(UCURR_ALL, &status);
    while (const char16_t* code = uenum_unext(codes, nullptr, &status)) {
        UErrorCode nameStatus = U_ZERO_ERROR;
        UBool isChoice = 0;
        int32_t length = 0;
        const char16_t* name = ucurr_getName(code, locale, UCURR_LONG_NAME, &isChoice, &length, &nameStatus);
        add(texts, name, length, nameStatus);
    }
    uenum_close(codes);
}

void addZones(Texts& texts, const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    UEnumeration* zones = ucal_openTimeZoneIDEnumeration(UCAL_ZONE_TYPE_CANONICAL, nullptr, nullptr, &status);
    int32_t idLength = 0;
    while (const char16_t* id = uenum_unext(zones, &idLength, &status)) {
        UErrorCode nameStatus = U_ZERO_ERROR;
        UCalendar* calendar = ucal_open(id, idLength, locale, UCAL_GREGORIAN, &nameStatus);
        char16_t name[kName];
        const int32_t length = ucal_getTimeZoneDisplayName(calendar, UCAL_STANDARD, locale, name, kName, &nameStatus);
        add(texts, name, length, nameStatus);
        ucal_close(calendar);
    }
    uenum_close(zones);
}

Texts namesIn(const char* locale)
{
    Texts texts;
    addDisplayNames(texts, locale);
    addCurrencies(texts, locale);
    addZones(texts, locale);
    shuffleTexts(texts);
    return texts;
}

bool isAscii(const std::u16string& text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

}  // namespace

void shuffleTexts(std::vector<std::u16string>& texts)
{
    std::sort(texts.begin(), texts.end());
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    std::shuffle(texts.begin(), texts.end(), std::mt19937(5));
}

std::vector<SortCorpus> nameCorpora()
{
    std::vector<SortCorpus> corpora{{"ASCII", "en", {}}};
    Texts mixed;
    for (const char* tag : {"en", "de", "sv", "fr-CA", "ru", "ar", "th", "ja", "ko", "zh"}) {
        Texts texts = namesIn(std::string(tag) == "fr-CA" ? "fr_CA" : tag);
        mixed.insert(mixed.end(), texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(texts.size() / 10));
        corpora.push_back({tag, tag, std::move(texts)});
    }
    std::copy_if(corpora[1].m_tTexts.begin(), corpora[1].m_tTexts.end(), std::back_inserter(corpora[0].m_tTexts),
                 isAscii);
    shuffleTexts(mixed);
    corpora.push_back({"mixed", "und", std::move(mixed)});
    return corpora;
}

}  // namespace testsupport
