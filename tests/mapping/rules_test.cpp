#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "mappings.h"
#include "printers.h"
#include "textrows.h"

// How rules choose a locale.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::LocaleMappingExplanation;
using vel::String;

/// The rules of a row: "pattern>definition" or "pattern", separated by blanks.
std::string whensOfRow(const std::string& rules)
{
    std::istringstream stream(rules);
    std::vector<slowmapping::Rule> parsed;
    for (std::string each; stream >> each;) {
        const std::wstring rule = vel::stringFromUtf8(each).value().standard();
        const std::size_t arrow = rule.find(L'>');
        parsed.push_back({rule.substr(0, arrow), arrow == std::wstring::npos
                                                     ? std::nullopt
                                                     : std::optional<std::wstring>(rule.substr(arrow + 1))});
    }
    return whensOf(parsed);
}

TEST(MappingRules, ChooseAsTheRowsSay)
{
    MappingOnCatalogue mapping;
    for (const TextRow& row : readRows(WEBI18N_SOURCE_DIR "/rules.rows", 4)) {
        SCOPED_TRACE(row.trace());
        mapping.load(whensOfRow(row.field(0)));
        EXPECT_EQ(row.wide(2), mapping.map(row.wide(1)));
    }
}

TEST(MappingRules, ATargetThatIsNotAllowedLeavesTheTextToTheNextRule)
{
    MappingOnCatalogue all;
    MappingOnCatalogue withoutFrench(L"en-us");
    for (MappingOnCatalogue* each : {&all, &withoutFrench}) {
        each->load(whensOfRow("fr*>fr-fr *>en-us"));
    }
    EXPECT_EQ(String(L"fr-fr"), all.map(L"fr-CA"));
    EXPECT_EQ(String(L"en-us"), withoutFrench.map(L"fr-CA"));
}

TEST(MappingRules, TextAfterTheStarDoesNotCount)
{
    MappingOnCatalogue mapping;
    mapping.load(whensOfRow("de*xyz>de-de"));
    EXPECT_EQ(String(L"de-de"), mapping.map(L"de-AT"));
}

TEST(MappingRules, CaseCounts)
{
    MappingOnCatalogue mapping;
    mapping.load(whensOfRow("en-us>en-us"));
    EXPECT_EQ(String(L"USA"), mapping.map(L"EN-us"));
}

TEST(MappingRules, AnEmptyTextMatchesAbsentAndEmptyPatternsAndLeadingStars)
{
    MappingOnCatalogue mapping;
    for (const char* when : {"<when>", "<when matches=\"\">", "<when matches=\"*\">", "<when matches=\"*x\">"}) {
        mapping.load(std::string(when) + "<localeDefinition name=\"de-de\"/></when>");
        EXPECT_EQ(String(L"de-de"), mapping.map(L"")) << when;
    }
    mapping.load("<when><localeDefinition name=\"de-de\"/></when>");
    EXPECT_EQ(String(L"USA"), mapping.map(L"de"));
}

TEST(MappingRules, NoMappingsLoadedGiveUSA)
{
    const MappingOnCatalogue mapping;
    for (const wchar_t* text : {L"", L"en-us", L"fr", L"*"}) {
        EXPECT_EQ(String(L"USA"), mapping.map(text));
    }
}

TEST(MappingRules, TheDefaultIsUSAWhetherOrNotItIsAllowed)
{
    MappingOnCatalogue nothingAllowed(L"");
    nothingAllowed.load(whensOfRow("*>en-us"));
    EXPECT_EQ(String(L"USA"), nothingAllowed.map(L"en"));
}

TEST(MappingRules, AreResolvedWhenARequestIsMapped)
{
    MappingOnCatalogue mapping(L"");
    mapping.load(whensOfRow("fr*>fr-fr"));
    EXPECT_EQ(String(L"USA"), mapping.map(L"fr"));
    mapping.catalogue().allow(L"fr-fr");
    EXPECT_EQ(String(L"fr-fr"), mapping.map(L"fr"));
}

TEST(MappingRules, TheFirstTargetOfARuleCounts)
{
    MappingOnCatalogue mapping;
    mapping.load(
        "<when matches=\"a\"><other/><localeDefinition name=\"xx\"/><localeDefinition name=\"fr-fr\"/></when>"
        "<when matches=\"a\"><localeDefinition/></when>"
        "<when matches=\"a\"><group><localeDefinition name=\"fr-fr\"/></group></when>"
        "<when matches=\"a\"><localeDefinition name=\"de-de\"/></when>");
    EXPECT_EQ(String(L"de-de"), mapping.map(L"a"));
}

TEST(MappingExplanation, NamesTheRuleAndTheOnesItPassedOver)
{
    MappingOnCatalogue mapping;
    mapping.load(whensOfRow("x>de-de fr-CA*>xx fr*y fr*>fr-fr *>en-us"));
    const LocaleMappingExplanation seen = mapping.mapping().explainLocale(L"fr-CA,fr;q=0.9", L"");
    ASSERT_TRUE(seen.m_tRule.has_value());
    EXPECT_EQ(3U, seen.m_tRule->m_nIndex);
    EXPECT_EQ(String(L"fr*"), seen.m_tRule->m_sMatches);
    EXPECT_EQ(String(L"fr-fr"), seen.m_tRule->m_sDefinition);
    ASSERT_EQ(2U, seen.m_tSkipped.size());
    EXPECT_EQ(1U, seen.m_tSkipped[0].m_nIndex);
    EXPECT_EQ(String(L"xx"), seen.m_tSkipped[0].m_sDefinition);
    EXPECT_EQ(2U, seen.m_tSkipped[1].m_nIndex);
    EXPECT_EQ(String(L"fr*y"), seen.m_tSkipped[1].m_sMatches);
    EXPECT_TRUE(seen.m_tSkipped[1].m_sDefinition.isEmpty());
    EXPECT_EQ(String(L"fr-fr"), seen.m_tLocale.definitionName());
    EXPECT_EQ(String(L"fr"), seen.m_sLanguage);
}

TEST(MappingExplanation, WithoutARuleNamesNone)
{
    MappingOnCatalogue mapping;
    mapping.load(whensOfRow("fr*>xx"));
    const LocaleMappingExplanation seen = mapping.mapping().explainLocale(L"fr", L"pt");
    EXPECT_FALSE(seen.m_tRule.has_value());
    EXPECT_EQ(1U, seen.m_tSkipped.size());
    EXPECT_EQ(String(L"AM"), seen.m_tLocale.getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"pt"), seen.m_sLanguage);
}

}  // namespace
