#include "builtinlocale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "locales.h"
#include "logcapture.h"
#include "printers.h"

// The built-in "en-us", complete.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using vel::Locale;
using vel::String;

struct Expected
{
    Locale::StringInfo m_eInfo;
    const wchar_t* m_pText;
};

constexpr Expected kStrings[] = {
    {Locale::kDateShortFormat, L"M/d/yyyy"},
    {Locale::kDateLongFormat, L"dddd, MMMM dd, yyyy"},
    {Locale::kTimeFormat, L"h:mm:ss tt"},
    {Locale::kDateInputFormat, L"MM/dd/yyyy"},
    {Locale::kTimeInputFormat, L"hh:mm:ss tt"},
    {Locale::kAM, L"AM"},
    {Locale::kPM, L"PM"},
    {Locale::kTimeSeparator, L":"},
    {Locale::kDateSeparator, L"/"},
    {Locale::kThousandsSeparator, L","},
    {Locale::kMonetaryThousandsSeparator, L","},
    {Locale::kDecimalSeparator, L"."},
    {Locale::kMonetaryDecimalSeparator, L"."},
    {Locale::kListSeparator, L","},
    {Locale::kPrimaryCurrencySymbol, L""},
    {Locale::kNegativeNumberTemplate, L"-#"},
    {Locale::kDefaultLanguage, L"en"},
    {Locale::kLocaleMessageName, L"kmsgLocaleName_enUS"},
    {Locale::kCharactersetList, L"locale:en-us"},
    {Locale::kCollationImplementation, L"win:0409"},
    {Locale::kCollationNLS_SORT, L""},
    {Locale::kPercentFormat, L""},
    {Locale::kPercentSymbolLocation, L""},
};

TEST(BuiltInLocale, HasItsStrings)
{
    ASSERT_EQ(23U, std::size(kStrings));
    for (const Expected& each : kStrings) {
        EXPECT_EQ(String(each.m_pText), Locale::kUSA.getInfoAsString(each.m_eInfo)) << each.m_eInfo;
    }
}

TEST(BuiltInLocale, HasItsOrderClockAndWeek)
{
    EXPECT_TRUE(Locale::kUSA.isValid());
    EXPECT_EQ(String(L"en-us"), Locale::kUSA.definitionName());
    EXPECT_EQ(Locale::kMDY, Locale::kUSA.getDateOrder());
    EXPECT_FALSE(Locale::kUSA.is24Hours());
    EXPECT_EQ(6U, Locale::kUSA.getFirstDayOfWeek());
    EXPECT_TRUE(Locale::kUSA.getScaleFactors().empty());
}

std::vector<String> namesOf(Locale::NameType type, unsigned count)
{
    std::vector<String> names;
    for (unsigned i = 0; i < count; ++i) {
        names.push_back(Locale::kUSA.getNameAsString(type, i));
    }
    return names;
}

TEST(BuiltInLocale, HasItsMonths)
{
    const std::vector<String> months = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                        L"July",    L"August",   L"September", L"October", L"November", L"December"};
    EXPECT_EQ(months, namesOf(Locale::kNominitiveMonth, 12));
    EXPECT_EQ(months, namesOf(Locale::kGenetiveMonth, 12));
    EXPECT_THAT(
        namesOf(Locale::kAbbreviatedMonth, 12),
        ElementsAre(String(L"Jan"), String(L"Feb"), String(L"Mar"), String(L"Apr"), String(L"May"), String(L"Jun"),
                    String(L"Jul"), String(L"Aug"), String(L"Sep"), String(L"Oct"), String(L"Nov"), String(L"Dec")));
}

TEST(BuiltInLocale, HasItsDaysFromMonday)
{
    EXPECT_THAT(namesOf(Locale::kDay, 7),
                ElementsAre(String(L"Monday"), String(L"Tuesday"), String(L"Wednesday"), String(L"Thursday"),
                            String(L"Friday"), String(L"Saturday"), String(L"Sunday")));
    EXPECT_THAT(namesOf(Locale::kAbbreviatedDay, 7),
                ElementsAre(String(L"Mon"), String(L"Tue"), String(L"Wed"), String(L"Thu"), String(L"Fri"),
                            String(L"Sat"), String(L"Sun")));
}

const std::vector<String> kDateFormats = {L"dddd, MMMM dd, yyyy",
                                          L"MMMM dd, yyyy",
                                          L"dddd, dd MMMM, yyyy",
                                          L"dd MMMM, yyyy",
                                          L"M/d/yyyy",
                                          L"M/d/yy",
                                          L"MM/dd/yy",
                                          L"MM/dd/yyyy",
                                          L"yy/MM/dd",
                                          L"yyyy-MM-dd",
                                          L"dd-MMM-yy"};
const std::vector<String> kTimeFormats = {L"h:mm:ss tt", L"hh:mm:ss tt", L"H:mm:ss", L"HH:mm:ss"};

TEST(BuiltInLocale, HasItsFormatLists)
{
    EXPECT_EQ(kDateFormats, allNames(Locale::kUSA, Locale::kDateFormats));
    EXPECT_EQ(kTimeFormats, allNames(Locale::kUSA, Locale::kTimeFormats));
}

TEST(BuiltInLocale, HasFortyFourDateTimeFormats)
{
    const std::vector<String> both = allNames(Locale::kUSA, Locale::kDateTimeFormats);
    ASSERT_EQ(44U, both.size());
    EXPECT_EQ(String(L"dddd, MMMM dd, yyyy h:mm:ss tt"), both[0]);
    EXPECT_EQ(String(L"dddd, MMMM dd, yyyy hh:mm:ss tt"), both[1]);
    EXPECT_EQ(String(L"dddd, MMMM dd, yyyy H:mm:ss"), both[2]);
    EXPECT_EQ(String(L"dddd, MMMM dd, yyyy HH:mm:ss"), both[3]);
    EXPECT_EQ(String(L"MMMM dd, yyyy h:mm:ss tt"), both[4]);
    EXPECT_EQ(String(L"dd-MMM-yy HH:mm:ss"), both[43]);
    for (std::size_t i = 0; i < both.size(); ++i) {
        EXPECT_EQ(kDateFormats[i / 4] + L" " + kTimeFormats[i % 4], both[i]);
    }
}

TEST(BuiltInLocale, ItsDefinitionIsCleanAndGivesTheSameLocaleAgain)
{
    const LogCapture log;
    const Locale again = applied(vel::i18n_details::ksUSAXml);
    EXPECT_THAT(log.records(), testing::IsEmpty());
    for (const Expected& each : kStrings) {
        EXPECT_EQ(String(each.m_pText), again.getInfoAsString(each.m_eInfo));
    }
}

}  // namespace
