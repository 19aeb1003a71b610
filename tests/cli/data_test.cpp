#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "command.h"
#include "temporaryfolder.h"

// Where data comes from, and what happens when it cannot be read.

namespace clitest {

using testing::HasSubstr;
using testing::StartsWith;
using testsupport::TemporaryFolder;

namespace {

std::string native(const vel::FilePath& path)
{
    return path.toNative();
}

}  // namespace

TEST(Data, theVariableNamesTheFolderAndTheOptionOverrulesIt)
{
    Setting setting;
    setting.m_sData = dataFile("folder");
    EXPECT_EQ(run({"languages"}, setting).m_sOut, "languages: en fr\n");
    EXPECT_EQ(run({"--data", "none", "languages"}, setting).m_sOut, "languages:\n");
    setting.m_sData = "none";
    EXPECT_EQ(run({"languages"}, setting).m_sOut, "languages:\n");
}

TEST(Data, theFolderBesideTheProgramIsTakenByItself)
{
    const TemporaryFolder prefix;
    std::filesystem::create_directories(prefix.native() / "bin");
    std::filesystem::create_directories(prefix.native() / "share");
    std::filesystem::copy(dataFile("folder"), prefix.native() / "share" / "webi18n",
                          std::filesystem::copy_options::recursive);
    Setting setting;
    setting.m_sProgram = (prefix.native() / "bin" / "webi18n").string();
    const std::filesystem::path command(WEBI18N_COMMAND);
    std::filesystem::copy_file(command, setting.m_sProgram);
    std::filesystem::create_directory_symlink(command.parent_path().parent_path() / "lib", prefix.native() / "lib");
    EXPECT_EQ(run({"languages"}, setting).m_sOut, "languages: en fr\n");
}

TEST(Data, aFolderThatIsNoneExitsWithThree)
{
    const Outcome outcome = run({"--data", dataFile("nowhere"), "languages"});
    EXPECT_EQ(outcome.m_nExit, 3);
    EXPECT_THAT(outcome.m_sError, HasSubstr("nowhere"));
}

TEST(Data, anEmptyFolderAnswersAndSaysWhatIsMissing)
{
    const TemporaryFolder folder;
    const Outcome outcome = run({"--data", folder.native().string(), "--json", "explain", "fr"});
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.object()["locale"], "en-us");
    EXPECT_THAT(outcome.m_sError, HasSubstr("no locale definitions"));
    EXPECT_THAT(outcome.m_sError, HasSubstr("no mapping rules"));
    EXPECT_EQ(run({"--data", folder.native().string(), "check"}).m_nExit, 0);
}

TEST(Data, aFileThatCannotBeReadIsNamedWithItsPlace)
{
    const TemporaryFolder folder;
    const std::string bad = native(folder.write("bad.xml", "<a>\n  <b>\n</a>\n"));
    for (const Arguments& arguments : {Arguments{"--definitions", bad, "locales"},
                                       {"--mapping", bad, "explain", "x"},
                                       {"--config", bad, "languages"}}) {
        SCOPED_TRACE(arguments[0]);
        const Outcome outcome = run(onFolder(arguments));
        EXPECT_EQ(outcome.m_nExit, 3);
        EXPECT_EQ(outcome.m_sOut, "");
        EXPECT_THAT(outcome.m_sError, StartsWith(bad + ":3:"));
        EXPECT_THAT(outcome.m_sError, HasSubstr(": error: "));
    }
    const Outcome missing = run(onFolder({"--definitions", "nowhere.xml", "locales"}));
    EXPECT_EQ(missing.m_nExit, 3);
    EXPECT_THAT(missing.m_sError, StartsWith("nowhere.xml:0:0: error: "));
}

TEST(Data, aSubcommandReadsOnlyWhatItNeeds)
{
    const TemporaryFolder folder;
    folder.write("localedefinitions.xml", "<broken");
    folder.write("localemapping.xml", "<broken");
    folder.write("config.xml", "<c><Localization><AllowedLanguages>en</AllowedLanguages></Localization></c>");
    EXPECT_EQ(run({"--data", folder.native().string(), "languages"}).m_sOut, "languages: en\n");
    EXPECT_EQ(run({"--data", folder.native().string(), "locales"}).m_nExit, 3);
}

TEST(Data, definitionsAreLoadedAfterTheFoldersInTheirOrder)
{
    const TemporaryFolder folder;
    const auto definition = [&folder](const std::string& name, const std::string& separator) {
        return native(folder.write(name,
                                   "<d><localeDefinition name=\"fr-fr\" basedOn=\"fr-fr\"><property name="
                                   "\"dateSeparator\">" +
                                       separator + "</property></localeDefinition></d>"));
    };
    const std::string first = definition("1.xml", "1");
    const std::string second = definition("2.xml", "2");
    const Outcome outcome =
        run(onFolder({"--definitions", first, "--json", "locale", "--definitions", second, "fr-fr"}));
    EXPECT_EQ(outcome.object()["dateSeparator"], "2");
    EXPECT_EQ(outcome.object()["timeFormat"], "HH:mm:ss");
    // What was based on the folder's definition stays as it was.
    EXPECT_EQ(run(onFolder({"--definitions", first, "--json", "locale", "fr-ca"})).object()["dateSeparator"], "-");
}

TEST(Data, aNearerSourceOfTheConfigurationOverrulesAKey)
{
    const TemporaryFolder folder;
    const std::string config =
        native(folder.write("own.xml", "<c><Localization><AllowedLanguages>xx</AllowedLanguages></Localization></c>"));
    EXPECT_EQ(run(onFolder({"--config", config, "languages"})).m_sOut, "languages: xx\n");
    EXPECT_EQ(run(onFolder({"--config", config, "locales"})).lines().size(), 3U);
    EXPECT_EQ(run(onFolder({"--config", config, "--set", "Localization/AllowedLanguages=yy", "languages"})).m_sOut,
              "languages: yy\n");
}

TEST(Data, allowedNamesHideAListsFileThatStandsBehindThem)
{
    const Outcome named = run(onFolder({"--set", "Localization/AllowedLocales=de-de", "--json", "locales"}));
    EXPECT_EQ(named.object()["locale"], "de-de");
    const Outcome both =
        run(onFolder({"--set", "Localization/AllowedLocales=de-de", "--set",
                      "Localization/AllowedLocalesFile=" + dataFile("folder/localelists.xml"), "locales"}));
    EXPECT_EQ(both.lines().size(), 3U);
}

TEST(Data, aPathInASettingIsSeenFromTheWorkingFolder)
{
    Setting setting;
    setting.m_sFolder = dataFile("folder");
    const Arguments arguments = {"--data",        "none",
                                 "--definitions", "localedefinitions.xml",
                                 "--set",         "Localization/AllowedLocalesFile=localelists.xml",
                                 "locales"};
    EXPECT_EQ(run(arguments, setting).lines().size(), 3U);
    const Outcome missing = run(arguments);
    EXPECT_EQ(missing.m_nExit, 3);
    EXPECT_THAT(missing.m_sError, StartsWith("localedefinitions.xml:0:0: error: "));
}

}  // namespace clitest
