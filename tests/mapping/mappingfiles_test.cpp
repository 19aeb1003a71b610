#include <gtest/gtest.h>

#include "failingallocator.h"
#include "mappings.h"
#include "printers.h"
#include "vel/xml/xmlexception.h"

// Mapping files: what counts in them, replacement, failure.

namespace {

using namespace testsupport;
using vel::String;

const std::string kFrench = "<when matches=\"*\"><localeDefinition name=\"fr-fr\"/></when>";
const std::string kGerman = "<when matches=\"*\"><localeDefinition name=\"de-de\"/></when>";

TEST(MappingFiles, OnlyTheMappingOfTheHeaderCounts)
{
    MappingOnCatalogue mapping;
    mapping.loadFile(
        "<any><localeMapping name=\"other\"><choose>" + kFrench + "</choose></localeMapping><localeMapping><choose>" +
        kFrench + "</choose></localeMapping><localeMapping name=\"HttpAcceptLanguage\"><choose>" + kFrench +
        "</choose></localeMapping><localeMapping name=\"httpAcceptLanguage\">" + kFrench + "<pick>" + kFrench +
        "</pick><choose><group>" + kFrench + "</group><otherwise/></choose></localeMapping></any>");
    EXPECT_EQ(String(L"USA"), mapping.map(L"fr"));
}

TEST(MappingFiles, PrefixedAttributesAreNone)
{
    MappingOnCatalogue mapping;
    mapping.loadFile("<any><localeMapping x:name=\"httpAcceptLanguage\"><choose>" + kGerman +
                     "</choose></localeMapping><localeMapping x:name=\"a\" name=\"httpAcceptLanguage\"><choose>"
                     "<when x:matches=\"a\" matches=\"b\"><localeDefinition x:name=\"de-de\" name=\"fr-fr\"/></when>"
                     "<when matches=\"c\"><localeDefinition x:name=\"de-de\"/></when></choose></localeMapping></any>");
    EXPECT_EQ(String(L"USA"), mapping.map(L"a"));
    EXPECT_EQ(String(L"fr-fr"), mapping.map(L"b"));
    EXPECT_EQ(String(L"USA"), mapping.map(L"c"));
}

TEST(MappingFiles, RulesOfSeveralMappingsAndChoicesFollowEachOther)
{
    MappingOnCatalogue mapping;
    const std::string part = "<localeMapping name=\"httpAcceptLanguage\"><choose/><choose>";
    mapping.loadFile("<any>" + part + "<when matches=\"a\"><localeDefinition name=\"fr-ca\"/></when></choose><choose>" +
                     "</choose></localeMapping>" + part + kGerman + "</choose></localeMapping></any>");
    EXPECT_EQ(String(L"fr-ca"), mapping.map(L"a"));
    EXPECT_EQ(String(L"de-de"), mapping.map(L"b"));
    EXPECT_EQ(1U, mapping.mapping().explainLocale(L"b", L"").m_tRule->m_nIndex);
}

TEST(MappingFiles, AMappingThatIsGoneLeavesNoMemoryBehind)
{
    const auto loadAndForget = [] {
        MappingOnCatalogue mapping;
        mapping.loadFile("<any><localeMapping name=\"httpAcceptLanguage\"><choose>" + kFrench +
                         "</choose></localeMapping></any>");
    };
    loadAndForget();  // what the process keeps for ever is there now
    const std::ptrdiff_t before = outstandingBlocks();
    loadAndForget();
    EXPECT_EQ(outstandingBlocks(), before);
}

TEST(MappingFiles, ASecondFileReplacesTheRules)
{
    MappingOnCatalogue mapping;
    mapping.load("<when matches=\"fr\"><localeDefinition name=\"fr-fr\"/></when>");
    mapping.load("<when matches=\"de\"><localeDefinition name=\"de-de\"/></when>");
    EXPECT_EQ(String(L"USA"), mapping.map(L"fr"));
    EXPECT_EQ(String(L"de-de"), mapping.map(L"de"));
    EXPECT_EQ(0U, mapping.mapping().explainLocale(L"de", L"").m_tRule->m_nIndex);
    mapping.load("");
    EXPECT_EQ(String(L"USA"), mapping.map(L"de"));
}

TEST(MappingFiles, AFileThatCannotBeReadLeavesTheRules)
{
    MappingOnCatalogue mapping;
    mapping.load(kFrench);
    EXPECT_THROW(mapping.loadFile(mappingFile(kGerman) + "<"), vel::XmlException);
    EXPECT_THROW(mapping.mapping().loadMappings(L"/nowhere/mapping.xml"), vel::XmlException);
    EXPECT_THROW(mapping.mapping().loadMappings(mapping.catalogue().folder().path().toString()), vel::XmlException);
    EXPECT_EQ(String(L"fr-fr"), mapping.map(L"x"));
    EXPECT_EQ(String(L"*"), mapping.mapping().explainLocale(L"x", L"").m_tRule->m_sMatches);
}

TEST(MappingFiles, TheCatalogueInUseIsTheOneGiven)
{
    MappingOnCatalogue mapping;
    EXPECT_EQ(&mapping.catalogue().lookup(), mapping.mapping().getLocaleTagLookup().get());
}

}  // namespace
