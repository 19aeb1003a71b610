#include <gtest/gtest.h>

#include "command.h"

namespace clitest {

TEST(Languages, areTheConfiguredOnes)
{
    EXPECT_EQ(run(onFolder({"--json", "languages"})).m_sOut, "{\"languages\":[\"en\",\"fr\"]}\n");
    EXPECT_EQ(run(onFolder({"languages"})).m_sOut, "languages: en fr\n");
}

TEST(Languages, emptyCodesAreKept)
{
    const Outcome outcome =
        run({"--data", "none", "--set", "Localization/AllowedLanguages=en,,fr ", "--json", "languages"});
    EXPECT_EQ(outcome.m_sOut, "{\"languages\":[\"en\",\"\",\"fr\"]}\n");
}

TEST(Languages, noneIsAnEmptyList)
{
    const Outcome outcome = run({"--data", "none", "languages", "--json"});
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sOut, "{\"languages\":[]}\n");
}

}  // namespace clitest
