#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.h"

namespace clitest {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

Json shown(const Arguments& arguments)
{
    Arguments all = {"--json", "locale"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const Outcome outcome = run(onFolder(all));
    EXPECT_EQ(outcome.m_nExit, 0) << outcome.m_sError;
    return outcome.object();
}

std::vector<std::string> keysOf(const Json& object)
{
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.items()) {
        keys.push_back(key);
    }
    return keys;
}

}  // namespace

TEST(ShowLocale, keysStandInTheOrderOfTheProperties)
{
    EXPECT_THAT(keysOf(shown({"fr-fr"})),
                ElementsAre("locale", "dateShortFormat", "dateLongFormat", "timeFormat", "dateInputFormat",
                            "timeInputFormat", "am", "pm", "timeSeparator", "dateSeparator", "thousandsSeparator",
                            "monetaryThousandsSeparator", "decimalSeparator", "monetaryDecimalSeparator",
                            "listSeparator", "primaryCurrencySymbol", "negativeNumberTemplate", "defaultLanguage",
                            "localeDisplayMessage", "characterSetList", "collationImplementation", "collationNLS_SORT",
                            "percentFormat", "percentSymbolLocation", "dateOrder", "24hours", "firstDayOfWeek",
                            "monthNames", "genetiveMonthNames", "abbrevMonthNames", "dayNames", "abbrevDayNames",
                            "dateFormats", "timeFormats", "dateTimeFormats", "scaleFactors", "effective"));
}

TEST(ShowLocale, valuesAreTheDefinitionsAndItsBases)
{
    const Json locale = shown({"FR-CA"});
    EXPECT_EQ(locale["locale"], "fr-ca");
    EXPECT_EQ(locale["dateShortFormat"], "yyyy-MM-dd");
    EXPECT_EQ(locale["dateInputFormat"], "yyyy-MM-dd");
    EXPECT_EQ(locale["timeInputFormat"], "HH:mm:ss");
    EXPECT_EQ(locale["timeFormat"], "HH:mm:ss");
    EXPECT_EQ(locale["am"], "am");
    EXPECT_EQ(locale["monetaryThousandsSeparator"], " ");
    EXPECT_EQ(locale["dateOrder"], "ymd");
    EXPECT_TRUE(locale["24hours"].is_boolean());
    EXPECT_EQ(locale["24hours"], true);
    EXPECT_TRUE(locale["firstDayOfWeek"].is_number());
    EXPECT_EQ(locale["firstDayOfWeek"], 6);
    EXPECT_EQ(locale["scaleFactors"], Json::parse(R"([["k","1000"],["M","1000000"]])"));
}

TEST(ShowLocale, listsAreShownAsStoredAndAsTheyAreUsed)
{
    const Json locale = shown({"fr-fr"});
    EXPECT_EQ(locale["monthNames"], Json::array());
    EXPECT_EQ(locale["dayNames"].size(), 7U);
    EXPECT_EQ(locale["abbrevDayNames"], Json::array());
    const Json& effective = locale["effective"];
    EXPECT_THAT(keysOf(effective), ElementsAre("monthNames", "genetiveMonthNames", "abbrevMonthNames", "dayNames",
                                               "abbrevDayNames", "dateTimeFormats"));
    EXPECT_EQ(effective["monthNames"].size(), 12U);
    EXPECT_EQ(effective["monthNames"][0], "January");
    EXPECT_EQ(effective["abbrevMonthNames"][11], "December");
    EXPECT_EQ(effective["dayNames"][0], "lundi");
    // Built-in day names begin with Sunday.
    EXPECT_EQ(effective["abbrevDayNames"][0], "Sunday");
    EXPECT_EQ(effective["dateTimeFormats"], Json::array());
}

TEST(ShowLocale, dateTimeFormatsAreDerivedFromTheTwoLists)
{
    const Json locale = shown({"en-us"});
    EXPECT_EQ(locale["dateTimeFormats"], Json::array());
    EXPECT_EQ(locale["effective"]["dateTimeFormats"], Json::parse(R"(["M/d/yyyy h:mm tt","MMMM d, yyyy h:mm tt"])"));
}

TEST(ShowLocale, theUsersSettingsAreApplied)
{
    const Json locale =
        shown({"fr-fr", "--user", "dateSeparator=.", "--user", "dateOrder=mdy", "--user", "24hours=false", "--user",
               "timeSeparator=h", "--user", "decimalSeparator=#", "--user", "thousandsSeparator=_", "--user",
               "dateFormat=d.M.yy", "--user", "timeFormat=HH'h'", "--user", "currencyTag=EUR"});
    EXPECT_EQ(locale["dateInputFormat"], "MM.dd.yyyy");
    EXPECT_EQ(locale["dateSeparator"], ".");
    EXPECT_EQ(locale["dateOrder"], "mdy");
    EXPECT_EQ(locale["24hours"], false);
    EXPECT_EQ(locale["timeInputFormat"], "hhhmmhss tt");
    EXPECT_EQ(locale["timeSeparator"], "h");
    EXPECT_EQ(locale["decimalSeparator"], "#");
    EXPECT_EQ(locale["monetaryDecimalSeparator"], "#");
    EXPECT_EQ(locale["thousandsSeparator"], "_");
    EXPECT_EQ(locale["monetaryThousandsSeparator"], "_");
    EXPECT_EQ(locale["dateShortFormat"], "d.M.yy");
    EXPECT_EQ(locale["timeFormat"], "HH'h'");
    EXPECT_EQ(locale["currencyTag"], "EUR");
}

TEST(ShowLocale, theLastSettingOfAKeyCountsAndAnEmptyOneClears)
{
    EXPECT_EQ(shown({"fr-fr", "--user", "dateOrder=ym", "--user", "dateOrder=md"})["dateInputFormat"], "MM/dd/yyyy");
    EXPECT_EQ(shown({"fr-fr", "--user", "dateSeparator=.", "--user", "dateSeparator="})["dateSeparator"], "/");
    EXPECT_EQ(shown({"fr-fr", "--user", "dateFormat=[d],a=b"})["dateShortFormat"], "[d],a=b");
}

TEST(ShowLocale, anEmptySettingOfAnyKeyIsNone)
{
    const Json plain = shown({"fr-fr"});
    const char* const kSet[] = {"currencyTag=EUR",    "dateFormat=d",         "timeFormat=H",
                                "decimalSeparator=#", "thousandsSeparator=_", "dateSeparator=.",
                                "dateOrder=mdy",      "timeSeparator=h",      "24hours=false"};
    for (const std::string set : kSet) {
        const std::string cleared = set.substr(0, set.find('=') + 1);
        EXPECT_EQ(shown({"fr-fr", "--user", cleared}), plain) << cleared;
        EXPECT_NE(shown({"fr-fr", "--user", set}), plain) << set;
        EXPECT_EQ(shown({"fr-fr", "--user", set, "--user", cleared}), plain) << set << " and then " << cleared;
    }
}

TEST(ShowLocale, forPeopleEveryFactHasALine)
{
    const Outcome outcome = run(onFolder({"locale", "fr-fr"}));
    EXPECT_THAT(outcome.lines(), Contains("thousandsSeparator: \" \""));
    EXPECT_THAT(outcome.lines(), Contains("24hours: true"));
    EXPECT_THAT(outcome.lines(), Contains("scaleFactors: \"k\"=\"1000\", \"M\"=\"1000000\""));
    EXPECT_THAT(outcome.lines(), Contains(HasSubstr("effective abbrevDayNames: \"Sunday\", \"Monday\"")));
    EXPECT_THAT(run(onFolder({"locale", "fr-fr", "--user", "thousandsSeparator=\u202F"})).lines(),
                Contains("thousandsSeparator: \"\u202F\" (U+202F)"));
}

TEST(ShowLocale, anUnknownNameExitsWithOne)
{
    for (const std::string name : {"xx-xx", "", " fr-fr", "fr-fr,en-us"}) {
        SCOPED_TRACE(name);
        const Outcome outcome = run(onFolder({"--json", "locale", name}));
        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_EQ(outcome.m_sOut, "");
        EXPECT_EQ(outcome.m_sError, "webi18n: error: " + name + ": there is no locale of that name\n");
    }
}

TEST(ShowLocale, aDefinitionThatIsNotAllowedIsSaidToBeDefined)
{
    const Outcome outcome = run(onFolder({"locale", "DE-de"}));
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_sError, HasSubstr("DE-de: the locale is defined but not allowed"));
}

TEST(ShowLocale, theGeneratedPackHasAFullDefinition)
{
    const Outcome outcome = run({"--data", packFolder(), "--json", "locale", "fr-ca"});
    EXPECT_EQ(outcome.m_nExit, 0);
    const Json locale = outcome.object();
    EXPECT_EQ(locale["defaultLanguage"], "fr");
    EXPECT_EQ(locale["decimalSeparator"], ",");
    EXPECT_EQ(locale["monthNames"].size(), 12U);
    EXPECT_EQ(locale["dayNames"].size(), 7U);
    EXPECT_EQ(locale["dayNames"][0], "lundi");
}

}  // namespace clitest
