#include <gtest/gtest.h>

#include "datestesting.h"

// The rules of XML Schema's dates and times, one test each.

namespace {

using datestesting::parseXml;
using vel::DateTime;
using vel::ParseDateTime;

std::string read(std::wstring_view text)
{
    return datestesting::describe(parseXml(text));
}

TEST(XmlForm, EveryFormWithAndWithoutZ)
{
    const struct
    {
        const wchar_t* m_sText;
        const char* m_sAnswer;
    } rows[] = {
        {L"2005-12-31T23:59:58", "XmlDateTime Y2005 M12 D31 h23 m59 s58"},
        {L"2005-12-31T23:59:58.25", "XmlDateTime Y2005 M12 D31 h23 m59 s58 f250000000"},
        {L"2005-12-31", "XmlDate Y2005 M12 D31"},
        {L"23:59:58", "XmlTime h23 m59 s58"},
        {L"23:59:58.25", "XmlTime h23 m59 s58 f250000000"},
        {L"2005", "XmlYear Y2005"},
        {L"2005-12", "XmlYearMonth Y2005 M12"},
        {L"--12-31", "XmlMonthDay M12 D31"},
        {L"--12--", "XmlMonth M12"},
        {L"---31", "XmlDay D31"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(read(row.m_sText), row.m_sAnswer);
        EXPECT_EQ(read(std::wstring(row.m_sText) + L"Z"), row.m_sAnswer);
        EXPECT_EQ(read(std::wstring(row.m_sText) + L"z"), "invalid");
        EXPECT_EQ(read(std::wstring(row.m_sText) + L"ZZ"), "invalid");
    }
}

TEST(XmlForm, WhiteSpaceBehindZOnlyInDates)
{
    for (const wchar_t* text : {L"2005Z", L"2005-12Z", L"2005-12-31Z", L"--12-31Z", L"--12--Z", L"---31Z"}) {
        EXPECT_NE(parseXml(std::wstring(text) + L" \t\n\r\x2028\x2029").m_eForm, ParseDateTime::kInvalid);
        EXPECT_EQ(parseXml(std::wstring(text) + L" x").m_eForm, ParseDateTime::kInvalid);
    }
    for (const wchar_t* text : {L"10:00:00Z", L"10:00:00.5Z", L"2005-12-31T10:00:00Z"}) {
        EXPECT_NE(parseXml(text).m_eForm, ParseDateTime::kInvalid);
        EXPECT_EQ(parseXml(std::wstring(text) + L" ").m_eForm, ParseDateTime::kInvalid);
    }
}

TEST(XmlWhiteSpace, StandsBehindEveryNumber)
{
    EXPECT_EQ(read(L" 2005 -12 -31 Z "), "XmlDate Y2005 M12 D31");
    EXPECT_EQ(read(L"10 :00 :00 Z"), "XmlTime h10 m0 s0");
    EXPECT_EQ(read(L"2005-12-31 T 10:00:00"), "XmlDateTime Y2005 M12 D31 h10 m0 s0") << "and behind the T";
    EXPECT_EQ(read(L"--12 --"), "XmlMonth M12");
    EXPECT_EQ(read(L"---31 "), "XmlDay D31");
}

TEST(XmlWhiteSpace, StandsNowhereElse)
{
    EXPECT_EQ(read(L"2005- 12"), "invalid") << "no digit: the month reads as 0";
    EXPECT_EQ(read(L"--12--  "), "invalid");
    EXPECT_EQ(read(L"-- 12--"), "invalid");
    EXPECT_EQ(read(L"--- 31"), "invalid");
    EXPECT_EQ(read(L"10:00: 15"), "invalid") << "the second reads as 0, and 15 is left";
    EXPECT_EQ(read(L"20 05"), "invalid");
}

TEST(XmlWhiteSpace, IsSixCharacters)
{
    for (const wchar_t space : {L'\t', L' ', L'\n', L'\r', L'\x2028', L'\x2029'}) {
        EXPECT_EQ(read(std::wstring(1, space) + L"2005" + space), "XmlYear Y2005");
    }
    for (const wchar_t other : {L'\v', L'\f', L'\x85', L'\xA0', L'\x2002', L'\x202A', L'\x3000', L'\xFEFF'}) {
        EXPECT_EQ(read(std::wstring(1, other) + L"2005"), "invalid");
        EXPECT_EQ(read(L"2005" + std::wstring(1, other)), "invalid");
    }
}

TEST(XmlNumber, ThatIsMissingIsZero)
{
    EXPECT_EQ(read(L":30:00"), "XmlTime h0 m30 s0");
    EXPECT_EQ(read(L"::"), "XmlTime h0 m0 s0");
    EXPECT_EQ(read(L"10::"), "XmlTime h10 m0 s0");
    EXPECT_EQ(read(L"::.5"), "XmlTime h0 m0 s0 f500000000");
    EXPECT_EQ(read(L": : "), "XmlTime h0 m0 s0") << "white space is skipped where no digit stood too";
    EXPECT_EQ(read(L"2005--31"), "invalid") << "a month is not 0";
    EXPECT_EQ(read(L"2005-12-"), "invalid") << "nor is a day";
    EXPECT_EQ(read(L"-12-31"), "invalid") << "year -12, and a month is not 31";
}

TEST(XmlNumber, Wraps)
{
    EXPECT_EQ(read(L"4294969301"), "XmlYear Y2005") << "2 to the 32, and 2005";
    EXPECT_EQ(read(L"4294967296"), "invalid") << "0";
    EXPECT_EQ(read(L"4294967297-4294967308-4294967299"), "XmlDate Y1 M12 D3");
    EXPECT_EQ(read(L"00000000000000000000000010:00000:000"), "XmlTime h10 m0 s0");
}

TEST(XmlYear, IsCutToSixteenBits)
{
    EXPECT_EQ(read(L"32768"), "XmlYear Y-32768");
    EXPECT_EQ(read(L"65537"), "XmlYear Y1");
    EXPECT_EQ(read(L"65536"), "XmlYear Y0") << "the number that was read is not 0";
    EXPECT_EQ(read(L"-65536"), "invalid") << "behind a sign it is the field that must not be 0";
    EXPECT_EQ(read(L"-32768"), "XmlYear Y-32768");
    EXPECT_EQ(read(L"65536-12-31T10:00:00"), "XmlDateTime Y0 M12 D31 h10 m0 s0");
}

TEST(XmlSign, StandsBeforeEveryFormWithAYear)
{
    EXPECT_EQ(read(L"-5-12"), "XmlYearMonth Y-5 M12");
    EXPECT_EQ(read(L"-5-12-31"), "XmlDate Y-5 M12 D31");
    EXPECT_EQ(read(L"-5-12-31T10:00:00"), "XmlDateTime Y-5 M12 D31 h10 m0 s0");
    EXPECT_EQ(read(L"-10:00:00"), "invalid");
    EXPECT_EQ(read(L"- --12--"), "invalid");
    EXPECT_EQ(read(L"- ---31"), "invalid");
    EXPECT_EQ(read(L"-"), "invalid");
    EXPECT_EQ(read(L"- "), "invalid");
}

TEST(XmlSign, IsReadAgainBehindWhiteSpace)
{
    EXPECT_EQ(read(L"- 5"), "XmlYear Y-5");
    EXPECT_EQ(read(L"- -5"), "XmlYear Y5");
    EXPECT_EQ(read(L"- - - 5"), "XmlYear Y-5");
    EXPECT_EQ(read(L"- -0"), "invalid");
    EXPECT_EQ(read(L"- -32768"), "XmlYear Y-32768") << "turning it does not fit";
}

TEST(XmlSign, AMillionOfThemAreReadWithoutRecursion)
{
    std::wstring text;
    for (int i = 0; i < 1'000'000; ++i) {
        text += L"- ";
    }
    EXPECT_EQ(read(text + L"5"), "XmlYear Y5");
    EXPECT_EQ(read(text + L"-5"), "XmlYear Y-5");
    EXPECT_EQ(read(text), "invalid");
}

TEST(XmlTime, Ranges)
{
    EXPECT_EQ(read(L"23:59:59"), "XmlTime h23 m59 s59");
    EXPECT_EQ(read(L"24:00:00"), "invalid");
    EXPECT_EQ(read(L"23:60:00"), "invalid");
    EXPECT_EQ(read(L"23:59:60"), "invalid");
}

TEST(XmlTime, EndsEarly)
{
    EXPECT_EQ(read(L"10:"), "invalid");
    EXPECT_EQ(read(L"10:30"), "invalid");
    EXPECT_EQ(read(L"10:30:"), "XmlTime h10 m30 s0") << "the missing second is 0";
    EXPECT_EQ(read(L"10:30Z"), "invalid");
    EXPECT_EQ(read(L"10:30:15+"), "invalid");
    EXPECT_EQ(read(L"10:30:15-01:00"), "invalid");
}

TEST(XmlFraction, WhiteSpaceCountsAsDigits)
{
    EXPECT_EQ(read(L"10:00:00.5"), "XmlTime h10 m0 s0 f500000000");
    EXPECT_EQ(read(L"10:00:00.5 "), "XmlTime h10 m0 s0 f50000000");
    EXPECT_EQ(read(L"10:00:00.5        "), "XmlTime h10 m0 s0 f5") << "a digit and eight blanks";
    EXPECT_EQ(read(L"10:00:00.5         "), "invalid") << "a digit and nine blanks";
    EXPECT_EQ(read(L"10:00:00.5 Z"), "XmlTime h10 m0 s0 f50000000");
    EXPECT_EQ(read(L"10:00:00. "), "XmlTime h10 m0 s0");
    EXPECT_EQ(read(L"10:00:00 .5"), "XmlTime h10 m0 s0 f500000000") << "behind the seconds it does not count";
    EXPECT_EQ(read(L"10:00:00.123456789"), "XmlTime h10 m0 s0 f123456789");
    EXPECT_EQ(read(L"10:00:00.5.5"), "invalid");
    EXPECT_EQ(read(L"10:00:00,5"), "invalid");
}

TEST(XmlDateTime, NeedsATimeBehindTheT)
{
    EXPECT_EQ(read(L"2005-12-31T"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T "), "invalid");
    EXPECT_EQ(read(L"2005-12-31T2005"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T2005-12-31"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T---31"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T-10:00:00"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T2005-12-31T10:00:00"), "invalid");
    EXPECT_EQ(read(L"2005-12-31t10:00:00"), "invalid");
    EXPECT_EQ(read(L"2005-12T10:00:00"), "invalid");
    EXPECT_EQ(read(L"2005T10:00:00"), "invalid");
    EXPECT_EQ(read(L"2005-12-31T:30:"), "XmlDateTime Y2005 M12 D31 h0 m30 s0");
}

TEST(XmlDate, DaysAreNotCheckedAgainstTheirMonth)
{
    EXPECT_EQ(read(L"2005-02-31"), "XmlDate Y2005 M2 D31");
    EXPECT_EQ(read(L"2005-02-32"), "invalid");
    EXPECT_EQ(read(L"2005-13-01"), "invalid");
    EXPECT_EQ(read(L"2005-00-01"), "invalid");
    EXPECT_EQ(read(L"2005-01-00"), "invalid");
    EXPECT_EQ(read(L"--13--"), "invalid");
    EXPECT_EQ(read(L"--00-01"), "invalid");
}

TEST(XmlYearless, EndsEarly)
{
    for (const wchar_t* text : {L"--", L"---", L"--1", L"--1-", L"--1-Z", L"--1---", L"----1", L"--1--1"}) {
        EXPECT_EQ(read(text), "invalid");
    }
}

TEST(XmlRange, NeedNotBeTerminated)
{
    const std::wstring text = L"2005-12-319";
    DateTime value;
    EXPECT_EQ(ParseDateTime::parseXmlDateTime(text.data(), text.data() + 10, value), ParseDateTime::kXmlDate);
    EXPECT_EQ(value.m_nDay, 31);
    EXPECT_EQ(ParseDateTime::parseXmlDateTime(text.data(), text.data() + 4, value), ParseDateTime::kXmlYear);
    EXPECT_EQ(value, (DateTime{2005, 0, 0, 0, 0, 0, 0})) << "what another form left is cleared";
    EXPECT_EQ(ParseDateTime::parseXmlDateTime(nullptr, nullptr, value), ParseDateTime::kInvalid);
    EXPECT_EQ(value.m_nYear, 2005);
}

}  // namespace
