#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Locales, oneLineForEachAllowedLocaleByName)
{
    const Outcome outcome = run(onFolder({"--json", "locales"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.lines(),
                ElementsAre(R"j({"locale":"en-us","name":"English (United States)","defaultLanguage":"en"})j",
                            R"j({"locale":"fr-ca","name":"French (Canada)","defaultLanguage":"fr"})j",
                            R"j({"locale":"fr-fr","name":"French (France)","defaultLanguage":"fr"})j"));
}

TEST(Locales, aNameThatTheLanguageLacksIsTheEnglishOne)
{
    EXPECT_THAT(
        run(onFolder({"locales", "--language", "fr"})).lines(),
        ElementsAre("en-us\tanglais (États-Unis)\ten", "fr-ca\tFrench (Canada)\tfr", "fr-fr\tfrançais (France)\tfr"));
    EXPECT_THAT(run(onFolder({"locales", "--language", "xx"})).lines().at(0), HasSubstr("English (United States)"));
    EXPECT_THAT(run(onFolder({"locales", "--language", "../en"})).lines().at(0), HasSubstr("English (United States)"));
}

TEST(Locales, aNameThatNoLanguageHasIsTheDefinitions)
{
    const Outcome outcome = run({"--data", "none", "--definitions", dataFile("folder/localedefinitions.xml"), "--set",
                                 "Localization/AllowedLocales=de-de,en-us", "--json", "locales"});
    EXPECT_THAT(outcome.lines(), ElementsAre(R"j({"locale":"de-de","name":"de-de","defaultLanguage":"de"})j",
                                             R"j({"locale":"en-us","name":"en-us","defaultLanguage":"en"})j"));
}

TEST(Locales, aNameOfSeveralLinesStaysOnOneForPeople)
{
    const testsupport::TemporaryFolder folder;
    folder.write("messages/en/i18nmessages.xml",
                 "<messages><message key=\"kmsgName_frCA\">French\n(Canada)</message></messages>");
    const Outcome outcome =
        run({"--data", folder.native().string(), "--definitions", dataFile("folder/localedefinitions.xml"), "--set",
             "Localization/AllowedLocales=fr-ca", "locales"});
    EXPECT_EQ(outcome.m_sOut, "fr-ca\tFrench\\n(Canada)\tfr\n");
}

TEST(Locales, messagesOfAFolderOfTheirOwnStandOnTop)
{
    const testsupport::TemporaryFolder own;
    own.write("en/i18nmessages.xml", "<messages><message key=\"kmsgName_frCA\">Quebec</message></messages>");
    EXPECT_THAT(run(onFolder({"--messages", own.native().string(), "locales"})).lines(),
                ElementsAre("en-us\tEnglish (United States)\ten", "fr-ca\tQuebec\tfr", "fr-fr\tFrench (France)\tfr"));
    const Outcome missing = run(onFolder({"--messages", own.native().string() + "/none", "locales"}));
    EXPECT_EQ(missing.m_nExit, 3);
    EXPECT_THAT(missing.m_sError, HasSubstr("messages folder"));
}

TEST(Locales, noAllowedLocaleIsSaid)
{
    const Outcome outcome = run(onFolder({"--set", "Localization/AllowedLocales=xx", "locales"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_THAT(outcome.m_sError, HasSubstr("no locale is allowed"));
}

}  // namespace clitest
