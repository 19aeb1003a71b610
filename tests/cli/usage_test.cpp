#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "command.h"

// Options, their places, "--", and what is refused.

namespace clitest {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Usage, optionsStandBeforeOrAfterTheSubcommand)
{
    const Outcome before = run(onFolder({"--json", "explain", "fr"}));
    const Outcome after = run({"explain", "fr", "--json", "--data", dataFile("folder")});
    const Outcome between = run({"explain", "--data=" + dataFile("folder"), "--json", "fr"});
    EXPECT_EQ(before.object()["locale"], "fr-fr");
    EXPECT_EQ(after.m_sOut, before.m_sOut);
    EXPECT_EQ(between.m_sOut, before.m_sOut);
}

TEST(Usage, theLastOfAnOptionCounts)
{
    const Outcome outcome = run({"--data", "none", "explain", "--json", "--data", dataFile("folder"), "fr"});
    EXPECT_EQ(outcome.object()["locale"], "fr-fr");
}

TEST(Usage, everythingAfterTheMarkIsText)
{
    for (const std::string text : {"-x", "--json", "-", "--", "--data", "explain", "++"}) {
        SCOPED_TRACE(text);
        const Outcome outcome = run(onFolder({"--json", "explain", "--", text}));
        EXPECT_EQ(outcome.m_nExit, 0);
        EXPECT_EQ(outcome.object()["input"], text);
    }
}

TEST(Usage, textIsTakenAsItStands)
{
    for (const std::string text :
         {"", " ", "[a,b]", "{}", "%%", "a=b", "explain", "locales", "-5", "\"q\"", "a\nb", "a\r"}) {
        SCOPED_TRACE(text);
        const Outcome outcome = run(onFolder({"--json", "explain", text}));
        EXPECT_EQ(outcome.m_nExit, 0);
        EXPECT_EQ(outcome.object()["input"], text);
    }
}

TEST(Usage, anEmptyOptionValueDoesNotTakeTheNextArgument)
{
    EXPECT_EQ(run(onFolder({"explain", "--language=", "--json", "fr"})).object()["language"], "fr");
    EXPECT_EQ(run(onFolder({"explain", "--language", "", "--json", "fr"})).object()["language"], "fr");
}

TEST(Usage, wrongUsageExitsWithTwoAndSaysWhatIsAccepted)
{
    struct Row
    {
        Arguments m_tArguments;
        std::string m_sSays;
    };
    const Row rows[] = {
        {{}, "a subcommand is required: explain, locales"},
        {{"bogus"}, "explain, locales"},
        {{"explain"}, "HEADER"},
        {{"locale"}, "NAME"},
        {{"data-format"}, "TEXT"},
        {{"currency"}, "TAG"},
        {{"explain", "a", "b"}, "b"},
        {{"explain", "-x"}, "-x"},
        {{"--bogus", "languages"}, "--bogus"},
        {{"languages", "--data"}, "--data"},
        {{"--log", "loud", "languages"}, "information, minor-warning and warning"},
        {{"--set", "Localization", "languages"}, "KEY=VALUE"},
        {{"--set", "=x", "languages"}, "KEY=VALUE"},
        {{"locale", "fr-fr", "--user", "colour=red"}, "currencyTag, dateFormat, timeFormat, decimalSeparator"},
        {{"locale", "fr-fr", "--user", "dateOrder"}, "KEY=VALUE"},
        {{"locale", "fr-fr", "--user", "dateOrder=DMY"}, "mdy, dmy, ymd"},
        {{"locale", "fr-fr", "--user", "24hours=yes"}, "true and false"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.m_tArguments));
        const Outcome outcome = run(onFolder(row.m_tArguments));
        EXPECT_EQ(outcome.m_nExit, 2);
        EXPECT_EQ(outcome.m_sOut, "");
        EXPECT_THAT(outcome.m_sError, StartsWith("webi18n: error: "));
        EXPECT_THAT(outcome.m_sError, HasSubstr(row.m_sSays));
    }
}

TEST(Usage, invalidUtf8NamesTheArgumentAndTheOffset)
{
    const Outcome truncated = run({"explain", "ab\xC3"});
    EXPECT_EQ(truncated.m_nExit, 2);
    EXPECT_THAT(truncated.m_sError, HasSubstr("argument 2: invalid UTF-8 at byte offset 2"));
    const Outcome inOption = run({"--data", "\xFF", "languages"});
    EXPECT_EQ(inOption.m_nExit, 2);
    EXPECT_THAT(inOption.m_sError, HasSubstr("argument 2: invalid UTF-8 at byte offset 0"));
    const Outcome surrogate = run({"explain", "--", "x\xED\xA0\x80"});
    EXPECT_EQ(surrogate.m_nExit, 2);
    EXPECT_THAT(surrogate.m_sError, HasSubstr("argument 3: invalid UTF-8 at byte offset 1"));
}

TEST(Usage, helpAndVersionExitWithZero)
{
    const Outcome version = run({"--version"});
    EXPECT_EQ(version.m_nExit, 0);
    EXPECT_THAT(version.m_sOut, testing::MatchesRegex("webi18n [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.m_nExit, 0);
    EXPECT_EQ(help.m_sError, "");
    for (const char* word :
         {"--data",        "--config",    "--set",  "--definitions", "--currencies", "--charsets", "--charset-lists",
          "--mapping",     "--messages",  "--json", "--log",         "explain",      "locales",    "locale",
          "languages",     "data-format", "parse",  "parse-xml",     "currencies",   "currency",   "charsets",
          "charset-lists", "charset",     "encode", "sort",          "keys",         "compare",    "java",
          "check"}) {
        EXPECT_THAT(help.m_sOut, HasSubstr(word));
    }
    EXPECT_THAT(run({"explain", "--help"}).m_sOut, HasSubstr("HEADER"));
}

TEST(Usage, theManualNamesEverySubcommandAndOption)
{
    std::ifstream in(WEBI18N_MANUAL);
    const std::string manual(std::istreambuf_iterator<char>(in), {});
    for (const char* word :
         {"-data",     "-config",       "-set",           "-definitions", "-currencies",      "-mapping",
          "-messages", "-json",         "-log",           "-user",        "-symbol",          "-locale",
          "-language", "explain",       "locales",        "locale",       "languages",        "data-format",
          "parse-xml", "Cm currencies", "Cm currency",    "Cm charsets",  "Cm charset-lists", "Cm charset ",
          "Cm encode", "-charsets",     "-charset-lists", "-supported",   "-preferred",       "-unencodable",
          "Cm sort",   "Cm keys",       "Cm compare",     "Cm java",      "-strength",        "-memory",
          "-verify",   "-null",         "-ui-language",   "check"}) {
        EXPECT_THAT(manual, HasSubstr(word));
    }
}

TEST(Usage, outputThatCannotBeWrittenExitsWithThree)
{
    Setting full;
    full.m_sOutput = "/dev/full";
    const Outcome outcome = run(onFolder({"locales"}), full);
    EXPECT_EQ(outcome.m_nExit, 3);
    EXPECT_THAT(outcome.m_sError, HasSubstr("standard output cannot be written"));
}

}  // namespace clitest
