#include <gtest/gtest.h>

#include "datestesting.h"

// The well-known corners of XML Schema's dates and times, one test each.

namespace {

using datestesting::parseXml;
using vel::ParseDateTime;

std::string read(std::wstring_view text)
{
    return datestesting::describe(parseXml(text));
}

TEST(XmlEdge, ADateTimeWithAFractionAndZ)
{
    EXPECT_EQ(parseXml(L"2005-12-31T23:59:59.123Z").m_eForm, ParseDateTime::kXmlDateTime);
    EXPECT_EQ(read(L"2005-12-31T23:59:59.123Z"), "XmlDateTime Y2005 M12 D31 h23 m59 s59 f123000000");
}

TEST(XmlEdge, HourTwentyFourIsInvalid)
{
    EXPECT_EQ(read(L"2005-12-31T24:00:00"), "invalid");
}

TEST(XmlEdge, NumericZonesAreInvalid)
{
    EXPECT_EQ(read(L"2005-12-31T10:00:00+05:00"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T10:00:00-05:00"), "invalid");
}

TEST(XmlEdge, WhiteSpaceMayStandAroundAYearAndMonth)
{
    EXPECT_EQ(read(L"  2005-12  "), "XmlYearMonth Y2005 M12");
}

TEST(XmlEdge, ASignMakesTheYearNegative)
{
    EXPECT_EQ(read(L"-2005"), "XmlYear Y-2005");
}

TEST(XmlEdge, YearZeroIsInvalid)
{
    EXPECT_EQ(read(L"-0"), "invalid");
    EXPECT_EQ(read(L"0000"), "invalid");
}

TEST(XmlEdge, FormsWithoutAYear)
{
    EXPECT_EQ(read(L"--12--"), "XmlMonth M12");
    EXPECT_EQ(read(L"--12"), "invalid");
    EXPECT_EQ(read(L"--12-25"), "XmlMonthDay M12 D25");
    EXPECT_EQ(read(L"---25"), "XmlDay D25");
    EXPECT_EQ(read(L"---32"), "invalid");
}

TEST(XmlEdge, TenFractionDigitsAreInvalidAndNoneAreZero)
{
    EXPECT_EQ(read(L"10:00:00.1234567890"), "invalid");
    EXPECT_EQ(read(L"10:00:00."), "XmlTime h10 m0 s0");
}

TEST(XmlEdge, WhiteSpaceMayFollowTheZOfADateAndNotOfATime)
{
    EXPECT_EQ(read(L"10:00:00Z "), "invalid");
    EXPECT_EQ(read(L"2005Z "), "XmlYear Y2005");
}

TEST(XmlEdge, TextsOfWhiteSpaceLeaveTheValueAsItWas)
{
    EXPECT_EQ(read(L""), "untouched");
    EXPECT_EQ(read(L"   "), "untouched");
    EXPECT_EQ(read(L"\t\n\r \x2028\x2029"), "untouched");
}

}  // namespace
