#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

using testing::ElementsAre;
using testing::HasSubstr;
using testsupport::TemporaryFolder;

namespace {

/// Definitions and lists of their own, and nothing else.
class Charsets : public testing::Test
{
protected:
    Arguments withFiles(const Arguments& arguments) const
    {
        Arguments all = {"--data", "none", "--charsets", m_sSets, "--charset-lists", m_sLists};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return all;
    }

    TemporaryFolder m_tFolder;
    std::string m_sSets =
        m_tFolder
            .write("sets.xml",
                   "<characterSets><characterSet name='utf-8'><impl>UTF-8</impl></characterSet><characterSet "
                   "name='Latin'><impl>no-such-transcoder</impl><impl>windows-1252</impl><impl>latin1</impl>"
                   "</characterSet><characterSet name='koi8-r'><impl>koi8-r</impl></characterSet><characterSet "
                   "name='gone'><impl>no-such-transcoder</impl></characterSet></characterSets>")
            .toNative();
    std::string m_sLists =
        m_tFolder
            .write("lists.xml",
                   "<l><characterSetList name='server'><characterSet name='utf-8'/><characterSet name='latin' "
                   "label='iso-8859-1'/></characterSetList><characterSetList name='western'><characterSet "
                   "name='koi8-r'/><characterSet name='Latin'/></characterSetList><characterSetList name='russian'>"
                   "<characterSet name='koi8-r'/></characterSetList></l>")
            .toNative();
};

Arguments encoding(const std::string& label, const std::string& policy = "")
{
    Arguments arguments = {"--data", packFolder(), "encode", "--charset", label};
    if (!policy.empty()) {
        arguments.insert(arguments.end(), {"--unencodable", policy});
    }
    return arguments;
}

Outcome encoded(const std::string& text, const std::string& label, const std::string& policy = "")
{
    Setting setting;
    setting.m_sInput = text;
    return run(encoding(label, policy), setting);
}

}  // namespace

TEST_F(Charsets, showsEveryDefinitionWithTheTranscodersThatExist)
{
    const Outcome outcome = run(withFiles({"--json", "charsets"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sError, "");
    EXPECT_EQ(outcome.m_sOut,
              "{\"definition\":\"koi8-r\",\"implementations\":[\"koi8-r\"]}\n"
              "{\"definition\":\"Latin\",\"implementations\":[\"windows-1252\",\"latin1\"]}\n"
              "{\"definition\":\"utf-8\",\"implementations\":[\"UTF-8\"]}\n");
    EXPECT_THAT(run(withFiles({"charsets"})).lines(),
                ElementsAre("definition: koi8-r\timplementations: koi8-r",
                            "definition: Latin\timplementations: windows-1252 latin1",
                            "definition: utf-8\timplementations: UTF-8"));
}

TEST_F(Charsets, showsEveryListWithLabelsAndDefinitions)
{
    const Outcome outcome = run(withFiles({"--json", "charset-lists"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sOut,
              "{\"name\":\"russian\",\"entries\":[[\"koi8-r\",\"koi8-r\"]]}\n"
              "{\"name\":\"server\",\"entries\":[[\"utf-8\",\"utf-8\"],[\"iso-8859-1\",\"Latin\"]]}\n"
              "{\"name\":\"western\",\"entries\":[[\"koi8-r\",\"koi8-r\"],[\"Latin\",\"Latin\"]]}\n");
    EXPECT_THAT(run(withFiles({"charset-lists"})).lines(),
                ElementsAre("name: russian\tentries: koi8-r", "name: server\tentries: utf-8 iso-8859-1=Latin",
                            "name: western\tentries: koi8-r Latin"));
}

TEST_F(Charsets, choosesByThePreferredListUnderTheSupportedListsLabel)
{
    const Outcome outcome = run(withFiles({"--json", "charset", "--supported", "server", "--preferred", "WESTERN"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sOut, "{\"label\":\"iso-8859-1\",\"implementation\":\"windows-1252\"}\n");
    EXPECT_THAT(run(withFiles({"charset", "--supported", "server", "--preferred", "western"})).lines(),
                ElementsAre("label: iso-8859-1", "implementation: windows-1252"));
}

TEST_F(Charsets, withNothingInCommonTheFirstSupportedOneIsChosen)
{
    EXPECT_EQ(run(withFiles({"--json", "charset", "--supported", "server", "--preferred", "russian"})).m_sOut,
              "{\"label\":\"utf-8\",\"implementation\":\"UTF-8\"}\n");
}

TEST_F(Charsets, anUnknownListIsSaidAndExitsWithOne)
{
    const Outcome outcome = run(withFiles({"charset", "--supported", "server", "--preferred", "nowhere"}));
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_EQ(outcome.m_sError, "webi18n: error: \"nowhere\": there is no character set list of that name\n");
    EXPECT_EQ(run(withFiles({"charset", "--supported", "x", "--preferred", "server"})).m_nExit, 1);
}

TEST_F(Charsets, bothListsAreRequired)
{
    EXPECT_EQ(run(withFiles({"charset", "--supported", "server"})).m_nExit, 2);
    EXPECT_EQ(run(withFiles({"charset", "--preferred", "server"})).m_nExit, 2);
}

TEST_F(Charsets, filesAreAddedBehindTheDataFoldersAndFirstOnesStay)
{
    const Outcome outcome = run({"--data", packFolder(), "--charsets", m_sSets, "--charset-lists", m_sLists, "--json",
                                 "charset", "--supported", "server", "--preferred", "western"});
    EXPECT_EQ(outcome.m_sOut, "{\"label\":\"iso-8859-1\",\"implementation\":\"windows-1252\"}\n");
    const Outcome koi = run({"--data", packFolder(), "--charsets", m_sSets, "--charset-lists", m_sLists, "--json",
                             "charset", "--supported", "russian", "--preferred", "western"});
    EXPECT_EQ(koi.m_sOut, "{\"label\":\"koi8-r\",\"implementation\":\"ibm-878_P100-1996\"}\n");
}

TEST_F(Charsets, whatTheDataFolderLacksIsSaid)
{
    const Outcome outcome = run({"--data", "none", "charsets"});
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_THAT(outcome.m_sError, HasSubstr("there are no character sets"));
    EXPECT_THAT(run({"--data", "none", "charset-lists"}).m_sError, HasSubstr("no lists of character sets"));
}

TEST_F(Charsets, aFileThatCannotBeReadExitsWithThree)
{
    const std::string broken = m_tFolder.write("broken.xml", "<characterSets>").toNative();
    const Outcome outcome = run({"--data", "none", "--charsets", broken, "charsets"});
    EXPECT_EQ(outcome.m_nExit, 3);
    EXPECT_THAT(outcome.m_sError, HasSubstr("broken.xml:1:"));
    EXPECT_EQ(run({"--data", "none", "--charset-lists", broken, "charset-lists"}).m_nExit, 3);
}

TEST_F(Charsets, onlyWhatIsNeededIsRead)
{
    const std::string broken = m_tFolder.write("broken.xml", "<l>").toNative();
    EXPECT_EQ(run({"--data", "none", "--charsets", m_sSets, "--charset-lists", broken, "charsets"}).m_nExit, 0);
}

TEST_F(Charsets, recordsOfTheLoadersAreShown)
{
    const Outcome outcome = run(withFiles({"--log", "minor-warning", "--charset-lists", m_sLists, "charsets"}));
    EXPECT_EQ(outcome.m_sError, "");
    const std::string lists =
        m_tFolder.write("more.xml", "<l><characterSetList name='x'><characterSet name='gone'/></characterSetList></l>")
            .toNative();
    EXPECT_THAT(run(withFiles({"--log", "minor-warning", "--charset-lists", lists, "charset-lists"})).m_sError,
                HasSubstr("No matching character set definition found: gone."));
}

TEST(CharsetOfThePack, aJapaneseReaderGetsUtf8)
{
    EXPECT_EQ(
        run({"--data", packFolder(), "charset", "--supported", "supported", "--preferred", "locale:ja-jp", "--json"})
            .m_sOut,
        "{\"label\":\"utf-8\",\"implementation\":\"UTF-8\"}\n");
}

TEST(Encode, writesTheBytesOfTheCharacterSet)
{
    EXPECT_EQ(encoded("naïve €", "iso-8859-15").m_sOut, "na\xEFve \xA4");
    EXPECT_EQ(encoded("naïve €", "ISO-8859-1").m_sOut, "na\xEFve \x80");
    EXPECT_EQ(encoded("日本", "shift_jis").m_sOut, "\x93\xFA\x96\x7B");
    EXPECT_EQ(encoded("日本", "iso-2022-jp").m_sOut, "\x1B$BF|K\\\x1B(B");
    EXPECT_EQ(encoded("日本", "utf-8").m_sOut, "日本");
    EXPECT_EQ(encoded("a", "utf-16be").m_sOut, std::string("\0a", 2));
}

TEST(Encode, whatTheSetLacksBecomesAReference)
{
    EXPECT_EQ(encoded("naïve €", "koi8-r").m_sOut, "na&#239;ve &#8364;");
    EXPECT_EQ(encoded("naïve €", "koi8-r", "reference").m_sOut, "na&#239;ve &#8364;");
}

TEST(Encode, orItsSubstitute)
{
    const Outcome outcome = encoded("a€b", "koi8-r", "substitute");
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sOut,
              "a\x1A"
              "b");
}

TEST(Encode, orAnErrorWithItsPlaceBehindWhatStandsBeforeIt)
{
    const Outcome outcome = encoded("да €!", "koi8-r", "error");
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_EQ(outcome.m_sOut, "\xC4\xC1 ");
    EXPECT_EQ(outcome.m_sError, "webi18n: error: standard input: \"€\", character 4, is not in koi8-r\n");
}

TEST(Encode, keepsLineFeedsCarriageReturnsAndZeros)
{
    const std::string text("a\r\n\n\0b\n", 7);
    EXPECT_EQ(encoded(text, "windows-1251").m_sOut, text);
    EXPECT_EQ(encoded("", "windows-1251").m_sOut, "");
    EXPECT_EQ(encoded("", "windows-1251").m_nExit, 0);
}

TEST(Encode, invalidInputExitsWithTwoAndNamesTheOffset)
{
    const Outcome outcome = encoded("ab\xC3\xA9\xFFz", "utf-8");
    EXPECT_EQ(outcome.m_nExit, 2);
    EXPECT_EQ(outcome.m_sOut, "ab\xC3\xA9");
    EXPECT_THAT(outcome.m_sError, HasSubstr("standard input: invalid UTF-8 at byte offset 4\n"));
    EXPECT_THAT(encoded("ab\xE2\x82", "utf-8").m_sError, HasSubstr("offset 2\n"));
    // Far from the begin, and over the border of two pieces that are read.
    const std::string piece(200000, 'x');
    EXPECT_THAT(encoded(piece + "\xED\xA0\x80", "utf-8").m_sError, HasSubstr("offset 200000\n"));
}

TEST(Encode, charactersMayBeCutAnywhereBetweenTwoReads)
{
    // Three bytes a character: pieces of 64 KiB end within one.
    std::string text;
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        text += "日";
        expected += "\x93\xFA";
    }
    EXPECT_EQ(encoded(text, "shift_jis").m_sOut, expected);
    EXPECT_EQ(encoded("x" + text, "shift_jis").m_sOut, "x" + expected);
}

TEST(Encode, anErrorFarFromTheBeginCountsAllCharacters)
{
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "я";
    }
    EXPECT_THAT(encoded(text + "€", "koi8-r", "error").m_sError, HasSubstr("character 100001,"));
}

TEST(Encode, labelsAndPoliciesThatDoNotExistAreSaid)
{
    const Outcome outcome = encoded("x", "latin-99");
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_EQ(outcome.m_sError, "webi18n: error: \"latin-99\": there is no character set of that label\n");
    EXPECT_EQ(encoded("x", "utf-8", "ignore").m_nExit, 2);
    EXPECT_THAT(encoded("x", "utf-8", "ignore").m_sError, HasSubstr("reference, substitute and error"));
    EXPECT_EQ(run({"--data", packFolder(), "encode"}).m_nExit, 2);
}

TEST(Encode, answersBeforeItWaits)
{
    Dialogue dialogue(encoding("koi8-r"));
    EXPECT_EQ(dialogue.ask("a€"), "a&#8364;");
    EXPECT_EQ(dialogue.ask("b"), "b");
    EXPECT_EQ(dialogue.finish(), 0);
}

}  // namespace clitest
