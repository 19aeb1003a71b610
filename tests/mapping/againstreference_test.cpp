#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "mappings.h"
#include "printers.h"

// The rule tree against the plain scan.

namespace {

using namespace testsupport;
using slowmapping::Rule;
using vel::Locale;
using vel::String;

/// All texts over the alphabet of at most that length.
std::vector<std::wstring> textsOver(const std::wstring& alphabet, std::size_t maxLength)
{
    std::vector<std::wstring> texts = {L""};
    for (std::size_t begin = 0, length = 0; length < maxLength; ++length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const wchar_t each : alphabet) {
                texts.push_back(texts[begin] + each);
            }
        }
    }
    return texts;
}

bool isAllowed(const std::wstring& name)
{
    static const std::set<std::wstring> kAllowed = {L"en-us", L"EN-us", L"fr-fr", L"fr-ca", L"de-de"};
    return kAllowed.count(name) != 0;
}

void expectSame(MappingOnCatalogue& mapping, const std::vector<Rule>& rules, const std::wstring& text)
{
    const slowmapping::Decision expected = slowmapping::decide(rules, text, isAllowed);
    const vel::LocaleMappingExplanation seen = mapping.mapping().explainLocale(text, L"");
    EXPECT_TRUE(slowmapping::sameDecision(expected, seen, rules))
        << "text \"" << vel::toUtf8Lossy(text) << "\", rules " << whensOf(rules);
    const String name = mapping.map(text);
    if (expected.m_tRule) {
        EXPECT_TRUE(name.equalsNoCase(*rules[*expected.m_tRule].m_tDefinition)) << testing::PrintToString(name);
    } else {
        EXPECT_EQ(String(L"USA"), name);
    }
    const auto [locale, language] = mapping.mapping().mapLocale(text, L"");
    EXPECT_EQ(seen.m_sLanguage, language);
    EXPECT_EQ(seen.m_tLocale.definitionName(), locale.definitionName());
}

TEST(MappingAgainstReference, EveryPairOfShortRulesOnEveryShortText)
{
    MappingOnCatalogue mapping;
    const std::vector<std::wstring> patterns = textsOver(L"ab*", 2);
    const std::vector<std::wstring> texts = textsOver(L"ab*", 3);
    std::size_t cases = 0;
    for (const std::wstring& first : patterns) {
        for (const std::wstring& second : patterns) {
            const std::vector<Rule> rules = {
                {first, L"de-de"}, {second, L"xx"}, {L"a*", std::nullopt}, {L"b", L"fr-fr"}};
            mapping.load(whensOf(rules));
            for (const std::wstring& text : texts) {
                expectSame(mapping, rules, text);
                ++cases;
            }
        }
    }
    EXPECT_EQ(13U * 13U * 40U, cases);
}

TEST(MappingAgainstReference, AllShortRulesInManyOrders)
{
    MappingOnCatalogue mapping;
    std::mt19937 random(20261121);
    const wchar_t* const targets[] = {L"en-us", L"xx", L"de-de", L"", L"EN-us"};
    const std::vector<std::wstring> texts = textsOver(L"ab*", 4);
    for (int round = 0; round < 30; ++round) {
        std::vector<Rule> rules;
        for (const std::wstring& pattern : textsOver(L"ab*", 3)) {
            const std::size_t target = random() % 12;
            rules.push_back({pattern, target < 5 ? std::optional<std::wstring>(targets[target]) : std::nullopt});
        }
        std::shuffle(rules.begin(), rules.end(), random);
        mapping.load(whensOf(rules));
        for (const std::wstring& text : texts) {
            expectSame(mapping, rules, text);
        }
    }
}

TEST(MappingAgainstReference, RandomRulesAndTexts)
{
    MappingOnCatalogue mapping;
    std::mt19937 random(7);
    const wchar_t* const pieces[] = {L"e", L"en", L"fr",     L"-",       L"-CA",  L"*",
                                     L"",  L",",  L"\x00e9", L"\x1F600", L"de-AT"};
    const wchar_t* const targets[] = {L"en-us", L"xx", L"de-de", L"fr-ca"};
    const auto text = [&] {
        std::wstring result;
        for (std::size_t left = random() % 5; left > 0; --left) {
            result += pieces[random() % std::size(pieces)];
        }
        return result;
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<Rule> rules;
        for (std::size_t left = random() % 40; left > 0; --left) {
            rules.push_back(
                {text(), random() % 4 == 0 ? std::nullopt : std::optional<std::wstring>(targets[random() % 4])});
        }
        mapping.load(whensOf(rules));
        for (int i = 0; i < 60; ++i) {
            expectSame(mapping, rules, text());
        }
    }
}

TEST(MappingAgainstReference, ATextThatHundredsOfRulesMatch)
{
    MappingOnCatalogue mapping;
    std::vector<Rule> rules;
    for (std::size_t length = 300; length > 0; --length) {
        rules.push_back({std::wstring(length, L'a') + L"*", length % 7 == 0 ? std::optional<std::wstring>() : L"xx"});
        rules.push_back({std::wstring(length, L'a'), L"xx"});
    }
    rules.push_back({L"*", L"de-de"});
    mapping.load(whensOf(rules));
    for (const std::size_t length : {0U, 1U, 15U, 16U, 17U, 31U, 32U, 33U, 299U, 300U, 301U, 5000U}) {
        expectSame(mapping, rules, std::wstring(length, L'a'));
        expectSame(mapping, rules, std::wstring(length, L'a') + L"b");
    }
}

TEST(MappingAgainstReference, AHundredThousandRules)
{
    MappingOnCatalogue mapping;
    std::vector<Rule> rules;
    for (unsigned i = 0; i < 100000; ++i) {
        const std::wstring number = std::to_wstring(i * 7919U % 100000U);
        rules.push_back({i % 3 == 0 ? number : number + L"*", i % 5 == 0 ? L"xx" : L"fr-fr"});
    }
    mapping.load(whensOf(rules));
    for (const wchar_t* text :
         {L"", L"0", L"00", L"7", L"7919", L"99999", L"99999x", L"12345,6;q=1", L"x", L"100000"}) {
        expectSame(mapping, rules, text);
    }
}

TEST(MappingAgainstReference, AHeaderOfTenMegabytes)
{
    MappingOnCatalogue mapping;
    const std::wstring header(std::size_t{10} << 20, L'f');
    const std::vector<Rule> rules = {{L"fr*", L"fr-ca"}, {L"ffff", L"de-de"}, {L"fff*", L"xx"}, {L"ff*", L"fr-fr"}};
    mapping.load(whensOf(rules));
    expectSame(mapping, rules, header);
    expectSame(mapping, rules, L"fr" + header);
}

}  // namespace
