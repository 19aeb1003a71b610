// The rules of the pack under the loader's way of matching: prefixes, case-sensitive, the first match counts.

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "packfiles.h"

namespace shipped {
namespace {

// "sr-latn-rs" -> "sr-Latn-RS": the letter case in which browsers send tags.
std::string canonicalTag(const std::string& name)
{
    std::istringstream parts(name);
    std::string tag;
    std::string part;
    while (std::getline(parts, part, '-')) {
        if (!tag.empty() && part.size() == 4) {
            part[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(part[0])));
        } else if (!tag.empty()) {
            for (char& character : part) {
                character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
            }
        }
        tag += (tag.empty() ? "" : "-") + part;
    }
    return tag;
}

std::string prefixOf(const std::string& pattern)
{
    return pattern.substr(0, pattern.find('*'));
}

TEST(Mapping, everyRuleLeadsToADefinition)
{
    EXPECT_GE(rules().size(), loadedLocales().size());
    for (const Rule& rule : rules()) {
        EXPECT_EQ(loadedLocales().count(rule.target), 1u) << rule.pattern << " leads to " << rule.target;
        EXPECT_EQ(rule.pattern.find('*'), rule.pattern.size() - 1) << rule.pattern;
    }
}

TEST(Mapping, noRuleIsCoveredByAnEarlierOne)
{
    std::vector<std::string> earlier;
    for (const Rule& rule : rules()) {
        for (const std::string& prefix : earlier) {
            EXPECT_NE(prefixOf(rule.pattern).rfind(prefix, 0), 0u)
                << rule.pattern << " stands behind " << prefix << "*";
        }
        earlier.push_back(prefixOf(rule.pattern));
    }
}

TEST(Mapping, onlyTheLastRuleTakesEverything)
{
    ASSERT_FALSE(rules().empty());
    EXPECT_EQ(rules().back().pattern, "*");
    EXPECT_EQ(rules().back().target, "en-us");
    EXPECT_EQ(rules().front().pattern == "*", false);
}

TEST(Mapping, everyDefinitionIsReachedByItsOwnTag)
{
    for (const auto& [name, locale] : loadedLocales()) {
        EXPECT_EQ(mapTag(canonicalTag(name)), name);
        EXPECT_EQ(mapTag(canonicalTag(name) + ",en;q=0.5"), name);
    }
}

TEST(Mapping, everyLanguageWithoutRegionReachesItsMainLocale)
{
    for (const Element& definition : definitions().children) {
        const std::string name = definition.attribute("name");
        if (definition.attributes.count("basedOn") == 0) {
            EXPECT_EQ(mapTag(name.substr(0, name.find('-'))), name);
        }
    }
}

TEST(Mapping, browsersTagsReachTheLocaleTheyMean)
{
    const std::string path = std::string(WEBI18N_SOURCE_DIR) + "/browsertags.txt";
    std::ifstream rows(path);
    ASSERT_TRUE(rows) << "cannot read " << path;
    std::string row;
    int line = 0;
    int cases = 0;
    while (std::getline(rows, row)) {
        ++line;
        std::istringstream fields(row);
        std::string tag;
        std::string expected;
        if (row.empty() || row[0] == '#' || !(fields >> tag >> expected)) {
            continue;
        }
        ++cases;
        EXPECT_EQ(mapTag(tag), expected) << path << ":" << line << ": " << row;
    }
    EXPECT_GE(cases, 60);
}

}  // namespace
}  // namespace shipped
