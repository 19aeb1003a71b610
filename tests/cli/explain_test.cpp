#include <gtest/gtest.h>

#include "command.h"

namespace clitest {

TEST(Explain, answersWithTheShownKeysInTheirOrder)
{
    const Outcome outcome = run(onFolder({"--json", "explain", "fr-CA,fr;q=0.9,en;q=0.8"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sError, "");
    EXPECT_EQ(outcome.m_sOut, R"({"input":"fr-CA,fr;q=0.9,en;q=0.8","language":"fr","locale":"fr-ca",)"
                              R"("rule":{"index":0,"matches":"fr-CA*","definition":"fr-ca"},"skipped":[]})"
                              "\n");
}

TEST(Explain, forPeopleTheFactsStandOnLines)
{
    EXPECT_EQ(run(onFolder({"explain", "de"})).m_sOut,
              "input: de\nlanguage: en\nlocale: en-us\nrule: 2 \"*\" -> en-us\n");
}

TEST(Explain, rulesThatWerePassedOverAreNamedWithTheirReason)
{
    const Outcome outcome = run(onFolder({"--json", "--mapping", dataFile("skipping.xml"), "explain", "de-AT,de"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    const Json answer = outcome.object();
    EXPECT_EQ(answer["locale"], "fr-ca");
    EXPECT_EQ(answer["rule"], Json::parse(R"({"index":3,"matches":"de-*","definition":"FR-CA"})"));
    EXPECT_EQ(answer["skipped"],
              Json::parse(R"([{"index":0,"matches":"de-AT*","definition":"de-at","reason":"not allowed"},
                              {"index":1,"matches":"de*","definition":"de-de","reason":"not allowed"},
                              {"index":2,"matches":"d*","definition":"","reason":"no target"}])"));
}

TEST(Explain, withoutARuleTheBuiltInLocaleIsAnAnswer)
{
    const Outcome outcome = run(onFolder({"--json", "--mapping", dataFile("skipping.xml"), "explain", "ja"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_TRUE(outcome.object()["rule"].is_null());
    EXPECT_EQ(outcome.object()["locale"], "en-us");
    EXPECT_EQ(run(onFolder({"--mapping", dataFile("skipping.xml"), "explain", "ja"})).m_sOut,
              "input: ja\nlanguage: en\nlocale: en-us\nrule: none (the built-in locale)\n");
}

TEST(Explain, aLanguageThatIsAskedForIsTaken)
{
    EXPECT_EQ(run(onFolder({"--json", "explain", "fr", "--language", "pt"})).object()["language"], "pt");
}

TEST(Explain, controlCharactersAreSpelledOutForPeople)
{
    EXPECT_EQ(run(onFolder({"explain", "a\tb\n\x01"})).lines().at(0), R"(input: a\tb\n\u{1})");
}

TEST(Explain, theGeneratedPackAnswersTheFirstQuestion)
{
    const Outcome outcome = run({"--data", packFolder(), "explain", "--json", "fr-CA,fr;q=0.9,en;q=0.8"});
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.object()["locale"], "fr-ca");
    EXPECT_EQ(outcome.object()["language"], "fr");
}

}  // namespace clitest
