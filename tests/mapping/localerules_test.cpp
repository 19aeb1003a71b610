#include "localerules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vel::i18n_details::LocaleRuleTable;

std::vector<unsigned> matchesOf(const LocaleRuleTable& table, std::wstring_view text)
{
    std::vector<unsigned> found;
    table.visitMatches(text, [&](LocaleRuleTable::RuleIndex index) {
        found.push_back(index);
        return false;
    });
    return found;
}

TEST(LocaleRuleTable, VisitsInTheOrderOfTheRulesUntilItIsEnough)
{
    LocaleRuleTable table;
    for (const wchar_t* const pattern : {L"fr-CA", L"fr*", L"*", L"fr-CA", L"de*"}) {
        table.add(pattern);
    }
    EXPECT_THAT(matchesOf(table, L"fr-CA"), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(matchesOf(table, L"fr"), ElementsAre(1, 2));
    EXPECT_THAT(matchesOf(table, L""), ElementsAre(2));
    unsigned visited = 0;
    table.visitMatches(L"fr-CA", [&](LocaleRuleTable::RuleIndex) { return ++visited == 2; });
    EXPECT_EQ(visited, 2U);
}

// The hash of this text is 1, the least that there is: beside 0, which marks a free place.
TEST(LocaleRuleTable, KeepsAPatternOfTheLeastHashWhileItGrows)
{
    LocaleRuleTable table;
    table.add(L"\x01");
    for (unsigned number = 0; number < 1000; ++number) {
        table.add(std::to_wstring(number));
    }
    EXPECT_THAT(matchesOf(table, L"\x01"), ElementsAre(0));
    EXPECT_THAT(matchesOf(table, L"999"), ElementsAre(1000));
    EXPECT_THAT(matchesOf(table, L"1000"), IsEmpty());
}

}  // namespace
