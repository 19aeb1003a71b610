#include "currencies.h"

#include <unicode/ucurr.h>

#include <algorithm>
#include <string_view>

#include "currencypictures.h"
#include "icutext.h"
#include "owncurrency.h"
#include "xmlwriter.h"

namespace datapack {
namespace {

// What the loader takes for a local currency without a format.
constexpr std::string_view ksDefaultFormat = "$#";

// ICU's code of no currency: amounts in it are written with the sign of any currency.
constexpr const char* ksNoCurrency = "XXX";
constexpr const char* ksAnySign = "\u00A4";

struct LocalCurrency
{
    const PackLocale* locale;
    OwnCurrency own;
    int claim;  // how strong its claim to the symbol is
};

// The country that a code is named after: USD is that of US. The euro's largest country stands for the union.
std::string homeRegion(const std::string& code)
{
    const std::string region = code.substr(0, 2);
    return region == "EU" ? "DE" : region;
}

bool isHome(const PackLocale& locale, const std::string& code)
{
    if (locale.region != homeRegion(code)) {
        return false;
    }
    const icu::Locale likely = withLikelySubtags(icu::Locale("und", locale.region.c_str()));
    return locale.language == likely.getLanguage() && locale.script == likely.getScript();
}

// In English every symbol stands for one currency: "$" for USD, where CAD is "CA$".
bool isBestKnown(const OwnCurrency& own)
{
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    icu::UnicodeString code = icu::UnicodeString::fromUTF8(own.code);
    const char16_t* symbol =
        ucurr_getName(code.getTerminatedBuffer(), "en", UCURR_SYMBOL_NAME, nullptr, &length, &status);
    checkIcu(status, "English symbol of " + own.code);
    return toUtf8(icu::UnicodeString(symbol, length)) == own.symbol;
}

LocalCurrency describe(const PackLocale& locale)
{
    const OwnCurrency own = ownCurrency(locale);
    if (own.code.empty()) {
        return {&locale, {ksNoCurrency, ksAnySign, own.digits}, 0};
    }
    return {&locale, own, (isBestKnown(own) ? 2 : 0) + (isHome(locale, own.code) ? 1 : 0)};
}

std::vector<LocalCurrency> localCurrencies(const std::vector<PackLocale>& locales)
{
    std::vector<LocalCurrency> currencies;
    currencies.reserve(locales.size());
    for (const PackLocale& locale : locales) {
        currencies.push_back(describe(locale));
    }
    std::stable_sort(currencies.begin(), currencies.end(),
                     [](const LocalCurrency& left, const LocalCurrency& right) { return left.claim < right.claim; });
    return currencies;
}

void writeLocal(XmlWriter& writer, const LocalCurrency& currency)
{
    const std::string tag = "loc:" + currency.locale->name;
    const std::string digits = std::to_string(currency.own.digits);
    const CurrencyPictures pictures = currencyPictures(*currency.locale, currency.own.code);
    Attributes attributes = {{"tag", tag}, {"type", "local"}, {"symbol", currency.own.symbol}, {"digits", digits}};
    if (pictures.positive != ksDefaultFormat) {
        attributes.emplace_back("format", pictures.positive);
    }
    attributes.emplace_back("locale", currency.locale->name);
    if (currency.own.code == ksNoCurrency) {
        attributes.emplace_back("display", "false");
    }
    writer.open("Currency", attributes);
    for (const NegativePicture& negative : pictures.negatives) {
        writer.leaf("negative", {{"tag", negative.tag}, {"format", negative.picture}}, "");
    }
    writer.close();
}

void writeInternational(XmlWriter& writer, const InternationalCurrency& currency)
{
    const std::string digits = currency.digits ? std::to_string(*currency.digits) : std::string();
    const std::string captionKey = currency.captionKey();
    const std::string nameKey = currency.nameKey();
    Attributes attributes = {{"tag", currency.code}, {"type", "international"}, {"symbol", currency.code}};
    if (currency.digits) {
        attributes.emplace_back("digits", digits);
    }
    attributes.emplace_back("displayMessage", captionKey);
    attributes.emplace_back("displayName", nameKey);
    if (!currency.isOffered) {
        attributes.emplace_back("display", "false");
    }
    writer.leaf("Currency", attributes, "");
}

}  // namespace

std::string currencyFile(const std::vector<PackLocale>& locales, const std::vector<InternationalCurrency>& currencies)
{
    XmlWriter writer;
    writer.open("Currencies");
    for (const LocalCurrency& currency : localCurrencies(locales)) {
        writeLocal(writer, currency);
    }
    for (const InternationalCurrency& currency : currencies) {
        writeInternational(writer, currency);
    }
    writer.close();
    return writer.text();
}

}  // namespace datapack
