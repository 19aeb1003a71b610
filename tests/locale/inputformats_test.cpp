#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "assertioncapture.h"
#include "locales.h"
#include "printers.h"
#include "textrows.h"
#include "xmllocale.h"

// The patterns in which users type dates and times.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;
using vel::i18n_details::XmlLocaleImpl;

String dateFormat(const String& separator, unsigned order)
{
    return vel::makeHandle<XmlLocaleImpl>()->buildDateInputFormat(separator, static_cast<Locale::DateOrder>(order));
}

TEST(InputFormats, AreBuiltFromTheSeparatorAndTheOrderOrClock)
{
    const vel::Handle<XmlLocaleImpl> guts = vel::makeHandle<XmlLocaleImpl>();
    for (const TextRow& row : readRows(WEBI18N_SOURCE_DIR "/inputformats.rows", 4)) {
        SCOPED_TRACE(row.trace());
        const AssertionCapture capture;
        if (row.field(0) == "24" || row.field(0) == "12") {
            EXPECT_EQ(row.wide(2), guts->buildTimeInputFormat(row.wide(1), row.field(0) == "24"));
        } else {
            const Locale::DateOrder order = XmlLocaleImpl::getDateOrderByString(row.wide(0));
            EXPECT_EQ(row.wide(2), guts->buildDateInputFormat(row.wide(1), order));
        }
        EXPECT_THAT(capture.texts(), testing::IsEmpty());
    }
}

TEST(InputFormats, NoOrderIsReportedAndGivesNothing)
{
    const AssertionCapture capture;
    EXPECT_TRUE(dateFormat(L"/", Locale::kDateOrderEnd_).isEmpty());
    EXPECT_THAT(capture.texts(), testing::ElementsAre("Invalid date order"));
    EXPECT_THAT(capture.reports().front().m_sFile, testing::EndsWith("xmllocale.cpp"));
    EXPECT_LT(0, capture.reports().front().m_nLine);
}

TEST(InputFormats, AnyOtherOrderGivesNothingWithoutAReport)
{
    const AssertionCapture capture;
    for (const unsigned order : {4U, 5U, 255U, 4294967295U}) {
        EXPECT_TRUE(dateFormat(L"/", order).isEmpty()) << order;
    }
    EXPECT_THAT(capture.texts(), testing::IsEmpty());
}

TEST(InputFormats, ASeparatorMayBeLongerThanTheFirstBuffer)
{
    const std::wstring longSeparator(600, L'-');
    EXPECT_EQ(String(L"dd" + longSeparator + L"MM" + longSeparator + L"yyyy"), dateFormat(longSeparator, Locale::kDMY));
}

TEST(InputFormats, OfUSA)
{
    EXPECT_EQ(String(L"MM/dd/yyyy"), Locale::kUSA.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"hh:mm:ss tt"), Locale::kUSA.getInfoAsString(Locale::kTimeInputFormat));
}

TEST(InputFormats, ADateOverrideBuildsTheFormatAndLeavesTheShortFormat)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateInputFormat(L".", Locale::kDMY);
    EXPECT_EQ(String(L"dd.MM.yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"M/d/yyyy"), locale.getInfoAsString(Locale::kDateShortFormat));
}

TEST(InputFormats, AClockOverrideWithoutASeparatorUsesTheDefinitionsSeparator)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingTimeInputFormat(L"", Locale::kIs24HR);
    EXPECT_EQ(String(L"HH:mm:ss"), locale.getInfoAsString(Locale::kTimeInputFormat));
    EXPECT_EQ(String(L"h:mm:ss tt"), locale.getInfoAsString(Locale::kTimeFormat));
}

TEST(InputFormats, AnEmptySeparatorJoinsTheFields)
{
    EXPECT_EQ(String(L"MMddyyyy"), dateFormat(L"", Locale::kMDY));
}

TEST(InputFormats, ASeparatorOfTwoCharactersIsCopiedWhole)
{
    EXPECT_EQ(String(L"dd. MM. yyyy"), dateFormat(L". ", Locale::kDMY));
    const Locale locale = localeOf(property("dateSeparator", ". ") + property("dateOrder", "dmy"));
    EXPECT_EQ(String(L"dd. MM. yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
}

TEST(InputFormats, ADefinitionsOwnInputFormatIsNotRead)
{
    const Locale locale =
        localeOf(property("dateSeparator", "-") + property("dateInputFormat", "d/M/y") + property("dateOrder", "ymd"));
    EXPECT_EQ(String(L"yyyy-MM-dd"), locale.getInfoAsString(Locale::kDateInputFormat));
}

}  // namespace
