#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.h"

// "-" takes standard input line by line.

namespace clitest {

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::vector<std::string> inputsOf(const Outcome& outcome)
{
    std::vector<std::string> inputs;
    for (const Json& each : outcome.objects()) {
        inputs.push_back(each["input"]);
    }
    return inputs;
}

Outcome explainLines(const std::string& input)
{
    Setting setting;
    setting.m_sInput = input;
    return run(onFolder({"--json", "explain", "-"}), setting);
}

}  // namespace

TEST(Batch, eachLineHasOneAnswer)
{
    const Outcome outcome = explainLines("fr\n\nen-GB,en\n");
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(inputsOf(outcome), ElementsAre("fr", "", "en-GB,en"));
}

TEST(Batch, aCarriageReturnBelongsToTheText)
{
    EXPECT_THAT(inputsOf(explainLines("fr\r\n")), ElementsAre("fr\r"));
}

TEST(Batch, theLastLineCountsWithoutALineFeed)
{
    EXPECT_THAT(inputsOf(explainLines("fr\nde")), ElementsAre("fr", "de"));
    EXPECT_THAT(inputsOf(explainLines("fr\n")), ElementsAre("fr"));
    EXPECT_TRUE(explainLines("").m_sOut.empty());
    EXPECT_EQ(explainLines("").m_nExit, 0);
}

TEST(Batch, aZeroCharacterIsText)
{
    EXPECT_THAT(inputsOf(explainLines(std::string("fr\0x\nde\n", 8))), ElementsAre(std::string("fr\0x", 4), "de"));
}

TEST(Batch, linesOfTenMegabytesAreAnswered)
{
    const std::string longLine = "fr-CA" + std::string(10'000'000, 'x');
    const Outcome outcome = explainLines(longLine + "\nfr\n");
    ASSERT_EQ(outcome.objects().size(), 2U);
    EXPECT_EQ(outcome.objects()[0]["input"].get<std::string>().size(), longLine.size());
    EXPECT_EQ(outcome.objects()[0]["locale"], "fr-ca");
    EXPECT_EQ(outcome.objects()[1]["locale"], "fr-fr");
}

TEST(Batch, invalidUtf8EndsItWithTheLineAndTheOffset)
{
    const Outcome outcome = explainLines("fr\nde\xC0\xAF\nen\n");
    EXPECT_EQ(outcome.m_nExit, 2);
    EXPECT_THAT(inputsOf(outcome), ElementsAre("fr"));
    EXPECT_THAT(outcome.m_sError, HasSubstr("standard input, line 2: invalid UTF-8 at byte offset 2"));
}

TEST(Batch, aBatchExitsWithZeroWhateverItsAnswers)
{
    Setting setting;
    setting.m_sInput = "xx-xx\nfr-fr\n";
    const Outcome locales = run(onFolder({"--json", "locale", "-"}), setting);
    EXPECT_EQ(locales.m_nExit, 0);
    ASSERT_EQ(locales.objects().size(), 2U);
    EXPECT_EQ(locales.objects()[0]["locale"], "xx-xx");
    EXPECT_THAT(locales.objects()[0]["error"].get<std::string>(), HasSubstr("no locale"));
    EXPECT_EQ(locales.objects()[1]["locale"], "fr-fr");
    EXPECT_EQ(run(onFolder({"data-format", "-"}), setting).m_nExit, 0);
}

TEST(Batch, forPeopleEachAnswerIsOneLineToo)
{
    Setting setting;
    setting.m_sInput = "fr\nfr-fr\n";
    EXPECT_THAT(run(onFolder({"explain", "-"}), setting).lines(),
                ElementsAre("input: fr\tlanguage: fr\tlocale: fr-fr\trule: 1 \"fr*\" -> fr-fr",
                            "input: fr-fr\tlanguage: fr\tlocale: fr-fr\trule: 1 \"fr*\" -> fr-fr"));
    EXPECT_EQ(run(onFolder({"locale", "-"}), setting).lines().size(), 2U);
    EXPECT_THAT(run(onFolder({"data-format", "-"}), setting).lines(),
                ElementsAre("text: \"fr\"\tvalid: false", "text: \"fr-fr\"\tvalid: false"));
}

TEST(Batch, anAnswerIsThereBeforeTheNextLineIsSent)
{
    Dialogue dialogue(onFolder({"--json", "explain", "-"}));
    EXPECT_EQ(Json::parse(dialogue.ask("fr-CA"))["locale"], "fr-ca");
    EXPECT_EQ(Json::parse(dialogue.ask(""))["locale"], "en-us");
    EXPECT_EQ(Json::parse(dialogue.ask(std::string(50'000, 'x')))["locale"], "en-us");
    EXPECT_EQ(Json::parse(dialogue.ask("fr"))["locale"], "fr-fr");
    EXPECT_EQ(dialogue.finish(), 0);
}

}  // namespace clitest
