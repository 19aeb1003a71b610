#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogueinside.h"
#include "catalogues.h"
#include "logcapture.h"
#include "printers.h"

// Definitions files: inheritance, replacement, names.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::IsEmpty;
using vel::Locale;
using vel::String;

/// A definition whose "am" says where its data came from.
std::string marked(const std::string& name, const std::string& mark, const std::string& basedOn = "")
{
    return definition(name, property("am", mark), basedOn);
}

String amOf(const Catalogue& catalogue, const wchar_t* name)
{
    return catalogue.find(name).getInfoAsString(Locale::kAM);
}

TEST(CatalogueDefinitions, TheSecondOfTwoSpellingsReplacesTheValueOfOneEntry)
{
    // One spelling is allowed at a time: allowing both would make one entry of two.
    for (const wchar_t* allowed : {L"fr-fr", L"FR-FR", L"Fr-fR"}) {
        const Catalogue catalogue;
        catalogue.load(marked("fr-fr", "first") + marked("FR-FR", "second"), allowed);
        EXPECT_THAT(keysOfAll(catalogue.lookup()), ElementsAre("fr-fr"));
        EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"FR-FR")));
        EXPECT_EQ(String(L"second"), amOf(catalogue, L"fr-fr"));
        EXPECT_EQ(String(L"second"), amOf(catalogue, L"FR-FR"));
    }
}

TEST(CatalogueDefinitions, PrefixedAttributesAreNone)
{
    const Catalogue catalogue;
    catalogue.load("<localeDefinition xsi:name=\"other\" name=\"en-x\" x:basedOn=\"de-de\">" + property("am", "a") +
                       "</localeDefinition><localeDefinition name=\"fr-x\" basedOn=\"en-x\" x:basedOn=\"no\">"
                       "<property x:name=\"am\">b</property><property x:name=\"am\" name=\"pm\">c</property>"
                       "</localeDefinition>",
                   L"en-x,fr-x,other");
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"en-x"), String(L"fr-x")));
    EXPECT_EQ(String(L"a"), amOf(catalogue, L"en-x"));
    EXPECT_EQ(String(L"a"), amOf(catalogue, L"fr-x"));
    EXPECT_EQ(String(L"c"), catalogue.find(L"fr-x").getInfoAsString(Locale::kPM));
}

TEST(CatalogueDefinitions, ADerivedDefinitionInheritsWhatItDoesNotName)
{
    const Catalogue catalogue;
    catalogue.load(definition("de-de", property("am", "vorm.") + property("dateSeparator", ".")) +
                       definition("de-ch", property("dateSeparator", "/"), "DE-de"),
                   L"de-de,de-ch");
    EXPECT_EQ(String(L"vorm."), amOf(catalogue, L"de-ch"));
    EXPECT_EQ(String(L"/"), catalogue.find(L"de-ch").getInfoAsString(Locale::kDateSeparator));
    EXPECT_EQ(String(L"."), catalogue.find(L"de-de").getInfoAsString(Locale::kDateSeparator));
    EXPECT_EQ(String(L"de-ch"), catalogue.find(L"de-ch").definitionName());
}

TEST(CatalogueDefinitions, OneWithoutANameReplacesItsBase)
{
    const Catalogue catalogue;
    catalogue.load(marked("fr-fr", "base") + "<localeDefinition basedOn=\"fr-fr\">" + property("pm", "new") +
                       "</localeDefinition>",
                   L"fr-fr");
    EXPECT_EQ(String(L"base"), amOf(catalogue, L"fr-fr"));
    EXPECT_EQ(String(L"new"), catalogue.find(L"fr-fr").getInfoAsString(Locale::kPM));
}

TEST(CatalogueDefinitions, OneWithoutANameOrABaseIsStoredUnderNoNameAndNobodyFindsIt)
{
    const Catalogue catalogue;
    catalogue.load("<localeDefinition>" + property("am", "x") + "</localeDefinition>" + marked("a", "y"), L",a,");
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"a")));
    EXPECT_FALSE(catalogue.find(L"").isValid());
}

TEST(CatalogueDefinitions, ARootThatIsADefinitionContributesNothing)
{
    const Catalogue catalogue;
    catalogue.lookup().loadLocaleDefinitions(*allowing(L"xx"), catalogue.write(marked("xx", "x")));
    EXPECT_THAT(catalogue.allowedNames(), IsEmpty());
}

TEST(CatalogueDefinitions, OnlyChildrenOfTheRootCountAndItsNameDoesNot)
{
    const Catalogue catalogue;
    catalogue.lookup().loadLocaleDefinitions(
        *allowing(L"a,b"), catalogue.write("<any xmlns:v=\"com.quellin.locale/v1\"><group>" + marked("a", "x") +
                                           "</group><v:localeDefinition name=\"b\"/></any>"));
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"b")));
}

TEST(CatalogueDefinitions, AForwardBaseIsIgnoredSilently)
{
    const LogCapture log;
    const Catalogue catalogue;
    catalogue.load(definition("de-at", property("pm", "own"), "de-de") + marked("de-de", "base"), L"de-at,de-de");
    EXPECT_EQ(String(L"am"), amOf(catalogue, L"de-at"));
    EXPECT_EQ(String(L"own"), catalogue.find(L"de-at").getInfoAsString(Locale::kPM));
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(CatalogueDefinitions, AnUnknownBaseGivesTheDefaultsAndNotUSA)
{
    const Catalogue catalogue;
    catalogue.load(definition("xx", "", "nowhere"), L"xx");
    EXPECT_EQ(String(L"am"), amOf(catalogue, L"xx"));
    EXPECT_EQ(String(L"MMddyyyy"), catalogue.find(L"xx").getInfoAsString(Locale::kDateInputFormat));
}

TEST(CatalogueDefinitions, OneBasedOnItselfInheritsFromItsPredecessor)
{
    const Catalogue catalogue;
    catalogue.load(definition("xx", property("pm", "first"), "xx"), L"xx");
    EXPECT_EQ(String(L"am"), amOf(catalogue, L"xx"));
    catalogue.load(definition("xx", property("am", "second"), "xx"), L"xx");
    EXPECT_EQ(String(L"second"), amOf(catalogue, L"xx"));
    EXPECT_EQ(String(L"first"), catalogue.find(L"xx").getInfoAsString(Locale::kPM));
}

// "b" is based on "a" and "c" on "b": each inherits what its base was when it came, or the defaults.
TEST(CatalogueDefinitions, ThreeLayersInEachOfTheirSixOrders)
{
    struct
    {
        const char* m_pOrder;
        const wchar_t* m_pAmOfB;
        const wchar_t* m_pAmOfC;
        const wchar_t* m_pPmOfC;
    } const rows[] = {{"abc", L"A", L"A", L"B"},   {"acb", L"A", L"am", L"pm"}, {"bac", L"am", L"am", L"B"},
                      {"bca", L"am", L"am", L"B"}, {"cab", L"A", L"am", L"pm"}, {"cba", L"am", L"am", L"pm"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.m_pOrder);
        std::string definitions;
        for (const char each : std::string(row.m_pOrder)) {
            definitions += each == 'a'   ? marked("a", "A")
                           : each == 'b' ? definition("b", property("pm", "B"), "a")
                                         : definition("c", property("dateSeparator", "C"), "b");
        }
        const Catalogue catalogue;
        catalogue.load(definitions, L"a,b,c");
        EXPECT_EQ(String(L"A"), amOf(catalogue, L"a"));
        EXPECT_EQ(String(row.m_pAmOfB), amOf(catalogue, L"b"));
        EXPECT_EQ(String(L"B"), catalogue.find(L"b").getInfoAsString(Locale::kPM));
        EXPECT_EQ(String(row.m_pAmOfC), amOf(catalogue, L"c"));
        EXPECT_EQ(String(row.m_pPmOfC), catalogue.find(L"c").getInfoAsString(Locale::kPM));
        EXPECT_EQ(String(L"C"), catalogue.find(L"c").getInfoAsString(Locale::kDateSeparator));
    }
}

TEST(CatalogueDefinitions, RedefiningABaseLeavesWhatWasBuiltOnIt)
{
    const Catalogue catalogue;
    catalogue.load(marked("base", "old") + definition("derived", "", "base") + marked("base", "new"), L"base,derived");
    EXPECT_EQ(String(L"new"), amOf(catalogue, L"base"));
    EXPECT_EQ(String(L"old"), amOf(catalogue, L"derived"));
}

TEST(CatalogueDefinitions, ASecondFileAddsToTheFirst)
{
    const Catalogue catalogue;
    catalogue.load(marked("a", "1") + marked("b", "1"), L"a,b");
    catalogue.load(definition("c", "", "a") + marked("b", "2"), L"a,b,c");
    EXPECT_EQ(String(L"1"), amOf(catalogue, L"a"));
    EXPECT_EQ(String(L"2"), amOf(catalogue, L"b"));
    EXPECT_EQ(String(L"1"), amOf(catalogue, L"c"));
}

TEST(CatalogueDefinitions, AnAllowedLocaleKeepsItsOldDataUntilTheAllowedOnesAreRebuilt)
{
    const Catalogue catalogue;
    catalogue.load(marked("a", "1"), L"a");
    const Locale held = catalogue.find(L"a");
    catalogue.load(marked("a", "2"), L"a");
    EXPECT_EQ(String(L"1"), held.getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"2"), amOf(catalogue, L"a"));
}

TEST(CatalogueDefinitions, FoundLocalesShareTheCataloguesData)
{
    const Catalogue catalogue;
    catalogue.load(marked("a", "1"), L"a");
    Locale mine = catalogue.find(L"a");
    EXPECT_EQ(3U, mine.shareCount());  // mine, the definitions, the allowed ones
    mine.setOverridingDateFormat(L"x");
    EXPECT_EQ(1U, mine.shareCount());
    EXPECT_TRUE(catalogue.find(L"a").overridingDateFormat().isEmpty());
}

TEST(CatalogueDefinitions, MistakesInADefinitionAreLoggedAndLoadingGoesOn)
{
    const LogCapture log;
    const Catalogue catalogue;
    catalogue.load(definition("a", property("dateOrder", "x")) + marked("b", "1"), L"a,b");
    ASSERT_EQ(1U, log.records().size());
    EXPECT_EQ(L"vel.i18n.xmllocale.applyDefinition", log.records().front().m_sSource);
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"a"), String(L"b")));
}

TEST(CatalogueDefinitions, FilesInUtf16AreRead)
{
    const Catalogue catalogue;
    const std::string xml = definitionsFile(marked("a", "x"));
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char each : xml) {
        little.append({each, '\0'});
        big.append({'\0', each});
    }
    catalogue.lookup().loadLocaleDefinitions(*allowing(L"a"), catalogue.write(little));
    EXPECT_EQ(String(L"x"), amOf(catalogue, L"a"));
    catalogue.lookup().loadLocaleDefinitions(*allowing(L"a"), catalogue.write(big));
    EXPECT_EQ(String(L"x"), amOf(catalogue, L"a"));
}

}  // namespace
