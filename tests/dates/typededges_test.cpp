#include <gtest/gtest.h>

#include "datestesting.h"

// The well-known corners of typed dates and times, one test each.

namespace {

using datestesting::describe;
using datestesting::makeLocale;
using datestesting::parseTyped;
using vel::Locale;
using vel::ParseDateTime;

const Locale& monthFirst()
{
    static const Locale kLocale = makeLocale({Locale::kMDY, L"AM", L"PM", L":", L"/"});
    return kLocale;
}

const Locale& dayFirst()
{
    static const Locale kLocale = makeLocale({Locale::kDMY, L"AM", L"PM", L":", L"."});
    return kLocale;
}

const Locale& yearFirst()
{
    static const Locale kLocale = makeLocale({Locale::kYMD, L"AM", L"PM", L":", L"-"});
    return kLocale;
}

std::string read(std::wstring_view text, const Locale& locale = monthFirst(),
                 unsigned expected = ParseDateTime::kTimeStamp)
{
    const datestesting::Parsed parsed = parseTyped(text, locale, expected);
    return describe(parsed.m_nFound, parsed.m_tValue);
}

TEST(TypedEdge, MonthDayYearInAMonthFirstLocale)
{
    EXPECT_EQ(parseTyped(L"12/31/2005", monthFirst(), ParseDateTime::kDate).m_nFound, ParseDateTime::kDate);
    EXPECT_EQ(read(L"12/31/2005"), "Y2005 M12 D31");
}

TEST(TypedEdge, DayAndMonthAreNeverSwapped)
{
    EXPECT_EQ(read(L"31/12/2005"), "error");
    EXPECT_EQ(read(L"31/12/2005", dayFirst()), "Y2005 M12 D31");
}

TEST(TypedEdge, ALongFirstRunMakesTheDateYearFirst)
{
    for (const Locale* locale : {&monthFirst(), &dayFirst(), &yearFirst()}) {
        EXPECT_EQ(read(L"2005-12-31", *locale), "Y2005 M12 D31");
    }
}

TEST(TypedEdge, TwoDigitYearsTurnAt63)
{
    EXPECT_EQ(read(L"5/6/07"), "Y2007 M5 D6");
    EXPECT_EQ(read(L"5/6/62"), "Y2062 M5 D6");
    EXPECT_EQ(read(L"5/6/63"), "Y1963 M5 D6");
    EXPECT_EQ(read(L"5/6/00"), "Y2000 M5 D6");
    EXPECT_EQ(read(L"5/6/99"), "Y1999 M5 D6");
}

TEST(TypedEdge, ATimeThatIsExpectedStartsAtTheHour)
{
    const datestesting::Parsed parsed = parseTyped(L"10:30", monthFirst(), ParseDateTime::kTime);
    EXPECT_EQ(parsed.m_nFound, ParseDateTime::kHourMinute);
    EXPECT_EQ(describe(parsed.m_nFound, parsed.m_tValue), "h10 m30");
}

TEST(TypedEdge, ATimeWhereADateIsExpectedIsReadAgainAsATime)
{
    const datestesting::Parsed parsed = parseTyped(L"10:30", monthFirst(), ParseDateTime::kDate);
    EXPECT_EQ(parsed.m_nFound, ParseDateTime::kHourMinute);
    EXPECT_EQ(describe(parsed.m_nFound, parsed.m_tValue), "h10 m30");
}

TEST(TypedEdge, DateTimeFractionAndMarkerAreAFullTimeStamp)
{
    const datestesting::Parsed parsed = parseTyped(L"12/31/2005 3:15:20.5 PM", monthFirst(), ParseDateTime::kTimeStamp);
    EXPECT_EQ(parsed.m_nFound, ParseDateTime::kTimeStamp);
    EXPECT_EQ(describe(parsed.m_nFound, parsed.m_tValue), "Y2005 M12 D31 h15 m15 s20 f500000000");
}

TEST(TypedEdge, MarkersAreFoundInAnyCase)
{
    EXPECT_EQ(read(L"3:15 p.m."), "h15 m15");
    EXPECT_EQ(read(L"3:15 P.m."), "h15 m15");
    EXPECT_EQ(read(L"3:15 pM"), "h15 m15");
    EXPECT_EQ(read(L"12:15 a.M."), "h0 m15");
}

TEST(TypedEdge, TwelveAMIsMidnight)
{
    EXPECT_EQ(read(L"12:00 AM"), "h0 m0");
}

TEST(TypedEdge, HourTwentyFourIsAccepted)
{
    EXPECT_EQ(read(L"24:00"), "h24 m0");
    EXPECT_EQ(read(L"25:00"), "error");
}

TEST(TypedEdge, TenFractionDigitsFail)
{
    EXPECT_EQ(read(L"12:30:45.123456789"), "h12 m30 s45 f123456789");
    EXPECT_EQ(read(L"12:30:45.1234567890"), "error");
}

TEST(TypedEdge, ASeparatorAtTheEndStartsNoFraction)
{
    EXPECT_EQ(parseTyped(L"12:30:45.", monthFirst(), ParseDateTime::kTimeStamp).m_nFound, ParseDateTime::kTime);
    EXPECT_EQ(read(L"12:30:45."), "h12 m30 s45");
    EXPECT_EQ(read(L"12:30:45,"), "h12 m30 s45");
}

TEST(TypedEdge, MonthNamesAreSkipped)
{
    EXPECT_EQ(read(L"December 2005"), "Y2005");
}

TEST(TypedEdge, ADayWithAYearAndNoMonthIsAMonth)
{
    EXPECT_EQ(parseTyped(L"12 2005", dayFirst(), ParseDateTime::kDate).m_nFound, ParseDateTime::kYearMonth);
    EXPECT_EQ(read(L"12 2005", dayFirst()), "Y2005 M12");
    EXPECT_EQ(read(L"13 2005", dayFirst()), "Y2005 D13");
    EXPECT_EQ(read(L"12", dayFirst()), "D12");
}

TEST(TypedEdge, ADateSeparatorBehindTheThirdComponentFails)
{
    EXPECT_EQ(read(L"1/2/3/4"), "error");
}

TEST(TypedEdge, NothingIsAnError)
{
    EXPECT_EQ(parseTyped(L"", monthFirst(), ParseDateTime::kTimeStamp).m_nFound, ParseDateTime::kParseError);
    EXPECT_EQ(parseTyped(L"", monthFirst(), ParseDateTime::kTimeStamp).m_tValue, vel::DateTime());
}

}  // namespace
