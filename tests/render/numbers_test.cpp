#include <tuple>

#include "locales.h"
#include "printers.h"
#include "rendering.h"
#include "textrows.h"

namespace {

using rendering::decimal;
using rendering::number;
using rendering::packLocale;
using rendering::percent;
using rendering::usaWith;
using testsupport::property;
using vel::Decimal;
using vel::Locale;

TEST(RenderNumber, Rows)
{
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/numbers.rows", 6)) {
        SCOPED_TRACE(row.trace());
        const Locale locale = row.field(0) == "usa" ? Locale::kUSA : packLocale(row.field(0));
        const int digits = row.field(2) == "-" ? -1 : std::stoi(row.field(2));
        EXPECT_EQ(number(decimal(row.field(1)), locale, digits), row.field(3));
        EXPECT_EQ(percent(decimal(row.field(1)), locale, digits), row.field(4));
    }
}

TEST(RenderNumber, WithoutGrouping)
{
    EXPECT_EQ(number(decimal("-1234567.5"), Locale::kUSA, 2, false), "-1234567.50");
}

TEST(RenderNumber, ByNegativeTemplates)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {{"(#)", "(1,234.5)", "(123,450%)"},
                                                                      {"#-", "1,234.5-", "123,450%-"},
                                                                      {"", "-1,234.5", "-123,450%"},
                                                                      {"minus ", "minus 1,234.5", "minus 123,450%"},
                                                                      {"#", "1,234.5", "123,450%"},
                                                                      {"-##", "-1,234.5#", "-123,450%#"},
                                                                      {"'#'", "'1,234.5'", "'123,450%'"},
                                                                      {"\xE2\x88\x92#",
                                                                       "\xE2\x88\x92"
                                                                       "1,234.5",
                                                                       "\xE2\x88\x92"
                                                                       "123,450%"}};
    for (const auto& [picture, asNumber, asPercent] : rows) {
        const Locale locale = usaWith(property("negativeNumberTemplate", picture));
        EXPECT_EQ(number(decimal("-1234.5"), locale), asNumber) << picture;
        EXPECT_EQ(percent(decimal("-1234.5"), locale), asPercent) << picture;
        EXPECT_EQ(number(decimal("1234.5"), locale), "1,234.5") << picture;
    }
}

TEST(RenderNumber, ByPercentFormats)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"", "", "25%"},     {"", "before", "%25"},  {"", "BEFORE", "%25"},       {"", "after", "25%"},
        {"", "else", "25%"}, {"%", "before", "%25"}, {" pct", "after", "25 pct"}, {"# %", "before", "25 %"},
        {"%#%", "", "%25%"}, {"##", "", "25#"}};
    for (const auto& [format, location, expected] : rows) {
        const Locale locale = usaWith(property("percentFormat", format) + property("percentSymbolLocation", location));
        EXPECT_EQ(percent(decimal("0.25"), locale), expected) << format << " " << location;
    }
}

TEST(RenderNumber, BySeparatorsOfAnyLength)
{
    const Locale none = testsupport::localeOf("");
    EXPECT_EQ(number(decimal("-1234.5"), none), "-1234.5") << "no separators: nothing between groups, a point";
    const Locale longOnes = usaWith(property("thousandsSeparator", "&lt;&gt;") + property("decimalSeparator", "::"));
    EXPECT_EQ(number(decimal("1234567.5"), longOnes), "1<>234<>567::5");
    const std::string huge(1000, 'x');
    const Locale hugeOnes = usaWith(property("thousandsSeparator", huge) + property("decimalSeparator", huge));
    EXPECT_EQ(number(decimal("1234.5"), hugeOnes), "1" + huge + "234" + huge + "5");
}

TEST(RenderNumber, ByTheSeparatorsOfAUser)
{
    const Locale german = packLocale("de-de");
    Locale mine = german;
    mine.setOverridingDecimalSeparator(L".");
    mine.setOverridingThousandsSeparator(L"'");
    EXPECT_EQ(number(decimal("-1234567.5"), mine), "-1'234'567.5");
    EXPECT_EQ(percent(decimal("12.345"), mine), "1'234.5 %");
    EXPECT_EQ(number(decimal("-1234567.5"), german), "-1.234.567,5");
}

TEST(RenderNumber, OfDoublesAndIntegers)
{
    EXPECT_EQ(number(Decimal::ofDouble(1234567.891, 2), Locale::kUSA), "1,234,567.89");
    EXPECT_EQ(number(Decimal::ofDouble(-1e15, 0), Locale::kUSA), "-1,000,000,000,000,000");
    EXPECT_EQ(number(Decimal::ofInteger(-1234567, 2), Locale::kUSA), "-12,345.67");
    EXPECT_EQ(number(Decimal::ofInteger(INT64_MIN), Locale::kUSA), "-9,223,372,036,854,775,808");
}

TEST(RenderNumber, AppendsBehindWhatIsThere)
{
    vel::StringBuffer<8> out;
    out.append(L"= ");
    vel::RenderNumber::append(decimal("1234"), Locale::kUSA, {}, out);
    vel::RenderNumber::appendPercent(decimal("0.5"), Locale::kUSA, {}, out);
    EXPECT_EQ(out.toString(), L"= 1,23450%");
}

}  // namespace
