#include <algorithm>

#include "locales.h"
#include "memoryfile.h"
#include "printers.h"
#include "rendering.h"
#include "webi18n/currencylookup.h"

namespace {

using rendering::decimal;
using rendering::packLocale;
using testsupport::property;
using vel::Currency;
using vel::Handle;
using vel::Locale;
using vel::RenderNumber;
using vel::String;

/// A currency as a currencies file has it.
Handle<const Currency> currency(const std::string& attributes, const std::string& children = "")
{
    const testsupport::MemoryFile file;
    const vel::CurrencyLookup lookup(
        file.write("<Currencies><Currency tag=\"T\" " + attributes + ">" + children + "</Currency></Currencies>"));
    return lookup.getCurrencyList().at(0);
}

std::string amount(const char* number, const Currency& currency, const Locale& locale = Locale::kUSA, int digits = -1)
{
    vel::StringBuffer<63> out;
    RenderNumber::appendAmount(decimal(number), currency, locale, {digits, true}, out);
    return vel::toUtf8Lossy(out.view());
}

std::string amountBy(const wchar_t* tag, const char* number, const Currency& currency)
{
    vel::StringBuffer<63> out;
    RenderNumber::appendAmount(decimal(number), currency, tag, Locale::kUSA, {}, out);
    return vel::toUtf8Lossy(out.view());
}

TEST(RenderAmount, ByDefaultPictures)
{
    const Handle<const Currency> dollar = currency("type=\"local\" symbol=\"$\" digits=\"2\"");
    EXPECT_EQ(amount("1234.5", *dollar), "$1,234.50");
    EXPECT_EQ(amount("-1234.5", *dollar), "-$1,234.50");
    EXPECT_EQ(amount("1234.5", *dollar, Locale::kUSA, 0), "$1,234");
    EXPECT_EQ(amount("-0.004", *dollar), "$0.00") << "nothing but zeros is shown: not negative";
    EXPECT_EQ(amount("-0.005", *dollar), "$0.00") << "from the middle to the even digit";
    EXPECT_EQ(amount("-0.006", *dollar), "-$0.01");
    EXPECT_EQ(amount("nan", *dollar), "$NaN");
    EXPECT_EQ(amount("-inf", *dollar), "-$∞");
    const Handle<const Currency> euro = currency("type=\"international\" symbol=\"EUR\" digits=\"2\"");
    EXPECT_EQ(amount("1234.5", *euro, packLocale("de-de")), "1.234,50 EUR");
    EXPECT_EQ(amount("-1234.5", *euro, packLocale("fr-ca")), "-1 234,50 EUR");
    const Handle<const Currency> yen = currency("type=\"local\" symbol=\"¥\" digits=\"0\"");
    EXPECT_EQ(amount("1234.5", *yen, packLocale("ja-jp")), "¥1,234");
}

TEST(RenderAmount, ByChosenNegativePictures)
{
    const Handle<const Currency> dollar = currency("type=\"local\" symbol=\"$\" digits=\"2\"");
    EXPECT_EQ(amountBy(L"parens", "-1234.5", *dollar), "($1,234.50)");
    EXPECT_EQ(amountBy(L"minus", "-1234.5", *dollar), "-$1,234.50");
    EXPECT_EQ(amountBy(L"parens", "1234.5", *dollar), "$1,234.50");
    EXPECT_EQ(amountBy(L"PARENS", "-1", *dollar), "-$1.00") << "tags are case-sensitive: the preferred one";
    EXPECT_EQ(amountBy(L"", "-1", *dollar), "-$1.00");

    const Handle<const Currency> red =
        currency("type=\"local\" symbol=\"Kr\" digits=\"1\" format=\"# $\"", "<negative tag=\"red\" format=\"$ #-\"/>");
    EXPECT_EQ(amount("-5", *red), "Kr 5.0-") << "the first that is declared is preferred";
    EXPECT_EQ(amountBy(L"parens", "-5", *red), "(5.0 Kr)");
    EXPECT_EQ(amountBy(L"none", "-5", *red), "Kr 5.0-");
}

TEST(RenderAmount, ByAnyPicture)
{
    const std::pair<const char*, const char*> rows[] = {
        {"#", "5"},      {"$", "Kr5"},          {"x", "x5"},      {"# $ $ #", "5 Kr $ #"},
        {"$#$", "Kr5$"}, {"[$]{#}", "[Kr]{5}"}, {"#'$'", "5'Kr'"}};
    for (const auto& [picture, expected] : rows) {
        const Handle<const Currency> each =
            currency("type=\"local\" symbol=\"Kr\" digits=\"0\" format=\"" + std::string(picture) + "\"");
        EXPECT_EQ(amount("5", *each), expected) << picture;
    }
}

/// What a symbol says is text.
TEST(RenderAmount, SymbolsAreNotPictures)
{
    EXPECT_EQ(amount("5", *currency("type=\"local\" symbol=\"#$\" digits=\"0\"")), "#$5");
    EXPECT_EQ(amount("5", *currency("type=\"international\" symbol=\"\" digits=\"0\"")), "5 ");
}

TEST(RenderAmount, DigitsAndGroupsOfTheCurrency)
{
    EXPECT_EQ(amount("1234.567", *currency("type=\"local\" symbol=\"$\"")), "$1,234.567") << "no digits: the number's";
    EXPECT_EQ(amount("1234.567", *currency("type=\"local\" symbol=\"$\" digits=\"3\"")), "$1,234.567");
    EXPECT_EQ(amount("1", *currency("type=\"local\" symbol=\"$\" digits=\"1000000\"")), "$1." + std::string(64, '0'));
    EXPECT_EQ(amount("1.5", *currency("type=\"local\" symbol=\"$\" digits=\"-7\"")), "$1.5");
    EXPECT_EQ(amount("1234", *currency("type=\"local\" symbol=\"$\" digits=\"0\" thousandsSeparator=\"false\"")),
              "$1234");
}

TEST(RenderAmount, SeparatorsAreTheMonetaryOnes)
{
    const Handle<const Currency> dollar = currency("type=\"local\" symbol=\"$\" digits=\"2\"");
    Locale locale =
        rendering::usaWith(property("monetaryThousandsSeparator", "'") + property("monetaryDecimalSeparator", ":"));
    EXPECT_EQ(amount("-1234.5", *dollar, locale), "-$1'234:50");
    EXPECT_EQ(rendering::number(decimal("1234.5"), locale), "1,234.5");
    locale.setOverridingDecimalSeparator(L";");
    locale.setOverridingThousandsSeparator(L"_");
    EXPECT_EQ(amount("-1234.5", *dollar, locale), "-$1_234;50");
}

std::string replaced(std::string text, const std::string& mark, const std::string& by)
{
    const std::size_t place = text.find(mark);
    return place == std::string::npos ? text : text.replace(place, mark.size(), by);
}

/// Every currency of the pack in every of its pictures, in two locales: the picture with number and symbol put in.
TEST(RenderAmount, OfEveryCurrencyOfThePack)
{
    const vel::CurrencyLookup lookup(vel::stringFromUtf8(WEBI18N_PACK "/currencies.xml").value());
    const auto utf8 = [](const String& text) { return vel::toUtf8Lossy(text.view()); };
    ASSERT_LT(300U, lookup.getCurrencyList().size());
    for (const Handle<const Currency>& each : lookup.getCurrencyList()) {
        const std::string places = std::string(static_cast<std::size_t>(std::max(0, each->getDefaultDigits())), '0');
        const std::pair<Locale, std::string> rows[] = {
            {packLocale("en-us"), "1,234,567" + (places.empty() ? "" : "." + places)},
            {packLocale("de-de"), "1.234.567" + (places.empty() ? "" : "," + places)}};
        for (const auto& [locale, digits] : rows) {
            const auto expected = [&, number = digits](const String& picture) {
                return replaced(replaced(utf8(picture), "#", number), "$", utf8(each->getCurrencySymbol()));
            };
            EXPECT_EQ(amount("1234567", *each, locale), expected(each->getFormat())) << utf8(each->getTag());
            for (const auto& [tag, negative] : each->getNegativeFormats()) {
                vel::StringBuffer<63> out;
                RenderNumber::appendAmount(decimal("-1234567"), *each, tag, locale, {}, out);
                EXPECT_EQ(vel::toUtf8Lossy(out.view()), expected(negative.getFormat())) << utf8(each->getTag());
            }
        }
    }
}

/// A record that no file has filled has no pictures, no digits, and wants no groups.
TEST(RenderAmount, OfAnEmptyRecord)
{
    const Handle<const Currency> empty(new Currency());
    EXPECT_EQ(amount("1234.5", *empty), "1234.5");
    EXPECT_EQ(amount("-1234.5", *empty), "-1234.5");
}

}  // namespace
