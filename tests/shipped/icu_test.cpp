// The pack against ICU: what the loaded definitions say is what ICU says, asked by other ways than the generator's.
// Formats are compared by what they write: dates and times rendered from the pack's tokens and names equal ICU's own.

#include <gtest/gtest.h>
#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/dcfmtsym.h>
#include <unicode/dtfmtsym.h>
#include <unicode/gregocal.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/tblcoll.h>
#include <unicode/ucurr.h>

#include <algorithm>
#include <memory>

#include "iculocales.h"
#include "packfiles.h"
#include "tokens.h"

namespace shipped {
namespace {

std::string utf8(const icu::UnicodeString& text)
{
    std::string bytes;
    return text.toUTF8String(bytes);
}

// Twelve moments: every month, every day of the week, days of one and two digits, hours of both halves of the day.
std::vector<Moment> moments()
{
    // The first of January 2025 is a Wednesday.
    const int daysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    std::vector<Moment> result;
    for (int month = 1; month <= 12; ++month) {
        const int day = month * 2 + 3;
        const int weekday = (2 + daysBefore[month - 1] + day - 1) % 7;
        result.push_back({2025, month, day, weekday, month * 2 - 1, month * 4, month * 3});
    }
    return result;
}

// The moment in ICU's pattern of a style. Eras go, short years are written whole, and the parts of the day are a.m. and
// p.m.: what the pack's token language can say.
class IcuFormat
{
public:
    IcuFormat(const std::string& name, std::unique_ptr<icu::DateFormat> format, const icu::Locale& locale)
    {
        auto* simple = dynamic_cast<icu::SimpleDateFormat*>(format.get());
        if (simple == nullptr) {
            throw std::runtime_error("no pattern for " + name);
        }
        icu::UnicodeString pattern;
        simple->toPattern(pattern);
        pattern.findAndReplace(u" G", u"");
        pattern.findAndReplace(u"yy", u"y");
        pattern.findAndReplace(u"B", u"a");
        simple->applyPattern(pattern);
        // Hawaiian short dates have Roman months; the pack promises digits.
        UErrorCode status = U_ZERO_ERROR;
        simple->adoptNumberFormat(u"M", icu::NumberFormat::createInstance(locale, status), status);
        m_pCalendar = std::make_unique<icu::GregorianCalendar>(locale, status);
        EXPECT_TRUE(U_SUCCESS(status)) << name;
        m_pFormat = std::move(format);
        m_pFormat->adoptCalendar(m_pCalendar->clone());
    }

    std::string text(const Moment& moment) const
    {
        m_pCalendar->clear();
        m_pCalendar->set(moment.year, moment.month - 1, moment.day, moment.hour, moment.minute, moment.second);
        UErrorCode status = U_ZERO_ERROR;
        const UDate date = m_pCalendar->getTime(status);
        EXPECT_TRUE(U_SUCCESS(status));
        icu::UnicodeString result;
        m_pFormat->format(date, result);
        return plainText(result);
    }

private:
    std::unique_ptr<icu::GregorianCalendar> m_pCalendar;
    std::unique_ptr<icu::DateFormat> m_pFormat;
};

std::vector<std::string> namesOf(const icu::UnicodeString* names, int32_t first, int32_t count)
{
    std::vector<std::string> result;
    for (int32_t index = first; index < first + count; ++index) {
        result.push_back(utf8(names[index]));
    }
    return result;
}

TEST(PackAgainstIcu, hasEveryLocaleOfIcu)
{
    EXPECT_EQ(loadedLocales().size(), icuLocales().size());
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        EXPECT_EQ(icuLocales().count(maximalName(icu::Locale::forLanguageTag(name, status))), 1u) << name;
    }
}

TEST(PackAgainstIcu, writesDatesAsIcuDoes)
{
    for (const auto& [name, locale] : loadedLocales()) {
        const icu::Locale icuName = icuLocale(name);
        using Format = icu::DateFormat;
        const IcuFormat full(name, std::unique_ptr<Format>(Format::createDateInstance(Format::kFull, icuName)),
                             icuName);
        const IcuFormat numeric(name, std::unique_ptr<Format>(Format::createDateInstance(Format::kShort, icuName)),
                                icuName);
        for (const Moment& moment : moments()) {
            EXPECT_EQ(render(locale.scalar("dateLongFormat"), locale, moment), full.text(moment)) << name;
            EXPECT_EQ(render(locale.scalar("dateShortFormat"), locale, moment), numeric.text(moment)) << name;
        }
    }
}

TEST(PackAgainstIcu, writesTimesAsIcuDoes)
{
    for (const auto& [name, locale] : loadedLocales()) {
        const icu::Locale icuName = icuLocale(name);
        using Format = icu::DateFormat;
        const IcuFormat medium(name, std::unique_ptr<Format>(Format::createTimeInstance(Format::kMedium, icuName)),
                               icuName);
        for (const Moment& moment : moments()) {
            EXPECT_EQ(render(locale.scalar("timeFormat"), locale, moment), medium.text(moment)) << name;
        }
    }
}

TEST(PackAgainstIcu, hasIcusMonthAndDayNames)
{
    using Symbols = icu::DateFormatSymbols;
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        const Symbols symbols(icuLocale(name), status);
        ASSERT_TRUE(U_SUCCESS(status)) << name;
        int32_t count = 0;
        EXPECT_EQ(locale.list("monthNames"),
                  namesOf(symbols.getMonths(count, Symbols::STANDALONE, Symbols::WIDE), 0, 12))
            << name;
        EXPECT_EQ(locale.list("abbrevMonthNames"),
                  namesOf(symbols.getMonths(count, Symbols::FORMAT, Symbols::ABBREVIATED), 0, 12))
            << name;
        const std::vector<std::string> inDate =
            namesOf(symbols.getMonths(count, Symbols::FORMAT, Symbols::WIDE), 0, 12);
        for (size_t month = 0; month < 12; ++month) {
            EXPECT_EQ(locale.monthInDate(month), inDate[month]) << name;
        }
        // Long dates are compared above, and they hold the day's whole name; what is left is the order of the short
        // ones.
        std::vector<std::string> days =
            namesOf(symbols.getWeekdays(count, Symbols::FORMAT, Symbols::ABBREVIATED), 1, 7);
        std::vector<std::string> alone =
            namesOf(symbols.getWeekdays(count, Symbols::STANDALONE, Symbols::ABBREVIATED), 1, 7);
        std::rotate(days.begin(), days.begin() + 1, days.end());
        std::rotate(alone.begin(), alone.begin() + 1, alone.end());
        EXPECT_TRUE(locale.list("abbrevDayNames") == days || locale.list("abbrevDayNames") == alone) << name;
    }
}

TEST(PackAgainstIcu, hasIcusNumberSymbols)
{
    using Symbols = icu::DecimalFormatSymbols;
    const std::pair<const char*, Symbols::ENumberFormatSymbol> pairs[] = {
        {"decimalSeparator", Symbols::kDecimalSeparatorSymbol},
        {"thousandsSeparator", Symbols::kGroupingSeparatorSymbol},
        {"monetaryDecimalSeparator", Symbols::kMonetarySeparatorSymbol},
        {"monetaryThousandsSeparator", Symbols::kMonetaryGroupingSeparatorSymbol},
    };
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        const Symbols symbols(icuLocale(name), status);
        ASSERT_TRUE(U_SUCCESS(status)) << name;
        for (const auto& [property, symbol] : pairs) {
            EXPECT_EQ(locale.scalar(property), plainSeparator(symbols.getConstSymbol(symbol)))
                << name << " " << property;
        }
    }
}

std::string inPicture(std::string picture, const std::string& number)
{
    return picture.replace(picture.find('#'), 1, number);
}

TEST(PackAgainstIcu, writesNegativeNumbersAndPercentAsIcuDoes)
{
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        const auto formatter = icu::number::NumberFormatter::withLocale(icuLocale(name));
        const auto negative = formatter.formatInt(-25, status).toString(status);
        const std::unique_ptr<icu::NumberFormat> percent(
            icu::NumberFormat::createPercentInstance(icuLocale(name), status));
        ASSERT_TRUE(U_SUCCESS(status)) << name;
        icu::UnicodeString text;
        percent->format(0.25, text);
        const std::string picture = locale.scalar("percentFormat");
        ASSERT_NE(picture.find('#'), std::string::npos) << name;
        EXPECT_EQ(inPicture(picture, "25"), plainText(text)) << name;
        EXPECT_EQ(locale.scalar("percentSymbolLocation"), picture[0] == '#' ? "after" : "before") << name;
        EXPECT_EQ(inPicture(locale.scalar("negativeNumberTemplate"), "25"), plainText(negative)) << name;
    }
}

TEST(PackAgainstIcu, abbreviatesLargeNumbersAsIcuDoes)
{
    size_t factors = 0;
    for (const auto& [name, locale] : loadedLocales()) {
        const auto formatter =
            icu::number::NumberFormatter::withLocale(icuLocale(name)).notation(icu::number::Notation::compactShort());
        for (const auto& [abbreviation, value] : locale.scaleFactors) {
            ++factors;
            UErrorCode status = U_ZERO_ERROR;
            // The factor's own power of ten may still be written out (es: 1000 M), so a larger multiple counts as well.
            bool isUsed = false;
            for (int64_t multiple = 1; multiple <= 100 && !isUsed; multiple *= 10) {
                const auto text = plainText(formatter.formatInt(std::stoll(value) * multiple, status).toString(status));
                isUsed = text == std::to_string(multiple) + abbreviation ||
                         text == std::to_string(multiple) + " " + abbreviation ||
                         text == abbreviation + std::to_string(multiple) ||
                         text == abbreviation + " " + std::to_string(multiple);
            }
            EXPECT_TRUE(isUsed) << name << ": " << abbreviation << " for " << value;
        }
    }
    EXPECT_GE(factors, 3 * loadedLocales().size() / 2);
}

TEST(PackAgainstIcu, hasIcusCurrencies)
{
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        char16_t code[4] = {};
        const icu::Locale icuName = icuLocale(name);
        if (ucurr_forLocale(icuName.getName(), code, 4, &status) == 0 || U_FAILURE(status)) {
            EXPECT_EQ(locale.scalar("primaryCurrencySymbol"), "") << name;
            EXPECT_EQ(locale.scalar("currencyDigits"), "2") << name;
            continue;
        }
        int32_t length = 0;
        const char16_t* symbol = ucurr_getName(code, icuName.getName(), UCURR_SYMBOL_NAME, nullptr, &length, &status);
        const std::string expected = utf8(icu::UnicodeString(symbol, length));
        // An invisible symbol (pt-cv) is replaced by the code.
        EXPECT_EQ(locale.scalar("primaryCurrencySymbol"), expected == "\u200B" ? utf8(code) : expected) << name;
        EXPECT_EQ(locale.scalar("currencyDigits"), std::to_string(ucurr_getDefaultFractionDigits(code, &status)))
            << name;
        EXPECT_TRUE(U_SUCCESS(status)) << name;
    }
}

TEST(PackAgainstIcu, hasIcusFirstDayOfWeek)
{
    const std::map<UCalendarDaysOfWeek, std::string> fromMonday = {
        {UCAL_MONDAY, "0"}, {UCAL_TUESDAY, "1"},  {UCAL_WEDNESDAY, "2"}, {UCAL_THURSDAY, "3"},
        {UCAL_FRIDAY, "4"}, {UCAL_SATURDAY, "5"}, {UCAL_SUNDAY, "6"}};
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::GregorianCalendar calendar(icuLocale(name), status);
        EXPECT_EQ(locale.scalar("firstDayOfWeek"), fromMonday.at(calendar.getFirstDayOfWeek(status))) << name;
        EXPECT_TRUE(U_SUCCESS(status)) << name;
    }
}

TEST(PackAgainstIcu, namesTheSortThatIcuUses)
{
    for (const auto& [name, locale] : loadedLocales()) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale sort = icu::Locale::forLanguageTag(locale.scalar("collationNLS_SORT"), status);
        const std::unique_ptr<icu::Collator> named(icu::Collator::createInstance(sort, status));
        const std::unique_ptr<icu::Collator> own(icu::Collator::createInstance(icuLocale(name), status));
        ASSERT_TRUE(U_SUCCESS(status)) << name;
        const auto* left = dynamic_cast<const icu::RuleBasedCollator*>(named.get());
        const auto* right = dynamic_cast<const icu::RuleBasedCollator*>(own.get());
        ASSERT_TRUE(left != nullptr && right != nullptr) << name;
        EXPECT_TRUE(left->getRules() == right->getRules()) << name;
        for (int attribute = 0; attribute < UCOL_ATTRIBUTE_COUNT; ++attribute) {
            const auto which = static_cast<UColAttribute>(attribute);
            EXPECT_EQ(left->getAttribute(which, status), right->getAttribute(which, status))
                << name << " " << attribute;
        }
    }
}

// Known from outside: how people of these places write.
TEST(PackByHand, writesWhatPeopleKnow)
{
    const auto property = [](const char* name, const char* key) { return loadedLocales().at(name).scalar(key); };
    EXPECT_EQ(property("en-us", "dateShortFormat"), "M/d/yyyy");
    EXPECT_EQ(property("en-us", "timeFormat"), "h:mm:ss tt");
    EXPECT_EQ(property("en-us", "dateLongFormat"), "dddd, MMMM d, yyyy");
    EXPECT_EQ(property("en-us", "firstDayOfWeek"), "6");
    EXPECT_EQ(property("de-de", "dateShortFormat"), "dd.MM.yyyy");
    EXPECT_EQ(property("de-de", "decimalSeparator"), ",");
    EXPECT_EQ(property("de-de", "listSeparator"), ";");
    EXPECT_EQ(property("de-ch", "thousandsSeparator"), "'");
    EXPECT_EQ(property("fr-fr", "thousandsSeparator"), " ");
    EXPECT_EQ(property("fr-ch", "decimalSeparator"), ",");
    EXPECT_EQ(property("fr-ch", "monetaryDecimalSeparator"), ".");
    EXPECT_EQ(property("de-at", "monetaryThousandsSeparator"), ".");
    EXPECT_EQ(property("sk-sk", "dateSeparator"), ". ");
    EXPECT_EQ(property("fi-fi", "dateSeparator"), ".");
    EXPECT_EQ(property("fi-fi", "timeSeparator"), ":");
    EXPECT_EQ(property("id-id", "timeSeparator"), ".");
    EXPECT_EQ(property("tr-tr", "percentFormat"), "%#");
    EXPECT_EQ(property("tr-tr", "percentSymbolLocation"), "before");
    EXPECT_EQ(property("ja-jp", "currencyDigits"), "0");
    EXPECT_EQ(property("ja-jp", "dateOrder"), "ymd");
    EXPECT_EQ(property("sv-se", "negativeNumberTemplate"), "-#");
    EXPECT_EQ(property("sv-se", "collationNLS_SORT"), "sv");
    EXPECT_EQ(property("zh-tw", "collationNLS_SORT"), "zh-u-co-stroke");
    EXPECT_EQ(property("fr-ca", "collationNLS_SORT"), "fr-CA");
    EXPECT_EQ(property("en-us", "collationNLS_SORT"), "und");
    EXPECT_EQ(property("ar-001", "primaryCurrencySymbol"), "");
}

TEST(PackByHand, namesMonthsAndDays)
{
    const Loaded& russian = loadedLocales().at("ru-ru");
    EXPECT_EQ(russian.list("monthNames").at(0), "январь");
    EXPECT_EQ(russian.list("genetiveMonthNames").at(0), "января");
    EXPECT_TRUE(loadedLocales().at("en-us").list("genetiveMonthNames").empty());
    EXPECT_EQ(loadedLocales().at("de-de").list("dayNames").front(), "Montag");
    EXPECT_EQ(loadedLocales().at("de-at").list("monthNames").front(), "Jänner");
    EXPECT_EQ(loadedLocales().at("th-th").list("monthNames").front(), "มกราคม");
    const std::vector<std::pair<std::string, std::string>> english = {
        {"K", "1000"}, {"M", "1000000"}, {"B", "1000000000"}, {"T", "1000000000000"}};
    EXPECT_EQ(loadedLocales().at("en-us").scaleFactors, english);
}

TEST(PackByHand, usesGregorianNamesAndAsciiDigitsEverywhere)
{
    const Moment moment = {2025, 3, 9, 6, 14, 5, 7};
    for (const char* name : {"fa-ir", "th-th", "ar-sa", "am-et", "ne-np"}) {
        const Loaded& locale = loadedLocales().at(name);
        const std::string date = render(locale.scalar("dateShortFormat"), locale, moment);
        EXPECT_NE(date.find("2025"), std::string::npos) << name << " " << date;
        EXPECT_EQ(date.find("2568"), std::string::npos) << name << " " << date;
    }
}

}  // namespace
}  // namespace shipped
