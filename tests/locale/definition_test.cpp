#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "locales.h"
#include "logcapture.h"
#include "printers.h"
#include "textrows.h"
#include "xmllocale.h"

// What a definition's scalar properties do.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;
using vel::i18n_details::XmlLocaleImpl;

// The digits are kept with the data and returned by no operation: the test opens the member.
std::uint32_t XmlLocaleImpl::*currencyDigitsMember();
template <std::uint32_t XmlLocaleImpl::*member>
struct Opener
{
    friend std::uint32_t XmlLocaleImpl::*currencyDigitsMember() { return member; }
};
template struct Opener<&XmlLocaleImpl::m_nCurrencyDigits>;

std::uint32_t currencyDigitsOf(const std::string& properties)
{
    const vel::XmlDocument document = vel::XmlDocument::parse(definition("test", properties));
    const vel::Handle<XmlLocaleImpl> guts = vel::makeHandle<XmlLocaleImpl>();
    guts->applyXmlDefinition(document.root());
    return *guts.*currencyDigitsMember();
}

TEST(LocaleDefinition, OnlyANameGivesTheDefaults)
{
    const Locale locale = applied("<localeDefinition name=\"bare\"/>");
    EXPECT_EQ(String(L"bare"), locale.definitionName());
    EXPECT_EQ(String(L"am"), locale.getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"pm"), locale.getInfoAsString(Locale::kPM));
    EXPECT_EQ(Locale::kMDY, locale.getDateOrder());
    EXPECT_FALSE(locale.is24Hours());
    EXPECT_EQ(6U, locale.getFirstDayOfWeek());
    EXPECT_EQ(String(L"MMddyyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"hhmmss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
    EXPECT_TRUE(locale.getScaleFactors().empty());
    EXPECT_EQ(2U, currencyDigitsOf(""));
}

TEST(LocaleDefinition, EveryOtherStringOfAFreshLocaleIsEmpty)
{
    const Locale locale = applied("<localeDefinition name=\"bare\"/>");
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        if (info != Locale::kAM && info != Locale::kPM && info != Locale::kDateInputFormat &&
            info != Locale::kTimeInputFormat) {
            EXPECT_TRUE(locale.getInfoAsString(static_cast<Locale::StringInfo>(info)).isEmpty()) << info;
        }
    }
    EXPECT_TRUE(allNames(locale, Locale::kDateFormats).empty());
    EXPECT_TRUE(allNames(locale, Locale::kTimeFormats).empty());
    EXPECT_TRUE(allNames(locale, Locale::kDateTimeFormats).empty());
}

TEST(LocaleDefinition, NoOverrideIsSetInAFreshLocale)
{
    const Locale locale = applied("<localeDefinition name=\"bare\"/>");
    EXPECT_TRUE(locale.overridingCurrencyTag().isEmpty());
    EXPECT_FALSE(locale.hasOverridingCurrencyTag());
    EXPECT_TRUE(locale.overridingDateFormat().isEmpty());
    EXPECT_TRUE(locale.overridingTimeFormat().isEmpty());
    EXPECT_TRUE(locale.overridingDecimalSeparator().isEmpty());
    EXPECT_TRUE(locale.overridingThousandsSeparator().isEmpty());
    EXPECT_TRUE(locale.overridingDateSeparator().isEmpty());
    EXPECT_TRUE(locale.overridingTimeSeparator().isEmpty());
    EXPECT_EQ(Locale::kNotDefined24HR, locale.overriding24Hours());
    EXPECT_EQ(Locale::kDateOrderEnd_, locale.overridingDateOrdering());
}

TEST(LocaleDefinition, EveryStringPropertySetsItsOwnStringAndNoOther)
{
    for (unsigned set = 0; set < Locale::kStringInfoEnd_; ++set) {
        const Locale::StringInfo info = static_cast<Locale::StringInfo>(set);
        // Input formats are derived, and the separators that others follow have tests of their own.
        if (info == Locale::kDateInputFormat || info == Locale::kTimeInputFormat || info == Locale::kDateSeparator ||
            info == Locale::kTimeSeparator || info == Locale::kThousandsSeparator ||
            info == Locale::kDecimalSeparator) {
            continue;
        }
        const std::string name = vel::toUtf8Lossy(Locale::stringInfoMap().find(info).view());
        const Locale locale = localeOf(property(name, "set"));
        const Locale bare = localeOf("");
        for (unsigned read = 0; read < Locale::kStringInfoEnd_; ++read) {
            const Locale::StringInfo other = static_cast<Locale::StringInfo>(read);
            EXPECT_EQ(read == set ? String(L"set") : bare.getInfoAsString(other), locale.getInfoAsString(other))
                << name << " read as " << read;
        }
    }
}

TEST(LocaleDefinition, TheNameAttributeReplacesTheNameOnlyWhenItSaysSomething)
{
    const Locale base = applied("<localeDefinition name=\"base\"/>");
    EXPECT_EQ(String(L"derived"), applied("<localeDefinition name=\"derived\"/>", base).definitionName());
    EXPECT_EQ(String(L"base"), applied("<localeDefinition name=\"\"/>", base).definitionName());
    EXPECT_EQ(String(L"base"), applied("<localeDefinition/>", base).definitionName());
    EXPECT_TRUE(applied("<localeDefinition/>").definitionName().isEmpty());
}

TEST(LocaleDefinition, AScalarIsTakenAsItStandsWithItsWhiteSpace)
{
    EXPECT_EQ(String(L" a m\n"), localeOf(property("am", " a m\n")).getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"\x00a0"),
              localeOf(property("thousandsSeparator", "&#160;")).getInfoAsString(Locale::kThousandsSeparator));
}

TEST(LocaleDefinition, AScalarIsTheWholeInnerText)
{
    EXPECT_EQ(String(L"abc"), localeOf(property("am", "a<i>b</i>c")).getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"ab"), localeOf(property("am", "a<!-- not this -->b")).getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"a<b&c"), localeOf(property("am", "a&lt;b<![CDATA[&c]]>")).getInfoAsString(Locale::kAM));
}

TEST(LocaleDefinition, AnEmptyScalarEmptiesTheString)
{
    EXPECT_TRUE(localeOf(property("am", "")).getInfoAsString(Locale::kAM).isEmpty());
    EXPECT_TRUE(localeOf("<property name=\"dateShortFormat\"/>", Locale::kUSA)
                    .getInfoAsString(Locale::kDateShortFormat)
                    .isEmpty());
}

TEST(LocaleDefinition, TheLastOfTwoPropertiesOfOneNameCounts)
{
    const Locale locale = localeOf(property("am", "first") + property("am", "second"));
    EXPECT_EQ(String(L"second"), locale.getInfoAsString(Locale::kAM));
}

TEST(LocaleDefinition, OtherElementsAndTextsBetweenPropertiesAreSkippedSilently)
{
    const LogCapture log;
    const Locale locale = localeOf(
        "text<!-- comment --><Property name=\"am\">A</Property><other name=\"am\">B</other>" + property("pm", "kept"));
    EXPECT_EQ(String(L"am"), locale.getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"kept"), locale.getInfoAsString(Locale::kPM));
    EXPECT_THAT(log.records(), testing::IsEmpty());
}

TEST(LocaleDefinition, ThePrefixOfAnElementDoesNotMatter)
{
    const Locale locale = localeOf(
        "<vell:property name=\"am\">prefixed</vell:property>"
        "<vell:property name=\"dateFormats\"><vell:property>yyyy</vell:property>"
        "<property>MM</property></vell:property>");
    EXPECT_EQ(String(L"prefixed"), locale.getInfoAsString(Locale::kAM));
    EXPECT_THAT(allNames(locale, Locale::kDateFormats), testing::ElementsAre(String(L"yyyy"), String(L"MM")));
}

TEST(LocaleDefinition, AttributesOtherThanTheNameAreIgnored)
{
    const LogCapture log;
    const Locale locale = localeOf(
        "<property name=\"24hours\" xsi:type=\"xsd:boolean\">true</property>"
        "<property xsi:type=\"decimal\" name=\"firstDayOfWeek\" lang=\"x\">3</property>");
    EXPECT_TRUE(locale.is24Hours());
    EXPECT_EQ(3U, locale.getFirstDayOfWeek());
    EXPECT_THAT(log.records(), testing::IsEmpty());
}

TEST(LocaleDefinition, TheClockIs24HoursForExactlyTrue)
{
    EXPECT_TRUE(localeOf(property("24hours", "true")).is24Hours());
    for (const char* text : {"TRUE", "1", "yes", "false", "", " true", "true ", "truex"}) {
        EXPECT_FALSE(localeOf(property("24hours", "true") + property("24hours", text)).is24Hours()) << text;
    }
}

TEST(LocaleDefinition, ACapitalisedTrueIsA12HourClock)
{
    const Locale locale = localeOf(property("24hours", "True"));
    EXPECT_FALSE(locale.is24Hours());
    EXPECT_EQ(String(L"hhmmss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
}

TEST(LocaleDefinition, DateOrdersAreReadExactly)
{
    EXPECT_EQ(Locale::kDMY, localeOf(property("dateOrder", "dmy")).getDateOrder());
    EXPECT_EQ(Locale::kYMD, localeOf(property("dateOrder", "ymd")).getDateOrder());
    EXPECT_EQ(Locale::kMDY, localeOf(property("dateOrder", "mdy")).getDateOrder());
    // The lenient reading of two letters is for users' settings, not for definitions.
    EXPECT_EQ(Locale::kMDY, localeOf(property("dateOrder", "dm")).getDateOrder());
}

TEST(LocaleDefinition, ABadDateOrderReplacesTheBasesOrder)
{
    const Locale base = localeOf(property("dateOrder", "ymd"));
    EXPECT_EQ(Locale::kMDY, localeOf(property("dateOrder", "x"), base).getDateOrder());
    EXPECT_EQ(Locale::kYMD, localeOf("", base).getDateOrder());
}

TEST(LocaleDefinition, NumbersAreReadAsFarAsTheirDigitsGo)
{
    for (const TextRow& row : readRows(WEBI18N_SOURCE_DIR "/numbers.rows", 5)) {
        SCOPED_TRACE(row.trace());
        const LogCapture log;
        EXPECT_EQ(std::stoul(row.field(1)), localeOf(property("firstDayOfWeek", row.field(0))).getFirstDayOfWeek());
        EXPECT_EQ(row.field(2) == "yes" ? 1U : 0U, log.records().size());
        EXPECT_EQ(std::stoul(row.field(3)), currencyDigitsOf(property("currencyDigits", row.field(0))));
    }
}

TEST(LocaleDefinition, AFirstDayOfSevenIsSixAndATextWithoutDigitsIsMonday)
{
    const LogCapture log;
    EXPECT_EQ(6U, localeOf(property("firstDayOfWeek", "7")).getFirstDayOfWeek());
    EXPECT_EQ(1U, log.records().size());
    EXPECT_EQ(0U, localeOf(property("firstDayOfWeek", "Sunday")).getFirstDayOfWeek());
    EXPECT_EQ(1U, log.records().size());
}

TEST(LocaleDefinition, InputFormatPropertiesHaveNoVisibleEffect)
{
    const LogCapture log;
    const Locale locale = localeOf(property("dateInputFormat", "yy") + property("timeInputFormat", "H"), Locale::kUSA);
    EXPECT_EQ(String(L"MM/dd/yyyy"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"hh:mm:ss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
    EXPECT_THAT(log.records(), testing::IsEmpty());
}

TEST(LocaleDefinition, ADerivedDefinitionChangesOnlyWhatItNames)
{
    const Locale derived = localeOf(property("dateSeparator", "."), Locale::kUSA);
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        if (info != Locale::kDateSeparator && info != Locale::kDateInputFormat) {
            const Locale::StringInfo same = static_cast<Locale::StringInfo>(info);
            EXPECT_EQ(Locale::kUSA.getInfoAsString(same), derived.getInfoAsString(same)) << info;
        }
    }
    EXPECT_EQ(String(L"MM.dd.yyyy"), derived.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"MM/dd/yyyy"), Locale::kUSA.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(String(L"Monday"), derived.getNameAsString(Locale::kDay, 0));
}

TEST(LocaleDefinition, TheTimeInputFormatFollowsTheDefinitionsClockAndNotTheUsers)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingTimeInputFormat(L"", Locale::kIs24HR);
    locale = localeOf("", locale);
    locale.clearOverridingTimeInputFormat();
    EXPECT_EQ(String(L"hh:mm:ss tt"), locale.getInfoAsString(Locale::kTimeInputFormat));
}

TEST(LocaleDefinition, TheDateInputFormatHonoursTheUsersOrderWhenADefinitionIsApplied)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateInputFormat(L"", Locale::kYMD);
    locale = localeOf("", locale);
    locale.clearOverridingDateInputFormat();
    EXPECT_EQ(String(L"yyyy/MM/dd"), locale.getInfoAsString(Locale::kDateInputFormat));
    EXPECT_EQ(Locale::kMDY, locale.getDateOrder());
}

TEST(LocaleDefinition, OverridesSurviveTheNextDefinition)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateFormat(L"yyyy");
    locale.setOverridingThousandsSeparator(L"'");
    locale = localeOf(property("dateShortFormat", "dd"), locale);
    EXPECT_EQ(String(L"yyyy"), locale.getInfoAsString(Locale::kDateShortFormat));
    EXPECT_EQ(String(L"'"), locale.getInfoAsString(Locale::kThousandsSeparator));
    locale.clearOverridingDateFormat();
    EXPECT_EQ(String(L"dd"), locale.getInfoAsString(Locale::kDateShortFormat));
}

}  // namespace
