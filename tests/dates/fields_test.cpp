#include <gtest/gtest.h>

#include <type_traits>

#include "webi18n/parsedatetime.h"

// The numbers behind the enumerators: hosts store them and cast them back.

namespace {

using vel::ParseDateTime;

TEST(Fields, HaveTheirStoredValues)
{
    EXPECT_EQ(ParseDateTime::kParseError, 0U);
    EXPECT_EQ(ParseDateTime::kYear, 1U);
    EXPECT_EQ(ParseDateTime::kMonth, 2U);
    EXPECT_EQ(ParseDateTime::kDay, 4U);
    EXPECT_EQ(ParseDateTime::kHour, 8U);
    EXPECT_EQ(ParseDateTime::kMinute, 16U);
    EXPECT_EQ(ParseDateTime::kSecond, 32U);
    EXPECT_EQ(ParseDateTime::kNanoseconds, 64U);
    EXPECT_EQ(ParseDateTime::kYearMonth, 3U);
    EXPECT_EQ(ParseDateTime::kMonthDay, 6U);
    EXPECT_EQ(ParseDateTime::kDate, 7U);
    EXPECT_EQ(ParseDateTime::kHourMinute, 24U);
    EXPECT_EQ(ParseDateTime::kTime, 56U);
    EXPECT_EQ(ParseDateTime::kTimeFraction, 120U);
    EXPECT_EQ(ParseDateTime::kDateTime, 63U);
    EXPECT_EQ(ParseDateTime::kTimeStamp, 127U);
}

TEST(XmlTypes, HaveTheirStoredValues)
{
    EXPECT_EQ(ParseDateTime::kInvalid, 0U);
    EXPECT_EQ(ParseDateTime::kXmlDateTime, 1U);
    EXPECT_EQ(ParseDateTime::kXmlDate, 2U);
    EXPECT_EQ(ParseDateTime::kXmlTime, 3U);
    EXPECT_EQ(ParseDateTime::kXmlYear, 4U);
    EXPECT_EQ(ParseDateTime::kXmlYearMonth, 5U);
    EXPECT_EQ(ParseDateTime::kXmlMonthDay, 6U);
    EXPECT_EQ(ParseDateTime::kXmlMonth, 7U);
    EXPECT_EQ(ParseDateTime::kXmlDay, 8U);
}

static_assert(!std::is_default_constructible_v<ParseDateTime>);

}  // namespace
