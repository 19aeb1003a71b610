#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assertioncapture.h"
#include "locales.h"
#include "printers.h"

// Month and day names, and whole format lists.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::IsEmpty;
using vel::Locale;
using vel::String;

const Locale& bare()
{
    static const Locale kBare = localeOf("");
    return kBare;
}

TEST(LocaleNames, DayZeroIsMondayWithAListAndSundayWithoutOne)
{
    EXPECT_EQ(String(L"Monday"), Locale::kUSA.getNameAsString(Locale::kDay, 0));
    EXPECT_EQ(String(L"Sunday"), bare().getNameAsString(Locale::kDay, 0));
    EXPECT_EQ(String(L"Saturday"), bare().getNameAsString(Locale::kDay, 6));
}

TEST(LocaleNames, IndexesPastTheListFallBackToFullEnglishNames)
{
    const Locale locale =
        localeOf(listProperty("abbrevMonthNames", {"jan", "feb", "mar"}) +
                 listProperty("abbrevDayNames", {"mo", "di"}) + listProperty("dayNames", {"Montag"}) +
                 listProperty("monthNames", {"Januar"}) + listProperty("genetiveMonthNames", {"Januars"}));
    EXPECT_EQ(String(L"mar"), locale.getNameAsString(Locale::kAbbreviatedMonth, 2));
    EXPECT_EQ(String(L"April"), locale.getNameAsString(Locale::kAbbreviatedMonth, 3));
    EXPECT_EQ(String(L"di"), locale.getNameAsString(Locale::kAbbreviatedDay, 1));
    EXPECT_EQ(String(L"Tuesday"), locale.getNameAsString(Locale::kAbbreviatedDay, 2));
    EXPECT_EQ(String(L"Montag"), locale.getNameAsString(Locale::kDay, 0));
    EXPECT_EQ(String(L"Monday"), locale.getNameAsString(Locale::kDay, 1));
    EXPECT_EQ(String(L"February"), locale.getNameAsString(Locale::kNominitiveMonth, 1));
    EXPECT_EQ(String(L"Januars"), locale.getNameAsString(Locale::kGenetiveMonth, 0));
    EXPECT_EQ(String(L"February"), locale.getNameAsString(Locale::kGenetiveMonth, 1));
}

TEST(LocaleNames, TheTwelfthOfThreeAbbreviatedMonthsIsDecember)
{
    const Locale locale = localeOf(listProperty("abbrevMonthNames", {"jan", "feb", "mar"}));
    EXPECT_EQ(String(L"December"), locale.getNameAsString(Locale::kAbbreviatedMonth, 11));
}

TEST(LocaleNames, AThirteenthMonthAndAnEighthDayAppendNothing)
{
    for (const unsigned index : {12U, 13U, 4294967295U}) {
        for (const Locale::NameType type :
             {Locale::kNominitiveMonth, Locale::kGenetiveMonth, Locale::kAbbreviatedMonth}) {
            EXPECT_TRUE(Locale::kUSA.getNameAsString(type, index).isEmpty());
            EXPECT_TRUE(bare().getNameAsString(type, index).isEmpty());
        }
    }
    for (const unsigned index : {7U, 8U, 4294967295U}) {
        EXPECT_TRUE(Locale::kUSA.getNameAsString(Locale::kDay, index).isEmpty());
        EXPECT_TRUE(bare().getNameAsString(Locale::kAbbreviatedDay, index).isEmpty());
    }
    const Locale eightDays = localeOf(listProperty("dayNames", {"1", "2", "3", "4", "5", "6", "7", "8"}));
    EXPECT_TRUE(eightDays.getNameAsString(Locale::kDay, 7).isEmpty());
}

TEST(LocaleNames, GenitiveMonthsAreTheNominativeOnesWhereThereAreNone)
{
    EXPECT_EQ(String(L"January"), Locale::kUSA.getNameAsString(Locale::kGenetiveMonth, 0));
    const Locale locale = localeOf(listProperty("monthNames", {"styczeń"}));
    EXPECT_EQ(String(L"styczeń"), locale.getNameAsString(Locale::kGenetiveMonth, 0));
}

TEST(LocaleNames, GetNameAppends)
{
    vel::StringBuffer<4> out;
    out.append(L"[");
    Locale::kUSA.getName(Locale::kDay, 2, out);
    Locale::kUSA.getName(Locale::kDay, 7, out);
    Locale::kUSA.getName(Locale::kAbbreviatedDay, 2, out);
    EXPECT_EQ(String(L"[WednesdayWed"), out.toString());
}

TEST(LocaleNames, AFormatTypeIsReportedAndReadAsAMonth)
{
    const std::string formats = listProperty("dateFormats", {"d0", "d1"}) + listProperty("timeFormats", {"t0"}) +
                                listProperty("dateTimeFormats", {"dt0"}) + listProperty("monthNames", {"m0", "m1"});
    const Locale plain = localeOf(formats);
    const Locale genitive = localeOf(formats + listProperty("genetiveMonthNames", {"g0"}));
    for (const Locale::NameType type : {Locale::kDateFormats, Locale::kTimeFormats, Locale::kDateTimeFormats}) {
        const AssertionCapture capture;
        EXPECT_EQ(String(L"m1"), plain.getNameAsString(type, 1));
        EXPECT_EQ(String(L"March"), plain.getNameAsString(type, 2));
        EXPECT_TRUE(plain.getNameAsString(type, 12).isEmpty());
        EXPECT_THAT(capture.texts(), ElementsAre("false", "false", "false"));
    }
    const AssertionCapture capture;
    EXPECT_EQ(String(L"d1"), genitive.getNameAsString(Locale::kDateFormats, 1));
    EXPECT_EQ(String(L"t0"), genitive.getNameAsString(Locale::kTimeFormats, 0));
    EXPECT_EQ(String(L"dt0"), genitive.getNameAsString(Locale::kDateTimeFormats, 0));
    EXPECT_EQ(String(L"February"), genitive.getNameAsString(Locale::kTimeFormats, 1));
}

TEST(LocaleNames, TheSentinelIsReportedAndAppendsNothing)
{
    const AssertionCapture capture;
    EXPECT_TRUE(Locale::kUSA.getNameAsString(Locale::kNameTypeEnd_, 0).isEmpty());
    EXPECT_THAT(capture.texts(), ElementsAre("Invalid locale property name."));
}

TEST(LocaleNames, ATypePastTheSentinelAppendsNothingWithoutAReport)
{
    const AssertionCapture capture;
    for (const unsigned type : {9U, 100U, 4294967295U}) {
        EXPECT_TRUE(Locale::kUSA.getNameAsString(static_cast<Locale::NameType>(type), 0).isEmpty());
    }
    EXPECT_THAT(capture.texts(), IsEmpty());
}

TEST(LocaleNames, ValidTypesReportNothing)
{
    const AssertionCapture capture;
    for (unsigned type = Locale::kNominitiveMonth; type <= Locale::kAbbreviatedDay; ++type) {
        Locale::kUSA.getNameAsString(static_cast<Locale::NameType>(type), 99);
    }
    allNames(Locale::kUSA, Locale::kDateTimeFormats);
    EXPECT_THAT(capture.texts(), IsEmpty());
}

TEST(LocaleNames, AHandlerMayThrowOutOfAReport)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    EXPECT_THROW(Locale::kUSA.getNameAsString(Locale::kDateFormats, 0), ThrownByAssertion);
    EXPECT_THROW(allNames(Locale::kUSA, Locale::kDay), ThrownByAssertion);
}

TEST(LocaleAllNames, DateAndTimeFormatsReplaceTheOutput)
{
    const Locale locale = localeOf(listProperty("dateFormats", {"d"}) + listProperty("timeFormats", {"t"}));
    std::vector<String> out = {L"old", L"older"};
    locale.getAllNames(Locale::kDateFormats, out);
    EXPECT_THAT(out, ElementsAre(String(L"d")));
    locale.getAllNames(Locale::kTimeFormats, out);
    EXPECT_THAT(out, ElementsAre(String(L"t")));
    bare().getAllNames(Locale::kTimeFormats, out);
    EXPECT_THAT(out, IsEmpty());
}

TEST(LocaleAllNames, ALocalesOwnDateTimeFormatsReplaceTheOutput)
{
    const Locale locale = localeOf(listProperty("dateFormats", {"d"}) + listProperty("timeFormats", {"t"}) +
                                   listProperty("dateTimeFormats", {"own"}));
    std::vector<String> out = {L"old"};
    locale.getAllNames(Locale::kDateTimeFormats, out);
    EXPECT_THAT(out, ElementsAre(String(L"own")));
}

TEST(LocaleAllNames, DerivedDateTimeFormatsFollowWhatTheOutputHeld)
{
    const Locale locale =
        localeOf(listProperty("dateFormats", {"d1", "d2"}) + listProperty("timeFormats", {"t1", "t2"}));
    std::vector<String> out = {L"old"};
    locale.getAllNames(Locale::kDateTimeFormats, out);
    EXPECT_THAT(out,
                ElementsAre(String(L"old"), String(L"d1 t1"), String(L"d1 t2"), String(L"d2 t1"), String(L"d2 t2")));
}

TEST(LocaleAllNames, WithoutTimeFormatsThereAreNoDateTimeFormats)
{
    EXPECT_THAT(allNames(localeOf(listProperty("dateFormats", {"d1", "d2"})), Locale::kDateTimeFormats), IsEmpty());
    EXPECT_THAT(allNames(localeOf(listProperty("timeFormats", {"t1"})), Locale::kDateTimeFormats), IsEmpty());
}

TEST(LocaleAllNames, EveryOtherTypeIsReportedAndLeavesTheOutput)
{
    for (const unsigned type : {0U, 1U, 2U, 3U, 4U, 8U, 9U, 4294967295U}) {
        const AssertionCapture capture;
        std::vector<String> out = {L"kept"};
        Locale::kUSA.getAllNames(static_cast<Locale::NameType>(type), out);
        EXPECT_THAT(out, ElementsAre(String(L"kept"))) << type;
        EXPECT_THAT(capture.texts(), ElementsAre("Invalid locale property name")) << type;
    }
}

TEST(LocaleAllNames, DayNamesAreReadOneByOneOnly)
{
    const AssertionCapture capture;
    std::vector<String> out;
    Locale::kUSA.getAllNames(Locale::kDay, out);
    EXPECT_THAT(out, IsEmpty());
}

}  // namespace
