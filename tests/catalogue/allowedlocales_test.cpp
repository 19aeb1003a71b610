#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogueinside.h"
#include "catalogues.h"
#include "logcapture.h"
#include "printers.h"

// Which locales configuration allows.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::IsEmpty;
using vel::Locale;
using vel::String;

constexpr const char* kThree =
    "<localeDefinition name=\"en-us\"/><localeDefinition name=\"fr-fr\"/><localeDefinition name=\"de-de\"/>";

class AllowedLocales : public testing::Test
{
protected:
    void SetUp() override { m_tCatalogue.load(kThree, L""); }
    void allowByFile(const std::string& xml, const String& names = L"") const
    {
        const String file = m_tCatalogue.write(xml, "lists.xml");
        m_tCatalogue.lookup().loadConfig(*allowing(names, file), vel::kConfigInitialize);
    }

    Catalogue m_tCatalogue;
};

TEST_F(AllowedLocales, PiecesAreTrimmedAndEmptyOrUnknownOnesSkipped)
{
    const LogCapture log;
    m_tCatalogue.allow(L" en-us, ,FR-fr,xx-yy,");
    EXPECT_THAT(keysOfAllowed(m_tCatalogue.lookup()), ElementsAre("en-us", "FR-fr"));
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"en-us"), String(L"fr-fr")));
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(AllowedLocales, WhiteSpaceOfEveryKindIsTrimmed)
{
    m_tCatalogue.allow(
        L"\t\x00a0"
        L"de-de\x3000\n,\x2003"
        L"fr-fr");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"de-de"), String(L"fr-fr")));
}

TEST_F(AllowedLocales, BothKeysEmptyAllowNothing)
{
    m_tCatalogue.allow(L"en-us");
    m_tCatalogue.allow(L"");
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
    m_tCatalogue.allow(L",,,");
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
    m_tCatalogue.allow(L"xx");
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
}

TEST_F(AllowedLocales, KeysThatAreNotSetAllowNothing)
{
    m_tCatalogue.allow(L"en-us");
    m_tCatalogue.lookup().loadConfig(*vel::makeHandle<vel::MemoryConfigReader>(), vel::kConfigInitialize);
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
}

TEST_F(AllowedLocales, ThereIsNoQuotingOrEscaping)
{
    m_tCatalogue.allow(L"\"en-us\",'fr-fr',de-de\\,en-us;fr-fr");
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
}

TEST_F(AllowedLocales, ADefinedButNotAllowedNameIsNotFoundAndTheOutputStays)
{
    m_tCatalogue.allow(L"en-us");
    Locale locale = Locale::kUSA;
    const std::size_t shares = locale.shareCount();
    EXPECT_FALSE(m_tCatalogue.lookup().findLocaleByDefinitionName(L"fr-fr", locale));
    EXPECT_EQ(shares, locale.shareCount());
    EXPECT_EQ(String(L"AM"), locale.getInfoAsString(Locale::kAM));
    EXPECT_FALSE(m_tCatalogue.lookup().findLocaleByDefinitionName(L"", locale));
    EXPECT_FALSE(m_tCatalogue.lookup().findLocaleByDefinitionName(L"en-us ", locale));
    EXPECT_TRUE(m_tCatalogue.lookup().findLocaleByDefinitionName(L"EN-Us", locale));
    EXPECT_EQ(String(L"am"), locale.getInfoAsString(Locale::kAM));
}

TEST_F(AllowedLocales, AreListedByTheirKeysWithoutRegardToCase)
{
    m_tCatalogue.allow(L"FR-fr,en-us,de-DE");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"de-de"), String(L"en-us"), String(L"fr-fr")));
    std::vector<Locale> out(7, Locale::kUSA);
    m_tCatalogue.lookup().getSupportedLocales(out);
    EXPECT_EQ(3U, out.size());
}

TEST_F(AllowedLocales, AreListedByTheKeyOfTheFirstSpelling)
{
    // "_" stands between upper-case and lower-case letters: the order shows that keys are folded.
    m_tCatalogue.load("<localeDefinition name=\"a_\"/><localeDefinition name=\"aB\"/><localeDefinition name=\"ac\"/>",
                      L"ac,a_,AB");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"a_"), String(L"aB"), String(L"ac")));
    m_tCatalogue.allow(L"ab,AB,Ab");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"aB")));
    EXPECT_THAT(keysOfAllowed(m_tCatalogue.lookup()), ElementsAre("ab"));
}

TEST_F(AllowedLocales, AListsFileChoosesByItsListSupported)
{
    allowByFile(
        "<any><localeList name=\"other\"><localeDefinition name=\"en-us\"/></localeList>"
        "<localeList name=\"Supported\"><localeDefinition name=\"en-us\"/></localeList>"
        "<localeList><localeDefinition name=\"en-us\"/></localeList>"
        "<localeList name=\"supported\">text<localeDefinition name=\"FR-FR\"/><localeDefinition/>"
        "<localeDefinition name=\"\"/><localeDefinition name=\"xx\"/><other name=\"en-us\"/></localeList>"
        "<localeList name=\"supported\"><localeDefinition name=\"de-de\"/></localeList></any>");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"de-de"), String(L"fr-fr")));
    EXPECT_THAT(keysOfAllowed(m_tCatalogue.lookup()), ElementsAre("de-de", "FR-FR")) << "as the lists file spells them";
}

TEST_F(AllowedLocales, PrefixedAttributesOfAListsFileAreNone)
{
    allowByFile(
        "<l><localeList x:name=\"supported\"><localeDefinition name=\"en-us\"/></localeList>"
        "<localeList x:name=\"other\" name=\"supported\"><localeDefinition x:name=\"en-us\"/>"
        "<localeDefinition x:name=\"en-us\" name=\"fr-fr\"/></localeList></l>");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"fr-fr")));
}

/// A host's reader: all that it has to tell are strings.
class HostReader final : public vel::ConfigReader
{
public:
    explicit HostReader(const String& listsFile) : m_sListsFile(listsFile) {}
    String getString(const String& key, const String& defaultValue) const override
    {
        return key == L"Localization/AllowedLocalesFile" ? m_sListsFile : defaultValue;
    }

private:
    String m_sListsFile;
};

TEST_F(AllowedLocales, AReaderOfStringsIsEnough)
{
    const String file = m_tCatalogue.write(
        "<l><localeList name=\"supported\"><localeDefinition name=\"fr-fr\"/></localeList></l>", "host.xml");
    m_tCatalogue.lookup().loadConfig(*vel::makeHandle<HostReader>(file), vel::kConfigReload);
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"fr-fr")));
}

TEST_F(AllowedLocales, ANameInAListIsNotTrimmed)
{
    allowByFile("<l><localeList name=\"supported\"><localeDefinition name=\" en-us\"/></localeList></l>");
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
}

TEST_F(AllowedLocales, AListsFileAloneDecidesEvenWhenItListsNothingKnown)
{
    m_tCatalogue.allow(L"de-de");
    allowByFile("<l><localeList name=\"supported\"><localeDefinition name=\"xx\"/></localeList></l>", L"en-us,fr-fr");
    EXPECT_THAT(m_tCatalogue.allowedNames(), IsEmpty());
}

TEST_F(AllowedLocales, LoadLocaleListsAddsToWhatIsAllowed)
{
    m_tCatalogue.allow(L"en-us");
    m_tCatalogue.lookup().loadLocaleLists(m_tCatalogue.write(
        "<l><localeList name=\"supported\"><localeDefinition name=\"de-de\"/></localeList></l>", "lists.xml"));
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"de-de"), String(L"en-us")));
}

TEST_F(AllowedLocales, ARelativeListsFileIsSeenFromTheConfigurationFile)
{
    m_tCatalogue.write("<l><localeList name=\"supported\"><localeDefinition name=\"de-de\"/></localeList></l>",
                       "lists.xml");
    const vel::XmlConfigReader config(
        m_tCatalogue.folder().write("config.xml",
                                    "<configuration><Localization><AllowedLocalesFile> lists.xml </AllowedLocalesFile>"
                                    "</Localization></configuration>"));
    m_tCatalogue.lookup().loadConfig(config, vel::kConfigInitialize);
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"de-de")));
}

TEST_F(AllowedLocales, TheModeDoesNotMatterAndTheResultIsTrue)
{
    for (const vel::EConfig mode : {vel::kConfigInitialize, vel::kConfigReload}) {
        EXPECT_TRUE(m_tCatalogue.lookup().loadConfig(*allowing(L"fr-fr"), mode));
        EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"fr-fr")));
        EXPECT_TRUE(m_tCatalogue.lookup().loadConfig(*allowing(L"en-us"), mode));
        EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"en-us")));
    }
}

}  // namespace
