#include "internationalcurrencies.h"

#include <unicode/locid.h>
#include <unicode/ucurr.h>
#include <unicode/uenum.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string_view>

#include "icutext.h"

namespace datapack {
namespace {

// What ICU has as current and ISO has not: the offshore yuan never was ISO's, the others were withdrawn.
constexpr std::string_view kaNotInIso[] = {"CNH", "USS", "VEF", "XFO", "XFU"};

// What ISO still lists and ICU calls deprecated.
constexpr std::string_view kaStillInIso[] = {"SVC", "ZWL"};

// Currencies that ICU writes without the minor unit that ISO defines, since prices have outgrown it. Accounts and
// messages between systems keep it.
constexpr std::pair<std::string_view, int> kaIsoDigits[] = {
    {"AFN", 2}, {"ALL", 2}, {"IQD", 3}, {"IRR", 2}, {"KPW", 2}, {"LAK", 2}, {"LBP", 2},
    {"MGA", 2}, {"MMK", 2}, {"RSD", 2}, {"SLL", 2}, {"SOS", 2}, {"SYP", 2}, {"YER", 2},
};

// Metals, units of account and codes without an amount: ISO gives them no minor unit.
constexpr std::string_view kaWithoutDigits[] = {"XAG", "XAU", "XBA", "XBB", "XBC", "XBD", "XDR",
                                                "XPD", "XPT", "XSU", "XTS", "XUA", "XXX"};

template <typename List>
bool isListed(const List& list, std::string_view code)
{
    return std::find(std::begin(list), std::end(list), code) != std::end(list);
}

std::set<std::string> icuCodes(uint32_t kind)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UEnumeration, decltype(&uenum_close)> codes(ucurr_openISOCurrencies(kind, &status),
                                                                      &uenum_close);
    checkIcu(status, "currencies");
    std::set<std::string> result;
    while (const char* code = uenum_next(codes.get(), nullptr, &status)) {
        result.insert(code);
    }
    checkIcu(status, "currencies");
    return result;
}

std::optional<int> isoDigits(const std::string& code)
{
    if (isListed(kaWithoutDigits, code)) {
        return std::nullopt;
    }
    for (const auto& [listed, digits] : kaIsoDigits) {
        if (listed == code) {
            return digits;
        }
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(code);
    const int digits = ucurr_getDefaultFractionDigits(text.getTerminatedBuffer(), &status);
    checkIcu(status, "digits of " + code);
    return digits;
}

// The empty text where ICU has no name in that language (it answers with the code then).
std::string longName(const std::string& code, const icu::Locale& language)
{
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(code);
    const char16_t* name =
        ucurr_getName(text.getTerminatedBuffer(), language.getName(), UCURR_LONG_NAME, nullptr, &length, &status);
    checkIcu(status, "name of " + code);
    const std::string found = toUtf8(icu::UnicodeString(name, length));
    return found == code ? std::string() : found;
}

std::string nameOrEnglish(const std::string& code, const icu::Locale& language)
{
    const std::string name = longName(code, language);
    return name.empty() ? longName(code, icu::Locale::getEnglish()) : name;
}

}  // namespace

std::vector<InternationalCurrency> internationalCurrencies()
{
    const std::set<std::string> everyday = icuCodes(UCURR_COMMON | UCURR_NON_DEPRECATED);
    std::set<std::string> codes = icuCodes(UCURR_UNCOMMON | UCURR_NON_DEPRECATED);
    codes.insert(everyday.begin(), everyday.end());
    codes.insert(std::begin(kaStillInIso), std::end(kaStillInIso));
    std::vector<InternationalCurrency> currencies;
    for (const std::string& code : codes) {
        if (!isListed(kaNotInIso, code)) {
            currencies.push_back({code, isoDigits(code), everyday.count(code) != 0});
        }
    }
    return currencies;
}

std::vector<std::pair<std::string, std::string>> currencyTexts(const std::string& language,
                                                               const std::vector<InternationalCurrency>& currencies)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale = icu::Locale::forLanguageTag(language, status);
    checkIcu(status, "language " + language);
    std::vector<std::pair<std::string, std::string>> texts;
    for (const InternationalCurrency& currency : currencies) {
        const std::string name = nameOrEnglish(currency.code, locale);
        texts.emplace_back(currency.nameKey(), name.empty() ? currency.code : name);
        texts.emplace_back(currency.captionKey(), name.empty() ? currency.code : name + " (" + currency.code + ")");
    }
    return texts;
}

}  // namespace datapack
