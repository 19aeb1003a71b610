// currencies.xml: the currencies of ISO 4217, and a local one for every locale.

#include <gtest/gtest.h>
#include <unicode/ucurr.h>
#include <unicode/uenum.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "isocurrencies.h"
#include "packfiles.h"
#include "textrows.h"

namespace shipped {
namespace {

using Texts = std::map<std::string, std::string>;

std::map<std::string, Element> currenciesOf(const std::string& type)
{
    std::map<std::string, Element> result;
    for (const Element& currency : currencies()) {
        if (currency.attribute("type") == type) {
            EXPECT_TRUE(result.emplace(currency.attribute("tag"), currency).second) << currency.attribute("tag");
        }
    }
    EXPECT_FALSE(result.empty()) << type;
    return result;
}

void addIcuCodes(uint32_t kind, std::set<std::string>& codes)
{
    UErrorCode status = U_ZERO_ERROR;
    UEnumeration* list = ucurr_openISOCurrencies(kind, &status);
    while (const char* code = uenum_next(list, nullptr, &status)) {
        codes.insert(code);
    }
    uenum_close(list);
    EXPECT_TRUE(U_SUCCESS(status));
}

std::set<std::string> icuCodes()
{
    std::set<std::string> codes;
    addIcuCodes(UCURR_COMMON | UCURR_NON_DEPRECATED, codes);
    addIcuCodes(UCURR_UNCOMMON | UCURR_NON_DEPRECATED, codes);
    return codes;
}

std::string icuDigits(const std::string& code)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(code);
    return std::to_string(ucurr_getDefaultFractionDigits(text.getTerminatedBuffer(), &status));
}

size_t countOf(const std::string& text, char character)
{
    return static_cast<size_t>(std::count(text.begin(), text.end(), character));
}

// The picture of positive amounts, the loader's default where none is written.
std::string formatOf(const Element& currency)
{
    const std::string format = currency.attribute("format");
    if (!format.empty()) {
        return format;
    }
    return currency.attribute("type") == "local" ? "$#" : "# $";
}

bool isSymbolFirst(const std::string& picture)
{
    return picture.find('$') < picture.find('#');
}

TEST(InternationalCurrencies, areThoseOfIso)
{
    std::set<std::string> tags;
    for (const auto& [tag, currency] : currenciesOf("international")) {
        tags.insert(tag);
        EXPECT_EQ(currency.attribute("symbol"), tag);
        EXPECT_EQ(formatOf(currency), "# $") << tag;
        EXPECT_EQ(currency.attribute("locale"), "") << tag;
    }
    EXPECT_EQ(tags, isoCodes());
}

TEST(InternationalCurrencies, haveIsosDigits)
{
    Texts digits;
    for (const auto& [tag, currency] : currenciesOf("international")) {
        digits[tag] = currency.attribute("digits").empty() ? "-" : currency.attribute("digits");
    }
    EXPECT_EQ(digits, isoDigits());
}

TEST(InternationalCurrencies, differFromIcusForTheReasonsListed)
{
    const Texts iso = isoDigits();
    const std::set<std::string> icu = icuCodes();
    std::set<std::string> found;
    for (const std::string& code : icu) {
        const auto digits = iso.find(code);
        if (digits == iso.end()) {
            found.insert(code + " current no");
        } else if (digits->second != icuDigits(code)) {
            found.insert(code + " " + icuDigits(code) + " " + digits->second);
        }
    }
    for (const auto& [code, digits] : iso) {
        if (icu.count(code) == 0) {
            found.insert(code + " no current");
        }
    }
    std::set<std::string> listed;
    for (const testsupport::TextRow& row :
         testsupport::readRows(std::string(WEBI18N_SOURCE_DIR) + "/currencydifferences.txt", 4)) {
        EXPECT_FALSE(row.field(3).empty()) << row.m_sPlace;
        listed.insert(row.field(0) + " " + row.field(1) + " " + row.field(2));
    }
    EXPECT_EQ(found, listed);
}

TEST(InternationalCurrencies, areOfferedWhereTheyAreEverydayMoney)
{
    const std::map<std::string, Element> all = currenciesOf("international");
    for (const char* code : {"AUD", "BRL", "CHF", "CNY", "EUR", "INR", "JPY", "USD", "XAF", "ZAR"}) {
        EXPECT_EQ(all.at(code).attributes.count("display"), 0u) << code;
    }
    for (const char* code : {"BOV", "CHE", "CLF", "MXV", "SVC", "USN", "XAU", "XDR", "XTS", "XXX", "ZWL"}) {
        EXPECT_EQ(all.at(code).attribute("display"), "false") << code;
    }
}

TEST(InternationalCurrencies, haveNameAndCaptionInEveryLanguage)
{
    size_t languages = 0;
    for (const auto& entry : std::filesystem::directory_iterator(packFile("messages"))) {
        const std::string language = entry.path().filename().string();
        Texts messages;
        for (const Element& message : readXml(packFile("messages/" + language + "/i18nmessages.xml")).children) {
            messages[message.attribute("key")] = message.text;
        }
        ++languages;
        for (const auto& [tag, currency] : currenciesOf("international")) {
            EXPECT_EQ(currency.attribute("displayName"), "kmsgCurrencyName_" + tag);
            EXPECT_EQ(currency.attribute("displayMessage"), "kmsgCurrencyCaption_" + tag);
            const std::string name = messages[currency.attribute("displayName")];
            EXPECT_FALSE(name.empty()) << language << " " << tag;
            EXPECT_NE(name, tag) << language;
            EXPECT_EQ(messages[currency.attribute("displayMessage")], name + " (" + tag + ")") << language;
        }
    }
    EXPECT_GE(languages, 25u);
}

TEST(LocalCurrencies, areOnePerLocale)
{
    std::set<std::string> locales;
    for (const auto& [tag, currency] : currenciesOf("local")) {
        EXPECT_EQ(tag, "loc:" + currency.attribute("locale"));
        EXPECT_EQ(loadedLocales().count(currency.attribute("locale")), 1u) << tag;
        locales.insert(currency.attribute("locale"));
    }
    EXPECT_EQ(locales.size(), loadedLocales().size());
    EXPECT_EQ(currencies().size(), loadedLocales().size() + isoCodes().size());
}

TEST(LocalCurrencies, haveTheirLocalesSymbolAndDigits)
{
    size_t withoutCountry = 0;
    for (const auto& [tag, currency] : currenciesOf("local")) {
        const Loaded& locale = loadedLocales().at(currency.attribute("locale"));
        const bool hasCountry = !locale.scalar("primaryCurrencySymbol").empty();
        withoutCountry += hasCountry ? 0 : 1;
        EXPECT_EQ(currency.attribute("symbol"), hasCountry ? locale.scalar("primaryCurrencySymbol") : "\u00A4") << tag;
        EXPECT_EQ(currency.attribute("digits"), locale.scalar("currencyDigits")) << tag;
        EXPECT_EQ(currency.attribute("display"), hasCountry ? "" : "false") << tag;
        // Without keys of their own they are captioned by symbol and locale.
        EXPECT_EQ(currency.attribute("displayMessage") + currency.attribute("displayName"), "") << tag;
    }
    EXPECT_LT(withoutCountry, 12u);
}

TEST(Currencies, haveOneSymbolAndOneNumberInEveryPicture)
{
    for (const Element& currency : currencies()) {
        std::vector<std::string> pictures = {formatOf(currency)};
        for (const Element& negative : currency.children) {
            EXPECT_EQ(negative.name, "negative");
            EXPECT_NE(negative.attribute("format"), pictures.front()) << currency.attribute("tag");
            pictures.push_back(negative.attribute("format"));
        }
        for (const std::string& picture : pictures) {
            EXPECT_EQ(countOf(picture, '$'), 1u) << currency.attribute("tag") << " " << picture;
            EXPECT_EQ(countOf(picture, '#'), 1u) << currency.attribute("tag") << " " << picture;
            // Nothing but what a keyboard has.
            EXPECT_EQ(picture.find_first_not_of("$# -()"), std::string::npos) << currency.attribute("tag") << picture;
        }
    }
}

TEST(Currencies, nameNegativePicturesByWhatTheyLookLike)
{
    const std::map<std::string, std::regex> shapes = {{"minus", std::regex("-[^-]*")},
                                                      {"parens", std::regex("\\([^-]*\\)")},
                                                      {"trailing-minus", std::regex("[^-]*-")},
                                                      {"minus-after-symbol", std::regex("\\$ ?- ?#")},
                                                      {"minus-after-number", std::regex("# ?- ?\\$")}};
    const std::string accounting = "accounting-";
    for (const auto& [tag, currency] : currenciesOf("local")) {
        std::set<std::string> seen;
        for (const Element& negative : currency.children) {
            const std::string name = negative.attribute("tag");
            const std::string picture = negative.attribute("format");
            const bool isAccounting = name.rfind(accounting, 0) == 0;
            EXPECT_TRUE(seen.insert(name).second) << tag << " " << name;
            const auto shape = shapes.find(isAccounting ? name.substr(accounting.size()) : name);
            ASSERT_NE(shape, shapes.end()) << tag << " " << name;
            EXPECT_TRUE(std::regex_match(picture, shape->second)) << tag << " " << name << " " << picture;
            EXPECT_TRUE(isAccounting || isSymbolFirst(picture) == isSymbolFirst(formatOf(currency))) << tag;
        }
        EXPECT_TRUE(seen.size() == 1 || seen.size() == 2) << tag;
    }
}

}  // namespace
}  // namespace shipped
