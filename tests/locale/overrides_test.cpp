#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "locales.h"
#include "printers.h"

// What each of a user's overrides replaces.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

/// A locale in which every string is another.
Locale distinctLocale()
{
    std::string properties = property("24hours", "false") + property("dateOrder", "mdy");
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        const String& name = Locale::stringInfoMap().find(static_cast<Locale::StringInfo>(info));
        properties += property(vel::toUtf8Lossy(name.view()), "s" + std::to_string(info));
    }
    return localeOf(properties);
}

struct Override
{
    const char* m_pName;
    std::function<void(Locale&)> m_fSet;
    std::function<void(Locale&)> m_fClear;
    std::map<Locale::StringInfo, String> m_tReplaced;
};

const std::vector<Override>& overrides()
{
    static const std::vector<Override> kOverrides = {
        {"currency tag",
         [](Locale& locale) { locale.setOverridingCurrencyTag(L"ov"); },
         [](Locale& locale) { locale.clearOverridingCurrencyTag(); },
         {}},
        {"date format",
         [](Locale& locale) { locale.setOverridingDateFormat(L"ov"); },
         [](Locale& locale) { locale.clearOverridingDateFormat(); },
         {{Locale::kDateShortFormat, L"ov"}}},
        {"time format",
         [](Locale& locale) { locale.setOverridingTimeFormat(L"ov"); },
         [](Locale& locale) { locale.clearOverridingTimeFormat(); },
         {{Locale::kTimeFormat, L"ov"}}},
        {"decimal separator",
         [](Locale& locale) { locale.setOverridingDecimalSeparator(L"ov"); },
         [](Locale& locale) { locale.clearOverridingDecimalSeparator(); },
         {{Locale::kDecimalSeparator, L"ov"}, {Locale::kMonetaryDecimalSeparator, L"ov"}}},
        {"thousands separator",
         [](Locale& locale) { locale.setOverridingThousandsSeparator(L"ov"); },
         [](Locale& locale) { locale.clearOverridingThousandsSeparator(); },
         {{Locale::kThousandsSeparator, L"ov"}, {Locale::kMonetaryThousandsSeparator, L"ov"}}},
        {"date separator and order",
         [](Locale& locale) { locale.setOverridingDateInputFormat(L"ov", Locale::kYMD); },
         [](Locale& locale) { locale.clearOverridingDateInputFormat(); },
         {{Locale::kDateSeparator, L"ov"}, {Locale::kDateInputFormat, L"yyyyovMMovdd"}}},
        {"date order",
         [](Locale& locale) { locale.setOverridingDateInputFormat(L"", Locale::kDMY); },
         [](Locale& locale) { locale.clearOverridingDateInputFormat(); },
         {{Locale::kDateInputFormat, L"dds8MMs8yyyy"}}},
        {"time separator and clock",
         [](Locale& locale) { locale.setOverridingTimeInputFormat(L"ov", Locale::kIs24HR); },
         [](Locale& locale) { locale.clearOverridingTimeInputFormat(); },
         {{Locale::kTimeSeparator, L"ov"}, {Locale::kTimeInputFormat, L"HHovmmovss"}}},
        {"clock",
         [](Locale& locale) { locale.setOverridingTimeInputFormat(L"", Locale::kIs24HR); },
         [](Locale& locale) { locale.clearOverridingTimeInputFormat(); },
         {{Locale::kTimeInputFormat, L"HHs7mms7ss"}}},
    };
    return kOverrides;
}

String storedString(unsigned info)
{
    if (info == Locale::kDateInputFormat) {
        return L"MMs8dds8yyyy";
    }
    if (info == Locale::kTimeInputFormat) {
        return L"hhs7mms7ss tt";
    }
    return vel::stringFromUtf8("s" + std::to_string(info)).value();
}

TEST(LocaleOverrides, EachReplacesItsStringsAndNoOtherUntilItIsCleared)
{
    for (const Override& each : overrides()) {
        Locale locale = distinctLocale();
        each.m_fSet(locale);
        for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
            const Locale::StringInfo read = static_cast<Locale::StringInfo>(info);
            const auto replaced = each.m_tReplaced.find(read);
            EXPECT_EQ(replaced == each.m_tReplaced.end() ? storedString(info) : replaced->second,
                      locale.getInfoAsString(read))
                << each.m_pName << ", string " << info;
        }
        each.m_fClear(locale);
        for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
            EXPECT_EQ(storedString(info), locale.getInfoAsString(static_cast<Locale::StringInfo>(info)))
                << each.m_pName << " cleared, string " << info;
        }
    }
}

TEST(LocaleOverrides, GettersReturnWhatWasSet)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingCurrencyTag(L"EUR");
    EXPECT_TRUE(locale.hasOverridingCurrencyTag());
    locale.setOverridingDateFormat(L"d");
    locale.setOverridingTimeFormat(L"t");
    locale.setOverridingDecimalSeparator(L"dec");
    locale.setOverridingThousandsSeparator(L"tho");
    locale.setOverridingDateInputFormat(L"ds", Locale::kDMY);
    locale.setOverridingTimeInputFormat(L"ts", Locale::kIs12HR);
    EXPECT_EQ(String(L"EUR"), locale.overridingCurrencyTag());
    EXPECT_EQ(String(L"d"), locale.overridingDateFormat());
    EXPECT_EQ(String(L"t"), locale.overridingTimeFormat());
    EXPECT_EQ(String(L"dec"), locale.overridingDecimalSeparator());
    EXPECT_EQ(String(L"tho"), locale.overridingThousandsSeparator());
    EXPECT_EQ(String(L"ds"), locale.overridingDateSeparator());
    EXPECT_EQ(Locale::kDMY, locale.overridingDateOrdering());
    EXPECT_EQ(String(L"ts"), locale.overridingTimeSeparator());
    EXPECT_EQ(Locale::kIs12HR, locale.overriding24Hours());
}

TEST(LocaleOverrides, SettingAnEmptyTextClears)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingCurrencyTag(L"EUR");
    locale.setOverridingCurrencyTag(L"");
    EXPECT_FALSE(locale.hasOverridingCurrencyTag());
    locale.setOverridingDateFormat(L"x");
    locale.setOverridingDateFormat(L"");
    EXPECT_EQ(String(L"M/d/yyyy"), locale.getInfoAsString(Locale::kDateShortFormat));
}

TEST(LocaleOverrides, ADateFormatLeavesTheLongFormat)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateFormat(L"yyyy");
    EXPECT_EQ(String(L"dddd, MMMM dd, yyyy"), locale.getInfoAsString(Locale::kDateLongFormat));
}

TEST(LocaleOverrides, OrderAndClockReplaceTheDefinitions)
{
    Locale locale = localeOf(property("dateOrder", "ymd") + property("24hours", "true"));
    locale.setOverridingDateInputFormat(L"", Locale::kMDY);
    EXPECT_EQ(Locale::kMDY, locale.getDateOrder());
    locale.setOverridingTimeInputFormat(L"", Locale::kIs12HR);
    EXPECT_FALSE(locale.is24Hours());
    locale.setOverridingTimeInputFormat(L"", Locale::kIs24HR);
    EXPECT_TRUE(locale.is24Hours());
    locale.clearOverridingDateInputFormat();
    locale.clearOverridingTimeInputFormat();
    EXPECT_EQ(Locale::kYMD, locale.getDateOrder());
    EXPECT_TRUE(locale.is24Hours());
}

TEST(LocaleOverrides, ADateSeparatorAloneLeavesTheOrderAndGoesWhenCleared)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateInputFormat(L"-", Locale::kDateOrderEnd_);
    EXPECT_EQ(String(L"-"), locale.getInfoAsString(Locale::kDateSeparator));
    EXPECT_EQ(String(L"MM-dd-yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(Locale::kMDY, locale.getDateOrder());
    locale.clearOverridingDateInputFormat();
    EXPECT_EQ(String(L"/"), locale.getInfoAsString(Locale::kDateSeparator));
    EXPECT_EQ(String(L"MM/dd/yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
}

TEST(LocaleOverrides, ATimeSeparatorAloneKeepsTheDefinitionsClock)
{
    Locale twelve = Locale::kUSA;
    twelve.setOverridingTimeInputFormat(L".", Locale::kNotDefined24HR);
    EXPECT_EQ(String(L"hh.mm.ss tt"), twelve.getInfoAsString(Locale::kTimeInputFormat));
    Locale twentyFour = localeOf(property("24hours", "true"), Locale::kUSA);
    twentyFour.setOverridingTimeInputFormat(L".", Locale::kNotDefined24HR);
    EXPECT_EQ(String(L"HH.mm.ss"), twentyFour.getInfoAsString(Locale::kTimeInputFormat));
    EXPECT_EQ(String(L"."), twentyFour.getInfoAsString(Locale::kTimeSeparator));
}

TEST(LocaleOverrides, AnOrderThatIsGivenUpDoesNotShapeTheNextFormat)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateInputFormat(L"", Locale::kYMD);
    locale.setOverridingDateInputFormat(L"-", Locale::kDateOrderEnd_);
    EXPECT_EQ(String(L"MM-dd-yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(Locale::kMDY, locale.getDateOrder());
}

TEST(LocaleOverrides, AClockThatIsGivenUpDoesNotShapeTheNextFormat)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingTimeInputFormat(L"", Locale::kIs24HR);
    locale.setOverridingTimeInputFormat(L"-", Locale::kNotDefined24HR);
    EXPECT_EQ(String(L"hh-mm-ss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
}

TEST(LocaleOverrides, TheSameSeparatorWithAnotherOrderOrClockRebuildsTheFormat)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateInputFormat(L"-", Locale::kYMD);
    locale.setOverridingDateInputFormat(L"-", Locale::kDMY);
    EXPECT_EQ(String(L"dd-MM-yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    locale.setOverridingTimeInputFormat(L".", Locale::kIs24HR);
    locale.setOverridingTimeInputFormat(L".", Locale::kIs12HR);
    EXPECT_EQ(String(L"hh.mm.ss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
}

// A definition is applied to a locale that carries a user's overrides: what it derives is its own, and shows when they
// are cleared.
TEST(LocaleOverrides, ADefinitionsInputFormatsAreBuiltOfItsOwnSeparatorsAndClock)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateInputFormat(L"~", Locale::kDateOrderEnd_);
    locale.setOverridingTimeInputFormat(L"^", Locale::kIs24HR);
    locale = localeOf(property("dateSeparator", "-") + property("timeSeparator", "."), locale);
    EXPECT_EQ(String(L"MM~dd~yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"HH^mm^ss"), locale.getInfoAsString(Locale::kTimeInputFormat));
    locale.clearOverridingDateInputFormat();
    locale.clearOverridingTimeInputFormat();
    EXPECT_EQ(String(L"MM-dd-yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"hh.mm.ss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
}

// Hosts cast stored numbers: an order above the end is kept as it came, and counts as none.
TEST(LocaleOverrides, AnOrderAboveTheEndLeavesTheDefinitions)
{
    for (const unsigned number : {4U, 5U, 255U, 4294967295U}) {
        const Locale::DateOrder order = static_cast<Locale::DateOrder>(number);
        Locale locale = localeOf(property("dateOrder", "dmy") + property("dateSeparator", "."));
        locale.setOverridingDateInputFormat(L"", order);
        EXPECT_EQ(order, locale.overridingDateOrdering());
        EXPECT_EQ(Locale::kDMY, locale.getDateOrder());
        EXPECT_EQ(String(L"dd.MM.yyyy"), locale.getInfoAsString(Locale::kDateInputFormat)) << "nothing can be built";
        EXPECT_EQ(String(L"dd-MM-yyyy"),
                  localeOf(property("dateSeparator", "-"), locale).getInfoAsString(Locale::kDateInputFormat));
    }
}

TEST(LocaleOverrides, GetInfoAppends)
{
    vel::StringBuffer<8> out;
    out.append(L"<");
    Locale::kUSA.getInfo(Locale::kDateLongFormat, out);
    out.append(L">");
    Locale::kUSA.getInfo(Locale::kPercentFormat, out);
    EXPECT_EQ(String(L"<dddd, MMMM dd, yyyy>"), out.toString());
}

}  // namespace
