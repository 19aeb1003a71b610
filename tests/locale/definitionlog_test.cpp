#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "locales.h"
#include "logcapture.h"
#include "printers.h"
#include "vel/log/logger.h"

// The records that a definition's mistakes leave.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

/// The texts of the warnings that a definition leaves, after a check of all that they have in common.
std::vector<String> warningsOf(const std::string& properties)
{
    const LogCapture log;
    localeOf(properties);
    std::vector<String> texts;
    for (const StoredRecord& each : log.records()) {
        EXPECT_EQ(vel::kLogWarning, each.m_eSeverity);
        EXPECT_EQ(L"vel.i18n.xmllocale.applyDefinition", each.m_sSource);
        EXPECT_THAT(each.m_sFile, testing::EndsWith("xmllocale.cpp"));
        EXPECT_LT(0, each.m_nLine);
        texts.push_back(each.text());
    }
    return texts;
}

TEST(LocaleDefinitionLog, ABadDateOrderIsNamed)
{
    EXPECT_THAT(warningsOf(property("dateOrder", "yd&amp;m")),
                testing::ElementsAre(String(L"Invalid date order string 'yd&m'.")));
    EXPECT_THAT(warningsOf(property("dateOrder", "")), testing::ElementsAre(String(L"Invalid date order string ''.")));
}

TEST(LocaleDefinitionLog, OfALongTextTheFrontIsShown)
{
    const std::string text(5000, 'x');
    const std::wstring shown(vel::Logger::kLongestInsert, L'x');
    const std::wstring element = L"<property name=\"nope\">" + shown;
    EXPECT_THAT(
        warningsOf(property("dateOrder", text) + property("firstDayOfWeek", "9" + text) + property("nope", text)),
        testing::ElementsAre(String(L"Invalid date order string '" + shown + L"...'."),
                             String(L"Invalid first day of week: 9" + shown.substr(1) + L"..."),
                             String(L"Unknown property: " + element.substr(0, shown.size()) + L"...")));
}

TEST(LocaleDefinitionLog, PerCentSignsOfABadValueAreShownAsTheyAre)
{
    EXPECT_THAT(warningsOf(property("dateOrder", "%1 100%% %") + property("firstDayOfWeek", "9%%")),
                testing::ElementsAre(String(L"Invalid date order string '%1 100%% %'."),
                                     String(L"Invalid first day of week: 9%%")));
}

TEST(LocaleDefinitionLog, AnUpperCaseDateOrderIsWarnedOfAndIsMDY)
{
    const LogCapture log;
    EXPECT_EQ(Locale::kMDY, localeOf(property("dateOrder", "DMY")).getDateOrder());
    EXPECT_EQ(Locale::kMDY, localeOf(property("dateOrder", "MDY")).getDateOrder());
    ASSERT_EQ(2U, log.records().size());
    EXPECT_EQ(String(L"Invalid date order string 'MDY'."), log.records().back().text());
    EXPECT_EQ(Locale::kDMY, localeOf(property("dateOrder", "dmy")).getDateOrder());
    EXPECT_EQ(2U, log.records().size());
}

TEST(LocaleDefinitionLog, ABadFirstDayIsShownAsItIsWritten)
{
    EXPECT_THAT(warningsOf(property("firstDayOfWeek", " 7 ")),
                testing::ElementsAre(String(L"Invalid first day of week:  7 ")));
    EXPECT_THAT(warningsOf(property("firstDayOfWeek", "-1")),
                testing::ElementsAre(String(L"Invalid first day of week: -1")));
}

TEST(LocaleDefinitionLog, AnUnknownPropertyIsShownAsXml)
{
    EXPECT_THAT(warningsOf("<property name=\"Foo\" a='b'>x &lt; y<b c=\"1\"/></property>"),
                testing::ElementsAre(String(L"Unknown property: <property name=\"Foo\" a=\"b\">x &lt; y<b c=\"1\"/>"
                                            L"</property>")));
}

TEST(LocaleDefinitionLog, PropertyNamesAreCaseSensitive)
{
    EXPECT_THAT(warningsOf(property("DateOrder", "dmy") + property("monthnames", "x")),
                testing::ElementsAre(String(L"Unknown property: <property name=\"DateOrder\">dmy</property>"),
                                     String(L"Unknown property: <property name=\"monthnames\">x</property>")));
}

TEST(LocaleDefinitionLog, APropertyWithoutANameIsUnknown)
{
    EXPECT_THAT(warningsOf("<property>x</property><property name=\"\">y</property>"),
                testing::ElementsAre(String(L"Unknown property: <property>x</property>"),
                                     String(L"Unknown property: <property name=\"\">y</property>")));
}

TEST(LocaleDefinitionLog, ApplyingGoesOnAfterEveryMistake)
{
    const LogCapture log;
    const Locale locale = localeOf(property("nothing", "x") + property("dateOrder", "x") +
                                   property("firstDayOfWeek", "9") + property("am", "reached"));
    EXPECT_EQ(3U, log.records().size());
    EXPECT_EQ(String(L"reached"), locale.getInfoAsString(Locale::kAM));
}

TEST(LocaleDefinitionLog, NothingIsMadeCurrentAfterwards)
{
    localeOf(property("nothing", "x"));
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
}

/// A host's sink that fails.
class ThrowingSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogInformation; }
    void write(const vel::LogRecord&) override { throw std::runtime_error("the disk is full"); }
};

TEST(LocaleDefinitionLog, AnExceptionOnTheWayLeavesTheLocaleAndRemovesTheSource)
{
    const vel::XmlDocument document =
        vel::XmlDocument::parse(definition("new", property("am", "changed") + property("nothing", "x")));
    Locale locale = Locale::kUSA;
    const std::size_t shares = locale.shareCount();
    vel::Logger::setSink(vel::makeHandle<ThrowingSink>());
    EXPECT_THROW(locale.applyXmlDefinition(document.root()), std::runtime_error);
    vel::Logger::setSink({});
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
    EXPECT_EQ(String(L"en-us"), locale.definitionName());
    EXPECT_EQ(String(L"AM"), locale.getInfoAsString(Locale::kAM));
    EXPECT_EQ(shares, locale.shareCount());
}

}  // namespace
