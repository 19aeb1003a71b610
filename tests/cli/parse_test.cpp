#include <gtest/gtest.h>

#include "command.h"

namespace clitest {

namespace {

Arguments onPack(Arguments arguments)
{
    arguments.insert(arguments.begin(), {"--data", packFolder(), "--json"});
    return arguments;
}

}  // namespace

TEST(Parse, answersEveryLineOfABatch)
{
    Setting setting;
    setting.m_sInput = "5/6/63\n31/12/2005\n";
    const Outcome outcome = run(onPack({"parse", "--locale", "en-us", "--expect", "date", "-"}), setting);
    EXPECT_EQ(outcome.m_nExit, 0);
    const std::vector<Json> answers = outcome.objects();
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0]["result"], 7);
    EXPECT_EQ(answers[0]["fields"], Json::parse(R"(["year","month","day"])"));
    EXPECT_EQ(answers[0]["year"], 1963);
    EXPECT_EQ(answers[0]["month"], 5);
    EXPECT_EQ(answers[0]["day"], 6);
    EXPECT_EQ(answers[1]["result"], 0);
    EXPECT_FALSE(answers[1].contains("year"));
}

TEST(Parse, tellsTheOtherReadings)
{
    const Json answer = run(onPack({"parse", "--locale", "en-us", "2/3/04"})).object();
    EXPECT_EQ(answer["ambiguous"], true);
    ASSERT_EQ(answer["alternatives"].size(), 2U);
    // 2 March 2004, and 2002-03-04.
    EXPECT_EQ(answer["alternatives"][0]["dateOrder"], "dmy");
    EXPECT_EQ(answer["alternatives"][0]["month"], 3);
    EXPECT_EQ(answer["alternatives"][0]["day"], 2);
    EXPECT_EQ(answer["alternatives"][1]["dateOrder"], "ymd");
    EXPECT_EQ(answer["alternatives"][1]["year"], 2002);
}

TEST(Parse, aYearInFrontIsReadAlikeInEveryOrder)
{
    const Json answer = run(onPack({"parse", "--locale", "de-de", "2005-12-31"})).object();
    EXPECT_EQ(answer["ambiguous"], false);
    EXPECT_TRUE(answer["alternatives"].empty());
    EXPECT_EQ(answer["used"]["dateOrder"], "ymd");
    EXPECT_EQ(answer["used"]["dateSeparator"], ".");
}

TEST(Parse, tellsTheOrderThatTheParserUsed)
{
    const auto orderOf = [](const Arguments& arguments) {
        Arguments all = {"parse", "--locale", "en-us"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return run(onPack(all)).object()["used"]["dateOrder"];
    };
    EXPECT_EQ(orderOf({"12/31/2005"}), "mdy");
    EXPECT_EQ(orderOf({"10:30:45 2005-12-31"}), "ymd") << "the first number is an hour, the date begins with its year";
    EXPECT_EQ(orderOf({"12/31 10:30:45 2005"}), "mdy") << "a year that comes last makes nothing year-first";
    EXPECT_EQ(orderOf({"--expect", "year-month", "12 2005"}), "myd");
    EXPECT_EQ(orderOf({"--user", "dateOrder=ymd", "--expect", "month-day", "2/3"}), "mdy");
    EXPECT_EQ(orderOf({"10:30"}), "mdy");
}

TEST(Parse, aTextThatCannotBeReadExitsWithOne)
{
    const Outcome outcome = run(onPack({"parse", "--locale", "en-us", "31/12/2005"}));
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_EQ(outcome.object()["result"], 0);
    EXPECT_EQ(outcome.object()["ambiguous"], false);
    ASSERT_EQ(outcome.object()["alternatives"].size(), 1U);
    EXPECT_EQ(outcome.object()["alternatives"][0]["dateOrder"], "dmy");
}

TEST(Parse, takesTheUsersOverrides)
{
    const Json answer = run(onPack({"parse", "--locale", "en-us", "--user", "dateOrder=dmy", "31/12/2005"})).object();
    EXPECT_EQ(answer["month"], 12);
    EXPECT_EQ(answer["day"], 31);
    EXPECT_EQ(answer["used"]["dateOrder"], "dmy");
}

TEST(Parse, takesATextBehindTheMarkAndExpectations)
{
    // The sign is skipped.
    EXPECT_EQ(run(onPack({"parse", "--locale", "en-us", "--", "-2005"})).object()["fields"],
              Json::parse(R"(["year"])"));
    const Json time = run(onPack({"parse", "--locale", "en-us", "--expect", "time", "10:30"})).object();
    EXPECT_EQ(time["result"], 24);
    EXPECT_EQ(time["hour"], 10);
    EXPECT_EQ(time["minute"], 30);
}

TEST(Parse, saysWhatIsWrongInItsUsage)
{
    const Outcome expectation = run(onPack({"parse", "--locale", "en-us", "--expect", "week", "1"}));
    EXPECT_EQ(expectation.m_nExit, 2);
    EXPECT_NE(expectation.m_sError.find("--expect week"), std::string::npos);
    EXPECT_EQ(run(onPack({"parse", "1"})).m_nExit, 2);
    const Outcome unknown = run(onPack({"parse", "--locale", "xx-yy", "1"}));
    EXPECT_EQ(unknown.m_nExit, 1);
    EXPECT_NE(unknown.m_sError.find("xx-yy: there is no locale of that name"), std::string::npos);
}

TEST(ParseXml, answersTypeAndFields)
{
    const Json answer = run({"--json", "parse-xml", "2005-12-31T23:59:59.123Z"}).object();
    EXPECT_EQ(answer["type"], "kXmlDateTime");
    EXPECT_EQ(answer["year"], 2005);
    EXPECT_EQ(answer["second"], 59);
    EXPECT_EQ(answer["fraction"], 123000000);
    EXPECT_EQ(run({"--json", "parse-xml", "--", "--12-25"}).object()["type"], "kXmlMonthDay");
}

TEST(ParseXml, anInvalidTextExitsWithOneUnlessInABatch)
{
    const Outcome invalid = run({"--json", "parse-xml", "2005-12-31T24:00:00"});
    EXPECT_EQ(invalid.m_nExit, 1);
    EXPECT_EQ(invalid.object()["type"], "kInvalid");
    EXPECT_FALSE(invalid.object().contains("year"));
    Setting setting;
    setting.m_sInput = "\n2005\n";
    const Outcome batch = run({"--json", "parse-xml", "-"}, setting);
    EXPECT_EQ(batch.m_nExit, 0);
    ASSERT_EQ(batch.objects().size(), 2U);
    EXPECT_EQ(batch.objects()[0]["type"], "kInvalid");
    EXPECT_EQ(batch.objects()[1]["type"], "kXmlYear");
}

}  // namespace clitest
