#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.h"

namespace clitest {

using testing::HasSubstr;

namespace {

Outcome logged(const Arguments& options)
{
    Arguments all = {"--definitions", dataFile("check/definitions-date-order-case.xml")};
    all.insert(all.end(), options.begin(), options.end());
    all.push_back("locales");
    return run(onFolder(all));
}

}  // namespace

TEST(Log, isSilentByItself)
{
    EXPECT_EQ(logged({}).m_sError, "");
}

TEST(Log, writesALineForPeople)
{
    EXPECT_EQ(logged({"--log", "warning"}).m_sError,
              "webi18n: warning: Invalid date order string 'MDY'. [vel.i18n.xmllocale.applyDefinition]\n");
}

TEST(Log, writesAnObjectWithJson)
{
    const Outcome outcome = logged({"--json", "--log", "information"});
    EXPECT_EQ(outcome.m_sError, R"({"severity":"warning","source":"vel.i18n.xmllocale.applyDefinition",)"
                                R"("message":"Invalid date order string 'MDY'.","properties":{}})"
                                "\n");
    EXPECT_EQ(outcome.objects().size(), 3U);
}

}  // namespace clitest
