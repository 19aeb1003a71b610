#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

using testing::ElementsAre;
using testing::HasSubstr;
using testsupport::TemporaryFolder;

namespace {

std::vector<std::string> rulesOf(const Outcome& outcome)
{
    std::vector<std::string> rules;
    for (const Json& each : outcome.objects()) {
        rules.push_back(each["rule"]);
    }
    return rules;
}

/// A mapping with so many rules for the definition de-de, which the synthetic folder does not allow, from line 6 on.
std::string mappingToNotAllowed(int rules)
{
    std::string text =
        "<localeMappings><localeMapping name='httpAcceptLanguage'><choose>\n"
        "<when matches='fr-CA*'><localeDefinition name='fr-ca'/></when>\n"
        "<when matches='fr*'><localeDefinition name='fr-fr'/></when>\n"
        "<when matches='en*'><localeDefinition name='en-us'/></when>\n"
        "<when matches='de-XX*'><localeDefinition name='de-xx'/></when>\n";
    for (int number = 0; number < rules; ++number) {
        text += "<when matches='de-A" + std::string(1, static_cast<char>('A' + number)) +
                "*'><localeDefinition name='de-de'/></when>\n";
    }
    return text +
           "<when matches='*'><localeDefinition name='en-us'/></when>\n"
           "</choose></localeMapping></localeMappings>\n";
}

std::string caseFile(const std::string& name)
{
    return dataFile("check/" + name);
}

}  // namespace

TEST(Check, theGeneratedPackIsClean)
{
    const Outcome outcome = run({"--data", packFolder(), "check"});
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_EQ(outcome.m_sError, "");
    EXPECT_EQ(outcome.m_nExit, 0);
}

TEST(Check, theSyntheticFolderIsClean)
{
    const Outcome outcome = run(onFolder({"check"}));
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_EQ(outcome.m_nExit, 0);
}

TEST(Check, aFindingHasTheShownKeysAndItsLineForPeople)
{
    Setting setting;
    setting.m_sFolder = dataFile("check");
    const Arguments arguments = {"--data", "none", "check", "definitions-clock-case.xml"};
    const std::string message = "24hours 'True' is read as false: write true or false";
    EXPECT_EQ(run(arguments, setting).m_sOut,
              "definitions-clock-case.xml:3:5: warning: " + message + " [invalid-clock]\n");
    Arguments json = arguments;
    json.insert(json.begin(), "--json");
    EXPECT_EQ(run(json, setting).m_sOut,
              R"({"file":"definitions-clock-case.xml","line":3,"column":5,"severity":"warning",)"
              R"("rule":"invalid-clock","message":")" +
                  message + "\"}\n");
}

TEST(Check, withoutFilesThoseOfTheOptionsAreCheckedToo)
{
    const Outcome outcome = run(
        onFolder({"--json", "--definitions", caseFile("definitions-clock-case.xml"), "--config",
                  caseFile("configuration-unknown-key.xml"), "--mapping", caseFile("mapping-spelling.xml"), "check"}));
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(rulesOf(outcome), ElementsAre("invalid-clock", "unknown-key", "pattern-spelling"));
}

TEST(Check, givenFilesAreTheOnlyOnesReported)
{
    const Outcome outcome = run(onFolder({"--json", "--definitions", caseFile("definitions-clock-case.xml"), "check",
                                          caseFile("mapping-spelling.xml")}));
    EXPECT_THAT(rulesOf(outcome), ElementsAre("pattern-spelling"));
}

TEST(Check, findingsOfAFileStandInTheOrderOfTheirPlaces)
{
    const TemporaryFolder folder;
    const std::string file = folder
                                 .write("a.xml",
                                        "<localeDefinitions>\n<localeDefinition name=\"xx\" basedOn=\"yy\">\n"
                                        "<property name=\"decimalSeparator\">,</property>\n"
                                        "<property name=\"dateOrder\">x</property>\n"
                                        "<property name=\"thousandsSeparator\">,</property>\n"
                                        "<property/>\n</localeDefinition>\n</localeDefinitions>\n")
                                 .toNative();
    const Outcome outcome = run({"--data", "none", "--json", "check", file});
    EXPECT_THAT(rulesOf(outcome),
                ElementsAre("based-on-unknown", "invalid-date-order", "same-separators", "property-without-name"));
}

TEST(Check, severalFilesAreCheckedAgainstEachOther)
{
    const std::string definitions = dataFile("folder/localedefinitions.xml");
    const Outcome outcome = run({"--data", "none", "--json", "check", caseFile("lists-unknown.xml"), definitions});
    EXPECT_THAT(rulesOf(outcome), ElementsAre("unknown-definition"));
    // The lists that are given decide what is allowed.
    const Outcome mapping = run({"--data", "none", "--json", "check", definitions, caseFile("lists-correct.xml"),
                                 caseFile("mapping-no-rule-for-locale.xml")});
    ASSERT_EQ(mapping.objects().size(), 2U);
    EXPECT_EQ(mapping.objects()[0]["rule"], "no-rule-for-locale");
    EXPECT_THAT(mapping.objects()[0]["message"].get<std::string>(), HasSubstr("'de-de'"));
    EXPECT_EQ(mapping.objects()[1]["rule"], "target-not-allowed");
}

TEST(Check, fewRulesToLocalesThatAreNotAllowedAreNamedEach)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("few.xml", mappingToNotAllowed(5)).toNative();
    const std::vector<Json> findings = run(onFolder({"--json", "check", file})).objects();
    ASSERT_EQ(findings.size(), 6U);
    EXPECT_EQ(findings[0]["rule"], "unknown-definition");
    for (std::size_t index = 1; index < findings.size(); ++index) {
        const std::string pattern = std::string("'de-A") + static_cast<char>('A' + index - 1) + "*'";
        EXPECT_EQ(findings[index]["rule"], "target-not-allowed");
        EXPECT_EQ(findings[index]["line"], 5 + index);
        EXPECT_EQ(findings[index]["message"], "the definition 'de-de' is not allowed, so the rule " + pattern +
                                                  " is passed over: allow the locale or take the rule out");
    }
}

TEST(Check, manyRulesToLocalesThatAreNotAllowedAreOneFinding)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("many.xml", mappingToNotAllowed(6)).toNative();
    const std::vector<Json> findings = run(onFolder({"--json", "check", file})).objects();
    ASSERT_EQ(findings.size(), 2U);
    // A name that was written wrong is no decision, and stands beside them.
    EXPECT_EQ(findings[0]["rule"], "unknown-definition");
    EXPECT_EQ(findings[0]["line"], 5);
    EXPECT_EQ(findings[1]["rule"], "target-not-allowed");
    EXPECT_EQ(findings[1]["line"], 6);
    EXPECT_EQ(findings[1]["message"],
              "the definition 'de-de' is not allowed, so the rule 'de-AA*' is passed over, and 5 more rules of this "
              "file for the same reason: allow the locales or take the rules out");
}

TEST(Check, fewAllowedLocalesMakeOneFindingOfThePacksRules)
{
    const Outcome outcome =
        run({"--data", packFolder(), "--json", "--set", "Localization/AllowedLocales=en-us,de-de", "check"});
    EXPECT_THAT(rulesOf(outcome), ElementsAre("target-not-allowed"));
}

TEST(Check, aFileOfTheFolderCanBeGiven)
{
    const Outcome outcome =
        run(onFolder({"check", dataFile("folder/localedefinitions.xml"), dataFile("folder/localelists.xml"),
                      dataFile("folder/localemapping.xml"), dataFile("folder/config.xml"),
                      dataFile("folder/messages/fr/i18nmessages.xml")}));
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_EQ(outcome.m_nExit, 0);
}

TEST(Check, aDefinitionsFileThatCannotBeReadMakesNoOtherFindings)
{
    const TemporaryFolder folder;
    folder.write("localedefinitions.xml", "<localeDefinitions>");
    folder.write("localelists.xml",
                 "<l><localeList name=\"supported\"><localeDefinition name=\"xx\"/></localeList></l>");
    folder.write("localemapping.xml",
                 "<m><localeMapping name=\"httpAcceptLanguage\"><choose><when matches=\"*\"><localeDefinition "
                 "name=\"xx\"/></when></choose></localeMapping></m>");
    folder.write("config.xml",
                 "<c><Localization><AllowedLocalesFile>localelists.xml</AllowedLocalesFile></Localization></c>");
    const Outcome outcome = run({"--data", folder.native().string(), "--json", "check"});
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(rulesOf(outcome), ElementsAre("malformed-file"));
}

TEST(Check, settingsAreCheckedWithoutAPlace)
{
    const Outcome outcome =
        run(onFolder({"--json", "--set", "Localization/AllowedLocales=en-us,xx-yy,fr-fr,fr-ca", "check"}));
    const Json finding = outcome.object();
    EXPECT_EQ(finding["rule"], "unknown-definition");
    EXPECT_EQ(finding["file"], "--set Localization/AllowedLocales");
    EXPECT_EQ(finding["line"], 0);
    EXPECT_THAT(finding["message"].get<std::string>(), HasSubstr("'xx-yy'"));
    const Outcome file = run(onFolder({"--json", "--set", "Localization/AllowedLocalesFile=nowhere.xml", "check"}));
    EXPECT_EQ(file.object()["rule"], "lists-file-missing");
}

TEST(Check, currenciesAreCheckedAgainstThoseLoadedBefore)
{
    const TemporaryFolder folder;
    const std::string first =
        folder.write("1.xml", "<Currencies><Currency tag='A' type='international' symbol='s'/></Currencies>")
            .toNative();
    const std::string second =
        folder.write("2.xml", "<Currencies><Currency tag='B' type='international' symbol='s'/></Currencies>")
            .toNative();
    const auto check = [](Arguments arguments) {
        arguments.insert(arguments.begin(), {"--data", "none", "--json"});
        return run(arguments);
    };
    const Outcome options = check({"--currencies", first, "--currencies", second, "check"});
    EXPECT_THAT(rulesOf(options), ElementsAre("duplicate-symbol"));
    EXPECT_EQ(options.object()["file"], second);
    // The given file stands behind those of the options, and only it is reported.
    const Outcome given = check({"--currencies", second, "check", first});
    EXPECT_EQ(given.object()["file"], first);
    EXPECT_THAT(given.object()["message"].get<std::string>(), HasSubstr("'B'"));
    EXPECT_EQ(check({"--currencies", first, "check", first}).m_sOut, "");
    EXPECT_EQ(check({"check", second}).m_sOut, "");
}

TEST(Check, aCurrenciesFileThatCannotBeReadIsAFinding)
{
    const TemporaryFolder folder;
    const std::string bad = folder.write("bad.xml", "<Currencies>\n  <Currency\n").toNative();
    const std::string nowhere = (folder.native() / "nowhere.xml").string();
    for (const auto& [file, rule] : {std::pair{bad, "malformed-file"}, {nowhere, "unreadable-file"}}) {
        for (const Arguments& arguments : {Arguments{"--currencies", file, "check"}, {"check", file}}) {
            Arguments all = onFolder({"--json"});
            all.insert(all.end(), arguments.begin(), arguments.end());
            const Outcome outcome = run(all);
            EXPECT_EQ(outcome.m_nExit, 1);
            EXPECT_EQ(outcome.object()["rule"], rule);
            EXPECT_EQ(outcome.object()["severity"], "error");
            EXPECT_EQ(outcome.object()["file"], file);
        }
    }
}

TEST(Check, aCurrencyMayBeReplacedByAFileOfItsOwn)
{
    const TemporaryFolder folder;
    const std::string own =
        folder
            .write("own.xml",
                   "<Currencies><Currency tag='EUR' type='international' symbol='EUR' digits='2'/></Currencies>")
            .toNative();
    EXPECT_EQ(run(onFolder({"check", own})).m_sOut, "");
}

TEST(Check, everyCodeOfThePackIsKnownWithItsDigits)
{
    // The pack's own digits are compared with ISO's elsewhere; here every one of them is changed.
    const Outcome all = run({"--data", packFolder(), "--json", "currencies"});
    std::string elements;
    std::size_t count = 0;
    for (const Json& each : all.objects()) {
        if (each["type"] == "international") {
            const std::string tag = each["tag"];
            elements += "<Currency type='international' tag='" + tag + "' symbol='" + tag + "' digits='" +
                        std::to_string(each["digits"].get<int>() + 1) + "'/>\n";
            ++count;
        }
    }
    ASSERT_GT(count, 150U);
    const TemporaryFolder folder;
    const std::string file = folder.write("digits.xml", "<Currencies>\n" + elements + "</Currencies>").toNative();
    const std::vector<std::string> rules = rulesOf(run({"--data", "none", "--json", "check", file}));
    EXPECT_EQ(rules, std::vector<std::string>(count, "not-iso-digits"));
}

TEST(Check, aHundredThousandDefinitionsAndRulesAreChecked)
{
    const TemporaryFolder folder;
    std::string definitions = "<localeDefinitions>\n";
    std::string rules = "<localeMappings>\n<localeMapping name=\"httpAcceptLanguage\">\n<choose>\n";
    for (int number = 100'000; number < 200'000; ++number) {
        const std::string name = "x" + std::to_string(number);
        definitions += "<localeDefinition name=\"" + name + "\" basedOn=\"x" + std::to_string(number - 1) + "\"/>\n";
        rules += "<when matches=\"" + name + "*\"><localeDefinition name=\"" + name + "\"/></when>\n";
    }
    rules += "<when matches=\"*\"><localeDefinition name=\"x100000\"/></when>\n";
    const std::string one = folder.write("d.xml", definitions + "</localeDefinitions>").toNative();
    const std::string two = folder.write("m.xml", rules + "</choose></localeMapping></localeMappings>").toNative();
    const Outcome outcome = run({"--data", "none", "--json", "check", one, two});
    // The first one has no base before it, and nothing else is wrong.
    EXPECT_EQ(outcome.object()["rule"], "based-on-unknown");
    EXPECT_EQ(outcome.object()["line"], 2);
}

}  // namespace clitest
