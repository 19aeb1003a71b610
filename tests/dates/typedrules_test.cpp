#include <gtest/gtest.h>

#include "datestesting.h"

// The rules of typed dates and times, one test each: the order tables, what follows a run, where each kind of run goes,
// and what is put right at the end.

namespace {

using datestesting::describe;
using datestesting::makeLocale;
using datestesting::parseTyped;
using vel::Locale;
using vel::ParseDateTime;

Locale localeOf(Locale::DateOrder order)
{
    return makeLocale({order, L"AM", L"PM", L":", L"/"});
}

std::string read(std::wstring_view text, const Locale& locale, unsigned expected = ParseDateTime::kTimeStamp)
{
    const datestesting::Parsed parsed = parseTyped(text, locale, expected);
    return describe(parsed.m_nFound, parsed.m_tValue);
}

std::string read(std::wstring_view text, Locale::DateOrder order = Locale::kMDY,
                 unsigned expected = ParseDateTime::kTimeStamp)
{
    return read(text, localeOf(order), expected);
}

/// The order that was used, and what was read.
std::string explain(const wchar_t* text, Locale::DateOrder order, unsigned expected = ParseDateTime::kTimeStamp)
{
    const ParseDateTime::Explanation why =
        ParseDateTime::explain(text, localeOf(order), static_cast<ParseDateTime::Fields>(expected));
    return vel::toUtf8Lossy(why.m_sDateOrder) + " " + describe(why.m_eFound, why.m_tValue);
}

// Three runs that fit every slot of a date show the order of the table, here and behind a time.
TEST(TypedOrder, General)
{
    for (const unsigned expected : {7U, 127U, 63U, 1U, 2U, 4U, 5U}) {
        EXPECT_EQ(read(L"1 2 3", Locale::kMDY, expected), "Y2003 M1 D2") << expected;
        EXPECT_EQ(read(L"1 2 3", Locale::kDMY, expected), "Y2003 M2 D1") << expected;
        EXPECT_EQ(read(L"1 2 3", Locale::kYMD, expected), "Y2001 M2 D3") << expected;
        EXPECT_EQ(read(L"1 2 3 4 5 6", Locale::kYMD, expected), "Y2001 M2 D3 h4 m5 s6") << expected;
    }
}

TEST(TypedOrder, ThatWasUsedIsTold)
{
    EXPECT_EQ(explain(L"1 2 3", Locale::kMDY), "mdy Y2003 M1 D2");
    EXPECT_EQ(explain(L"1 2 3", Locale::kDMY), "dmy Y2003 M2 D1");
    EXPECT_EQ(explain(L"1 2 3", Locale::kYMD), "ymd Y2001 M2 D3");
    EXPECT_EQ(explain(L"1 2 3", Locale::kDMY, ParseDateTime::kYearMonth), "myd Y2002 M1 D3");
    EXPECT_EQ(explain(L"1 2 3", Locale::kYMD, ParseDateTime::kYearMonth), "ymd Y2001 M2 D3");
    EXPECT_EQ(explain(L"1 2 3", Locale::kYMD, ParseDateTime::kMonthDay), "mdy Y2003 M1 D2");
}

TEST(TypedOrder, ThatWasUsedIsYearFirstWhereTheFirstNumberOfTheDateIsAYear)
{
    EXPECT_EQ(explain(L"2005-12-31", Locale::kMDY), "ymd Y2005 M12 D31");
    EXPECT_EQ(explain(L"10:30:45 2005-12-31", Locale::kMDY), "ymd Y2005 M12 D31 h10 m30 s45");
    EXPECT_EQ(explain(L"61 12 31", Locale::kDMY), "ymd Y2061 M12 D31");
    EXPECT_EQ(explain(L"32/12/31", Locale::kDMY), "ymd Y2032 M12 D31");
    EXPECT_EQ(explain(L"2005-13-31", Locale::kMDY), "ymd error") << "what failed was read so too";
}

TEST(TypedOrder, ThatWasUsedStaysWhereTheDateBeganOtherwise)
{
    EXPECT_EQ(explain(L"12/31 10:30:45 2005", Locale::kMDY), "mdy Y2005 M12 D31 h10 m30 s45");
    EXPECT_EQ(explain(L"31/12/2005", Locale::kMDY), "mdy error");
    EXPECT_EQ(explain(L"10:30", Locale::kDMY), "dmy h10 m30") << "no date";
    EXPECT_EQ(explain(L"12 2005", Locale::kDMY), "dmy Y2005 M12");
}

TEST(TypedOrder, YearMonth)
{
    for (const unsigned expected : {3U, 3U | 56U, 3U | 120U}) {
        EXPECT_EQ(read(L"1 2 3", Locale::kMDY, expected), "Y2002 M1 D3") << expected;
        EXPECT_EQ(read(L"1 2 3", Locale::kDMY, expected), "Y2002 M1 D3") << expected;
        EXPECT_EQ(read(L"1 2 3", Locale::kYMD, expected), "Y2001 M2 D3") << expected;
        EXPECT_EQ(read(L"1 2 3 4 5 6", Locale::kDMY, expected), "Y2002 M1 D3 h4 m5 s6") << expected;
    }
}

TEST(TypedOrder, MonthDay)
{
    for (const unsigned expected : {6U, 6U | 8U, 6U | 120U}) {
        EXPECT_EQ(read(L"1 2 3", Locale::kMDY, expected), "Y2003 M1 D2") << expected;
        EXPECT_EQ(read(L"1 2 3", Locale::kDMY, expected), "Y2003 M2 D1") << expected;
        EXPECT_EQ(read(L"1 2 3", Locale::kYMD, expected), "Y2003 M1 D2") << expected;
        EXPECT_EQ(read(L"1 2 3 4 5 6", Locale::kYMD, expected), "Y2003 M1 D2 h4 m5 s6") << expected;
    }
}

TEST(TypedOrder, StartsAtTheHourWithoutADate)
{
    for (const unsigned expected : {0U, 8U, 16U, 24U, 56U, 64U, 120U}) {
        EXPECT_EQ(read(L"1 2 3 4 5 6", Locale::kMDY, expected), "Y2006 M4 D5 h1 m2 s3") << expected;
    }
}

TEST(TypedOrder, BitsThatAreNoFieldsAreIgnored)
{
    EXPECT_EQ(read(L"1 2 3", Locale::kMDY, 0xFFFFFF87U), "Y2003 M1 D2");
    EXPECT_EQ(read(L"1 2 3", Locale::kMDY, 0x80000000U), "h1 m2 s3");
}

TEST(TypedSlot, WrapsBehindTheSecondsToTheFirstOfTheDate)
{
    EXPECT_EQ(read(L"10:30:00 12/31/2005"), "Y2005 M12 D31 h10 m30 s0");
    EXPECT_EQ(read(L"10:30:00 12/31/2005", Locale::kMDY, ParseDateTime::kTime), "Y2005 M12 D31 h10 m30 s0");
    EXPECT_EQ(read(L"10:30:00.25 12/31/2005"), "Y2005 M12 D31 h10 m30 s0 f250000000");
}

TEST(TypedSlot, AnUnfinishedTimeGivesWayToADate)
{
    EXPECT_EQ(read(L"10 12/31/2005", Locale::kMDY, ParseDateTime::kTime), "Y2005 M12 D31 h10");
    EXPECT_EQ(read(L"10:30 12/31/2005", Locale::kMDY, ParseDateTime::kTime), "error") << "12 is taken as the second";
    EXPECT_EQ(read(L"12/31/2005", Locale::kMDY, ParseDateTime::kTime), "Y2005 M12 D31");
}

TEST(TypedSlot, AnUnfinishedDateGivesWayToATime)
{
    EXPECT_EQ(read(L"12/31 10:30"), "M12 D31 h10 m30");
    EXPECT_EQ(read(L"12 10:30"), "M12 h10 m30");
}

TEST(TypedFollower, PunctuationIsTimeOrDateInEveryLocale)
{
    EXPECT_EQ(read(L"1:2:3"), "h1 m2 s3");
    for (const wchar_t* text : {L"1/2/3", L"1-2-3", L"1.2.3", L"1/2-3", L"1-2.3"}) {
        EXPECT_EQ(read(text), "Y2003 M1 D2");
    }
    EXPECT_EQ(read(L"1;2,3"), "Y2003 M1 D2") << "no separator of any kind";
}

TEST(TypedFollower, TheLocalesTimeSeparatorIsComparedExactly)
{
    const Locale locale = makeLocale({Locale::kMDY, L"AM", L"PM", L"h ", L"/"});
    EXPECT_EQ(read(L"1h 2h 3", locale), "h1 m2 s3");
    EXPECT_EQ(read(L"1H 2H 3", locale), "Y2003 M1 D2");
    EXPECT_EQ(read(L"1h2h3", locale), "Y2003 M1 D2");
    EXPECT_EQ(read(L"1h", locale), "M1") << "cut off at the end";
    EXPECT_EQ(read(L"1h ", locale), "h1");
}

TEST(TypedFollower, TheLocalesTimeSeparatorComesBeforeDatePunctuation)
{
    const Locale locale = makeLocale({Locale::kMDY, L"AM", L"PM", L"/", L":"});
    EXPECT_EQ(read(L"1/2/3", locale), "h1 m2 s3");
    EXPECT_EQ(read(L"1:2:3", locale), "h1 m2 s3");
    EXPECT_EQ(read(L"1.2.3", locale), "Y2003 M1 D2");
}

TEST(TypedFollower, TheLocalesDateSeparator)
{
    const Locale locale = makeLocale({Locale::kMDY, L"AM", L"PM", L":", L"of"});
    EXPECT_EQ(read(L"1of2of3", locale), "Y2003 M1 D2");
    EXPECT_EQ(read(L"1of2of3of4", locale), "error") << "a fourth component";
    EXPECT_EQ(read(L"1of32of3", locale), "error") << "32 before a date separator is a year, and 3 a second one";
    EXPECT_EQ(read(L"1of2OF3", locale), "Y2003 M1 D2") << "compared exactly, and nothing is a separator too";
    EXPECT_EQ(read(L"1of2of3OF4", locale), "Y2003 M1 D2 h4");
}

TEST(TypedFollower, AnEmptyTimeSeparatorMatchesEverywhere)
{
    const Locale locale = makeLocale({Locale::kMDY, L"AM", L"PM", L"", L"/"});
    EXPECT_EQ(read(L"1", locale), "h1");
    EXPECT_EQ(read(L"1/2/3", locale), "h1 m2 s3");
    EXPECT_EQ(read(L"1 2 3", locale), "h1 m2 s3");
    EXPECT_EQ(read(L"2005", locale), "error") << "four digits with a time separator";
    EXPECT_EQ(read(L"61", locale), "error");
    EXPECT_EQ(read(L"1 2 2005", locale), "error") << "the second has four digits";
}

TEST(TypedFollower, AnEmptyDateSeparatorMatchesEverywhere)
{
    const Locale locale = makeLocale({Locale::kMDY, L"AM", L"PM", L":", L""});
    EXPECT_EQ(read(L"1 2", locale), "M1 D2");
    EXPECT_EQ(read(L"1 2 3", locale), "error") << "a date separator follows the third component";
    EXPECT_EQ(read(L"1 2 2005", locale), "Y2005 M1 D2") << "a long run is a year whatever follows";
    EXPECT_EQ(read(L"1 2 32", locale), "Y2032 M1 D2") << "as is one from 32 on";
    EXPECT_EQ(read(L"1:2:3", locale), "h1 m2 s3");
    EXPECT_EQ(read(L"1:2", locale), "M2 h1") << "the 2 is read again as a date";
}

TEST(TypedYearRule, LongRunsAndHighValues)
{
    EXPECT_EQ(read(L"205"), "Y205");
    EXPECT_EQ(read(L"0005"), "Y5") << "four digits: as typed";
    EXPECT_EQ(read(L"000"), "Y0");
    EXPECT_EQ(read(L"32/1/2"), "Y2032 M1 D2");
    EXPECT_EQ(read(L"61"), "Y2061");
    EXPECT_EQ(read(L"60"), "error") << "a month";
    EXPECT_EQ(read(L"61 1 2"), "Y2061 M1 D2");
}

TEST(TypedYearRule, OnlyTheFirstSlotChangesTheOrder)
{
    EXPECT_EQ(read(L"2005 1 2", Locale::kDMY), "Y2005 M1 D2");
    EXPECT_EQ(read(L"1 2005 2", Locale::kDMY), "error") << "the year took the month's slot, and 2 is a second year";
    EXPECT_EQ(read(L"1 2005 10:30", Locale::kDMY), "Y2005 M1 h10 m30");
}

TEST(TypedYearRule, FailsBeforeATimeSeparatorAndForASecondYear)
{
    EXPECT_EQ(read(L"2005:10"), "error");
    EXPECT_EQ(read(L"61:10"), "error");
    EXPECT_EQ(read(L"2005 2006"), "error");
}

TEST(TypedYearRule, TheYearIsCutToSixteenBits)
{
    EXPECT_EQ(read(L"32767"), "Y32767");
    EXPECT_EQ(read(L"32768"), "Y-32768");
    EXPECT_EQ(read(L"65536"), "Y0");
    EXPECT_EQ(read(L"4294967301"), "Y5") << "2 to the 32, and 5";
}

TEST(TypedField, Ranges)
{
    EXPECT_EQ(read(L"0/1/2005"), "error");
    EXPECT_EQ(read(L"1/0/2005"), "error");
    EXPECT_EQ(read(L"12/31/2005"), "Y2005 M12 D31");
    EXPECT_EQ(read(L"13/1/2005"), "error");
    EXPECT_EQ(read(L"1/32 2005"), "error");
    EXPECT_EQ(read(L"24:59:59"), "h24 m59 s59");
    EXPECT_EQ(read(L"25:00:00"), "error");
    EXPECT_EQ(read(L"1:60:00"), "error");
    EXPECT_EQ(read(L"1:00:60"), "error");
    EXPECT_EQ(read(L"0:0:0"), "h0 m0 s0");
}

TEST(TypedField, NoneIsFoundTwice)
{
    EXPECT_EQ(read(L"1/2/3 4:5:6 7"), "error") << "a second month";
    EXPECT_EQ(read(L"1 2 3 4:5:6 7", Locale::kDMY), "error") << "a second day";
    EXPECT_EQ(read(L"10:11:12 13:"), "error") << "a second hour";
    EXPECT_EQ(read(L"2005 2006"), "error") << "a second year";
    EXPECT_EQ(read(L"2005 5 6 1 2 7:8", Locale::kMDY, ParseDateTime::kTime), "error")
        << "the year stood in the hour's slot, so 5 was the minute already";
}

TEST(TypedFraction, DigitsAreScaledToNanoseconds)
{
    EXPECT_EQ(read(L"1:2:3.5"), "h1 m2 s3 f500000000");
    EXPECT_EQ(read(L"1:2:3,123"), "h1 m2 s3 f123000000");
    EXPECT_EQ(read(L"1:2:3.000000001"), "h1 m2 s3 f1");
    EXPECT_EQ(read(L"1:2:3.0"), "h1 m2 s3 f0");
}

// 'x' is 120 and '0' is 48: 72, of one digit, is 72 times 10 to the 8, which is 7200000000 - 4294967296.
TEST(TypedFraction, TheFirstCharacterIsTakenForADigitUnseen)
{
    EXPECT_EQ(read(L"1:2:3.x"), "h1 m2 s3 f2905032704");
    EXPECT_EQ(read(L"3:2:1.PM"), "h3 m2 s1 f3200000000") << "'P' is 80: 32; and no marker is left";
}

// The blank is 32: -16, which is 4294967280; times 10 and 5 is -155, of two digits: -155 times 10 to the 7.
TEST(TypedFraction, WrapsBelowZero)
{
    EXPECT_EQ(read(L"1:2:3. 5"), "h1 m2 s3 f2744967296");
}

TEST(TypedMarker, ChangesTheHour)
{
    EXPECT_EQ(read(L"12:30 PM"), "h12 m30");
    EXPECT_EQ(read(L"12:30 AM"), "h0 m30");
    EXPECT_EQ(read(L"0:30 PM"), "h12 m30");
    EXPECT_EQ(read(L"0:30 AM"), "h0 m30");
    EXPECT_EQ(read(L"13:30 PM"), "h13 m30");
    EXPECT_EQ(read(L"13:30 AM"), "h13 m30");
    EXPECT_EQ(read(L"24:30 PM"), "h24 m30");
    EXPECT_EQ(read(L"11:30 PM"), "h23 m30");
    EXPECT_EQ(read(L"PM 3:30"), "h15 m30");
}

TEST(TypedMarker, WithBothPMComesFirstAndTwelveStillTurns)
{
    EXPECT_EQ(read(L"12:30 AM PM"), "h0 m30");
    EXPECT_EQ(read(L"0:30 AM PM"), "h12 m30");
    EXPECT_EQ(read(L"3:30 PM AM"), "h15 m30");
}

TEST(TypedMarker, WithoutAnHourChangesNothing)
{
    EXPECT_EQ(read(L"12/31/2005 PM"), "Y2005 M12 D31");
    EXPECT_EQ(read(L"PM"), "error") << "no field";
}

TEST(TypedMarker, AWordThatBeginsWithOneSetsIt)
{
    EXPECT_EQ(read(L"12:30 amber"), "h0 m30");
    EXPECT_EQ(read(L"3:30 xpmx"), "h15 m30") << "words are skipped letter by letter";
    EXPECT_EQ(read(L"3:30 p.m"), "h3 m30") << "cut off";
    EXPECT_EQ(read(L"3:30 P"), "h3 m30");
}

TEST(TypedMarker, PMIsLookedForBeforeAM)
{
    const Locale locale = makeLocale({Locale::kMDY, L"xy", L"x", L":", L"/"});
    EXPECT_EQ(read(L"12:30 xy", locale), "h12 m30") << "PM is the start of AM";
    EXPECT_EQ(read(L"3:30 xy", locale), "h15 m30");
}

TEST(TypedMarker, TheLocalesComeBeforeTheEnglishOnes)
{
    const Locale locale = makeLocale({Locale::kMDY, L"pm", L"am", L":", L"/"});
    EXPECT_EQ(read(L"3:30 am", locale), "h15 m30");
    EXPECT_EQ(read(L"12:30 pm", locale), "h0 m30");
    EXPECT_EQ(read(L"3:30 p.m.", locale), "h15 m30");
}

TEST(TypedMarker, EmptyOnesAreSkipped)
{
    const Locale locale = makeLocale({Locale::kMDY, L"", L"", L":", L"/"});
    EXPECT_EQ(read(L"12:30 x", locale), "h12 m30");
    EXPECT_EQ(read(L"12:30 am", locale), "h0 m30");
}

TEST(TypedMarker, OneThatBeginsWithNoLetterIsNeverFound)
{
    const Locale locale = makeLocale({Locale::kMDY, L"*a", L"*p", L":", L"/"});
    EXPECT_EQ(read(L"3:30 *p", locale), "h3 m30");
}

TEST(TypedMarker, SeveralWordsAreOneMarker)
{
    const Locale locale = makeLocale({Locale::kMDY, L"a. m.", L"p. m.", L":", L"/"});
    EXPECT_EQ(read(L"3:30 P. M.", locale), "h15 m30");
    EXPECT_EQ(read(L"3:30 p.  m.", locale), "h3 m30");
    EXPECT_EQ(read(L"3:30 p. m", locale), "h3 m30") << "cut off at the end";
}

TEST(TypedFinish, ADayIsAMonthOnlyWithAYearAndUpToTwelve)
{
    EXPECT_EQ(read(L"1 2005", Locale::kDMY), "Y2005 M1");
    EXPECT_EQ(read(L"12 2005 10:30", Locale::kDMY), "Y2005 M12 h10 m30");
    EXPECT_EQ(read(L"13 2005", Locale::kDMY), "Y2005 D13");
    EXPECT_EQ(read(L"12 10:30", Locale::kDMY), "D12 h10 m30");
}

TEST(TypedFailure, LeavesWhatWasReadBefore)
{
    const datestesting::Parsed parsed = parseTyped(L"12/31/2005/", localeOf(Locale::kMDY), ParseDateTime::kDate);
    EXPECT_EQ(parsed.m_nFound, ParseDateTime::kDate) << "the year's follower is not looked at";
    const datestesting::Parsed failed = parseTyped(L"12/31/5/", localeOf(Locale::kMDY), ParseDateTime::kDate);
    EXPECT_EQ(failed.m_nFound, ParseDateTime::kParseError);
    EXPECT_EQ(failed.m_tValue.m_nMonth, 12);
    EXPECT_EQ(failed.m_tValue.m_nDay, 31);
    EXPECT_EQ(failed.m_tValue.m_nYear, 0);
}

TEST(TypedUser, OverridesAreReadLikeDefinitions)
{
    Locale locale = localeOf(Locale::kMDY);
    locale.setOverridingDateInputFormat(L".", Locale::kYMD);
    locale.setOverridingTimeInputFormat(L"h", Locale::kIs24HR);
    EXPECT_EQ(read(L"5.6.7", locale), "Y2005 M6 D7");
    EXPECT_EQ(read(L"5h6", locale), "h5 m6");
}

}  // namespace
