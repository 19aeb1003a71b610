#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testsupport::TemporaryFolder;

namespace {

std::vector<std::string> tagsOf(const Outcome& outcome)
{
    std::vector<std::string> tags;
    for (const Json& each : outcome.objects()) {
        tags.push_back(each["tag"]);
    }
    return tags;
}

std::string captionOf(Arguments arguments)
{
    arguments.insert(arguments.begin(), {"--json", "currency"});
    return run(onFolder(arguments)).object()["caption"];
}

std::string nameOf(Arguments arguments)
{
    arguments.insert(arguments.begin(), {"--json", "currency"});
    return run(onFolder(arguments)).object()["name"];
}

/// A currencies file of one element below the folder.
std::string fileOf(const TemporaryFolder& folder, const std::string& name, const std::string& elements)
{
    return folder.write(name, "<Currencies>" + elements + "</Currencies>").toNative();
}

}  // namespace

TEST(CurrencyCommand, anInternationalOneHasTheShownKeysInTheirOrder)
{
    const Outcome outcome = run(onFolder({"--json", "currency", "EUR"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sError, "");
    EXPECT_EQ(outcome.m_sOut, R"j({"tag":"EUR","type":"international","symbol":"EUR","digits":2,"format":"# $",)j"
                              R"j("negativeFormats":{"minus":"-# $","parens":"(# $)"},"preferredNegativeTag":"minus",)j"
                              R"j("display":true,"placeholder":false,"thousandsSeparator":true,)j"
                              R"j("caption":"Euro (EUR)","name":"Euro"})j"
                              "\n");
}

TEST(CurrencyCommand, aLocalOneIsCaptionedByItsSymbolAndItsLocale)
{
    EXPECT_EQ(run(onFolder({"--json", "currency", "loc:fr-fr"})).m_sOut,
              "{\"tag\":\"loc:fr-fr\",\"type\":\"local\",\"symbol\":\"€\",\"digits\":2,\"format\":\"#\u00A0$\","
              "\"negativeFormats\":{\"minus\":\"-#\u00A0$\",\"parens\":\"(#\u00A0$)\",\"trailing\":\"#\u00A0$-\"},"
              "\"preferredNegativeTag\":\"trailing\",\"display\":true,\"placeholder\":true,"
              "\"thousandsSeparator\":false,\"caption\":\"€ (French (France))\",\"name\":\"€ (French (France))\"}\n");
}

TEST(CurrencyCommand, forPeopleTheSameFactsStandOnLines)
{
    EXPECT_THAT(run(onFolder({"currency", "loc:fr-fr"})).lines(),
                ElementsAre("tag: \"loc:fr-fr\"", "type: \"local\"", "symbol: \"€\"", "digits: 2",
                            "format: \"#\u00A0$\" (U+00A0)", "negativeFormats minus: \"-#\u00A0$\" (U+00A0)",
                            "negativeFormats parens: \"(#\u00A0$)\" (U+00A0)",
                            "negativeFormats trailing: \"#\u00A0$-\" (U+00A0)", "preferredNegativeTag: \"trailing\"",
                            "display: true", "placeholder: true", "thousandsSeparator: false",
                            "caption: \"€ (French (France))\"", "name: \"€ (French (France))\""));
}

TEST(CurrencyCommand, captionsAreInTheLanguageAndElseInEnglish)
{
    EXPECT_EQ(captionOf({"EUR", "--language", "fr"}), "euro (EUR)");
    EXPECT_EQ(nameOf({"EUR", "--language", "fr"}), "Euro");
    EXPECT_EQ(captionOf({"XAU", "--language", "fr"}), "Gold");
    EXPECT_EQ(captionOf({"loc:fr-fr", "--language", "fr"}), "français (France) : €");
    EXPECT_EQ(captionOf({"loc:fr-fr", "--language", "xx"}), "€ (French (France))");
    EXPECT_EQ(captionOf({"EUR", "--language", "../fr"}), "Euro (EUR)");
}

TEST(CurrencyCommand, aLocaleGivesTheLanguageWhereNoneIsAskedFor)
{
    EXPECT_EQ(captionOf({"EUR", "--locale", "fr-fr"}), "euro (EUR)");
    EXPECT_EQ(captionOf({"EUR", "--locale", "FR-ca"}), "euro (EUR)");
    EXPECT_EQ(captionOf({"EUR", "--locale", "en-us"}), "Euro (EUR)");
    EXPECT_EQ(captionOf({"EUR", "--locale", "fr-fr", "--language", "en"}), "Euro (EUR)");
    EXPECT_EQ(captionOf({"loc:en-us", "--locale", "fr-fr"}), "anglais (États-Unis) : $");
    EXPECT_EQ(captionOf({"EUR", "--locale="}), "Euro (EUR)");
}

TEST(CurrencyCommand, aLocaleThatIsNotAllowedExitsWithOneAndSaysWhy)
{
    for (const char* subcommand : {"currency", "currencies"}) {
        Arguments arguments = onFolder({subcommand, "--locale", "de-de"});
        Arguments unknown = onFolder({subcommand, "--locale", "xx-yy"});
        if (subcommand == std::string("currency")) {
            arguments.emplace_back("EUR");
            unknown.emplace_back("EUR");
        }
        EXPECT_EQ(run(arguments).m_nExit, 1);
        EXPECT_EQ(run(arguments).m_sOut, "");
        EXPECT_THAT(run(arguments).m_sError, HasSubstr("de-de: the locale is defined but not allowed"));
        EXPECT_THAT(run(unknown).m_sError, HasSubstr("xx-yy: there is no locale of that name"));
    }
}

TEST(CurrencyCommand, withoutMessagesAnInternationalOneIsItsSymbolWhateverItsLocale)
{
    EXPECT_EQ(captionOf({"JPY"}), "JPY");
    EXPECT_EQ(nameOf({"JPY"}), "JPY");
    EXPECT_EQ(captionOf({"JPY", "--locale", "fr-fr"}), "JPY");
}

TEST(CurrencyCommand, aLocalOneOfALocaleThatIsNotAllowedIsItsSymbol)
{
    EXPECT_EQ(captionOf({"loc:de-de"}), "€");
    EXPECT_EQ(captionOf({"loc:de-de", "--set", "Localization/AllowedLocales=de-de"}), "€ (de-de)");
}

TEST(CurrencyCommand, withoutANameTheCaptionIsTheName)
{
    EXPECT_EQ(nameOf({"XAU"}), "Gold");
    EXPECT_EQ(nameOf({"EUR"}), "Euro");
}

TEST(CurrencyCommand, withoutDigitsTheyAreMinusOne)
{
    EXPECT_EQ(run(onFolder({"--json", "currency", "XAU"})).object()["digits"], -1);
    EXPECT_EQ(run(onFolder({"--json", "currency", "XAU"})).object()["display"], false);
}

TEST(CurrencyCommand, aSymbolLeadsToTheLastCurrencyThatHasIt)
{
    EXPECT_EQ(run(onFolder({"--json", "currency", "--symbol", "€"})).object()["tag"], "loc:fr-fr");
    EXPECT_EQ(run(onFolder({"--json", "currency", "--symbol", "$"})).object()["tag"], "loc:en-us");
    EXPECT_EQ(run(onFolder({"--json", "currency", "--symbol=EUR"})).object()["tag"], "EUR");
    const TemporaryFolder folder;
    const std::string file =
        fileOf(folder, "c.xml", "<Currency tag='a' type='local'/><Currency tag='b' type='local'/>");
    EXPECT_EQ(run(onFolder({"--currencies", file, "--json", "currency", "--symbol="})).object()["tag"], "b");
}

TEST(CurrencyCommand, whatIsNotThereExitsWithOneAndSaysSo)
{
    for (const char* tag : {"XYZ", "eur", "EUR ", "", "loc:DE-de"}) {
        SCOPED_TRACE(tag);
        const Outcome outcome = run(onFolder({"--json", "currency", tag}));
        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_EQ(outcome.m_sOut, "");
        EXPECT_THAT(outcome.m_sError, HasSubstr("\"" + std::string(tag) + "\": there is no currency of that tag"));
    }
    const Outcome symbol = run(onFolder({"currency", "--symbol", "₿"}));
    EXPECT_EQ(symbol.m_nExit, 1);
    EXPECT_THAT(symbol.m_sError, HasSubstr("\"₿\": there is no currency of that symbol"));
}

TEST(CurrencyCommand, wrongUsageExitsWithTwo)
{
    EXPECT_EQ(run(onFolder({"currency"})).m_nExit, 2);
    EXPECT_THAT(run(onFolder({"currency"})).m_sError, HasSubstr("a TAG, such as EUR, or --symbol S"));
    EXPECT_EQ(run(onFolder({"currency", "EUR", "--symbol", "$"})).m_nExit, 2);
    EXPECT_EQ(run(onFolder({"currency", "EUR", "USD"})).m_nExit, 2);
    EXPECT_EQ(run(onFolder({"currencies", "EUR"})).m_nExit, 2);
    EXPECT_EQ(run(onFolder({"currency", "--symbol", "\xFF"})).m_nExit, 2);
}

TEST(CurrencyCommand, aBatchAnswersEachTagOnALine)
{
    Setting setting;
    setting.m_sInput = "EUR\nXYZ\n\nloc:fr-fr\n";
    const Outcome outcome = run(onFolder({"--json", "currency", "-", "--language", "fr"}), setting);
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_sError, "");
    ASSERT_EQ(outcome.lines().size(), 4U);
    EXPECT_EQ(outcome.objects()[0]["caption"], "euro (EUR)");
    EXPECT_EQ(outcome.lines()[1], R"({"tag":"XYZ","error":"there is no currency of that tag"})");
    EXPECT_EQ(outcome.lines()[2], R"({"tag":"","error":"there is no currency of that tag"})");
    EXPECT_EQ(outcome.objects()[3]["caption"], "français (France) : €");
    const std::vector<std::string> lines = run(onFolder({"currency", "-"}), setting).lines();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_THAT(lines[0], StartsWith("tag: \"EUR\"\ttype: \"international\"\tsymbol: \"EUR\"\tdigits: 2\t"));
    EXPECT_EQ(lines[1], "tag: \"XYZ\"\terror: there is no currency of that tag");
}

TEST(CurrencyCommand, aLoneHyphenIsATagAfterTheMarkAndASymbolInItsOption)
{
    const TemporaryFolder folder;
    const std::string file = fileOf(folder, "c.xml", "<Currency tag='-' symbol='-' type='local'/>");
    EXPECT_EQ(run(onFolder({"--currencies", file, "--json", "currency", "--", "-"})).object()["tag"], "-");
    EXPECT_EQ(run(onFolder({"--currencies", file, "--json", "currency", "--symbol", "-"})).object()["tag"], "-");
}

TEST(CurrencyCommand, controlCharactersOfAFileAreSpelledOutForPeople)
{
    const TemporaryFolder folder;
    const std::string file =
        fileOf(folder, "c.xml", "<Currency tag='t' type='local'><negative tag='a&#10;b' format='&#9;#'/></Currency>");
    EXPECT_THAT(run(onFolder({"--currencies", file, "currency", "t"})).m_sOut,
                HasSubstr("\nnegativeFormats a\\nb: \"\\t#\"\n"));
}

TEST(CurrencyCommand, currenciesAreLoadedBehindTheFoldersInTheirOrder)
{
    const TemporaryFolder folder;
    const std::string first = fileOf(
        folder, "1.xml", "<Currency tag='XBT' type='international' symbol='1'/><Currency tag='EUR' type='local'/>");
    const std::string second = fileOf(folder, "2.xml", "<Currency tag='XBT' type='international' symbol='2'/>");
    const Arguments files = {"--currencies", first, "--json", "--currencies", second};
    const auto with = [&files](Arguments more) {
        more.insert(more.begin(), files.begin(), files.end());
        return run(onFolder(more));
    };
    EXPECT_EQ(with({"currency", "XBT"}).object()["symbol"], "2");
    EXPECT_EQ(with({"currency", "EUR"}).object()["type"], "local");
    EXPECT_EQ(with({"currency", "--symbol", "1"}).object()["symbol"], "1");
    // The list keeps what a later one hides.
    EXPECT_THAT(tagsOf(with({"currencies"})),
                ElementsAre("EUR", "JPY", "XAU", "loc:en-us", "loc:de-de", "loc:fr-fr", "XBT", "EUR", "XBT"));
}

TEST(CurrencyCommand, aFileThatCannotBeReadExitsWithThree)
{
    const TemporaryFolder folder;
    const std::string bad = folder.write("bad.xml", "<Currencies>\n  <Currency\n").toNative();
    for (const Arguments& arguments : {Arguments{"currency", "EUR"}, {"currency", "--symbol", "$"}, {"currencies"}}) {
        Arguments all = onFolder({"--currencies", bad});
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Outcome outcome = run(all);
        EXPECT_EQ(outcome.m_nExit, 3);
        EXPECT_EQ(outcome.m_sOut, "");
        EXPECT_THAT(outcome.m_sError, StartsWith(bad + ":"));
    }
    EXPECT_EQ(run(onFolder({"--currencies", "nowhere.xml", "currencies"})).m_nExit, 3);
    EXPECT_EQ(run(onFolder({"--currencies", bad, "languages"})).m_nExit, 0);
}

TEST(CurrencyCommand, anInternationalOneNeedsNoDefinitions)
{
    const TemporaryFolder folder;
    folder.write("localedefinitions.xml", "<broken");
    fileOf(folder, "currencies.xml",
           "<Currency tag='A' type='international' symbol='a'/><Currency tag='L' type='local' symbol='l'/>");
    const std::string data = folder.native().string();
    const Outcome outcome = run({"--data", data, "--json", "currency", "A"});
    EXPECT_EQ(outcome.object()["caption"], "a");
    EXPECT_EQ(outcome.m_sError, "");
    EXPECT_EQ(run({"--data", data, "currency", "L"}).m_nExit, 3);
}

TEST(CurrencyCommand, withoutCurrenciesThatIsSaid)
{
    const Outcome all = run({"--data", "none", "currencies"});
    EXPECT_EQ(all.m_nExit, 0);
    EXPECT_EQ(all.m_sOut, "");
    EXPECT_THAT(all.m_sError, HasSubstr("there are no currencies: "));
    EXPECT_EQ(run({"--data", "none", "currency", "EUR"}).m_nExit, 1);
}

TEST(CurrencyCommand, theLoadersRecordsAreLogged)
{
    const TemporaryFolder folder;
    const std::string file = fileOf(folder, "c.xml", "<Currency type='local'/>");
    const Outcome outcome = run(onFolder({"--currencies", file, "--log", "warning", "currency", "EUR"}));
    EXPECT_THAT(outcome.m_sError, HasSubstr("Skipping element with blank tag or type: <Currency type=\"local\"/>"));
    EXPECT_THAT(outcome.m_sError, HasSubstr("[vel.i18n.currencyLookup.loadCurrencies]"));
}

TEST(CurrenciesCommand, eachStandsOnALineAsCurrencyShowsIt)
{
    const Outcome outcome = run(onFolder({"--json", "currencies", "--locale", "fr-fr"}));
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(tagsOf(outcome), ElementsAre("EUR", "JPY", "XAU", "loc:en-us", "loc:de-de", "loc:fr-fr"));
    EXPECT_EQ(outcome.lines()[3] + "\n", run(onFolder({"--json", "currency", "loc:en-us", "--language", "fr"})).m_sOut);
    EXPECT_THAT(run(onFolder({"currencies"})).lines()[1],
                StartsWith("tag: \"JPY\"\ttype: \"international\"\tsymbol: \"JPY\"\tdigits: 0\tformat: \"# $\"\t"));
}

TEST(CurrenciesCommand, aHundredThousandAndVeryManyNegativeFormatsAreShown)
{
    const TemporaryFolder folder;
    std::string elements = "<Currency tag='many' type='local'>";
    for (int number = 0; number < 100'000; ++number) {
        elements += "<negative tag='n" + std::to_string(number) + "' format='-$#'/>";
    }
    elements += "</Currency>";
    for (int number = 0; number < 100'000; ++number) {
        elements += "<Currency tag='t" + std::to_string(number) + "' type='international' symbol='s'/>\n";
    }
    const std::string file = fileOf(folder, "c.xml", elements);
    const Outcome outcome = run({"--data", "none", "--currencies", file, "--json", "currencies"});
    EXPECT_EQ(outcome.m_nExit, 0);
    const std::vector<std::string> lines = outcome.lines();
    ASSERT_EQ(lines.size(), 100'001U);
    EXPECT_THAT(lines.front(), HasSubstr(R"("minus":"-$#","n0":"-$#",)"));
    EXPECT_THAT(lines.front(), HasSubstr(R"("n99999":"-$#","parens":)"));
    EXPECT_THAT(lines.back(), StartsWith(R"({"tag":"t99999",)"));
    const Outcome last = run({"--data", "none", "--currencies", file, "--json", "currency", "--symbol", "s"});
    EXPECT_EQ(last.object()["tag"], "t99999");
}

TEST(CurrencyCommand, theGeneratedPackShowsRecordsWithCaptions)
{
    const Json euro = run({"--data", packFolder(), "currency", "--json", "EUR", "--locale", "de-de"}).object();
    EXPECT_EQ(euro["type"], "international");
    EXPECT_EQ(euro["digits"], 2);
    EXPECT_EQ(euro["name"], "Euro");
    EXPECT_EQ(euro["caption"], "Euro (EUR)");
    const Json yen = run({"--data", packFolder(), "currency", "--json", "loc:ja-jp"}).object();
    EXPECT_EQ(yen["type"], "local");
    EXPECT_EQ(yen["digits"], 0);
    EXPECT_EQ(yen["caption"], "￥ (Japanese (Japan))");
    EXPECT_EQ(run({"--data", packFolder(), "--json", "currency", "USD", "--locale", "de-de"}).object()["name"],
              "US-Dollar");
    EXPECT_EQ(run({"--data", packFolder(), "--json", "currency", "--symbol", "$"}).object()["tag"], "loc:en-us");
}

}  // namespace clitest
