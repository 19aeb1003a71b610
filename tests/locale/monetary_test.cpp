#include <gtest/gtest.h>

#include "locales.h"
#include "printers.h"

// Monetary separators follow the plain ones until a definition gives them one of their own.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

struct Kind
{
    Locale::StringInfo m_ePlain;
    Locale::StringInfo m_eMonetary;
    const char* m_pPlain;
    const char* m_pMonetary;
};

class MonetarySeparators : public testing::TestWithParam<Kind>
{
protected:
    static std::string plain(const std::string& text) { return property(GetParam().m_pPlain, text); }
    static std::string monetary(const std::string& text) { return property(GetParam().m_pMonetary, text); }
    static void expect(const wchar_t* plainText, const wchar_t* monetaryText, const Locale& locale)
    {
        EXPECT_EQ(String(plainText), locale.getInfoAsString(GetParam().m_ePlain));
        EXPECT_EQ(String(monetaryText), locale.getInfoAsString(GetParam().m_eMonetary));
    }
};

TEST_P(MonetarySeparators, FollowTheDerivedDefinitionsPlainOneWhenTheyOnlyFollowedTheBases)
{
    const Locale base = localeOf(plain(";"));
    expect(L";", L";", base);
    expect(L".", L".", localeOf(plain("."), base));
    expect(L";", L";", localeOf("", base));
}

TEST_P(MonetarySeparators, KeepWhatTheDerivedDefinitionGivesThemThoughThePlainOneComesLater)
{
    const Locale base = localeOf(plain(";"));
    expect(L".", L" ", localeOf(monetary(" ") + plain("."), base));
    expect(L".", L" ", localeOf(plain(".") + monetary(" "), base));
}

TEST_P(MonetarySeparators, OfTheBaseStayWhenTheyWereItsOwn)
{
    const Locale base = localeOf(plain(";") + monetary("'"));
    expect(L".", L"'", localeOf(plain("."), base));
    expect(L"'", L"'", localeOf(plain("'"), base));
}

TEST_P(MonetarySeparators, ThatHappenToEqualThePlainOneFollowItFromTheNextDefinitionOn)
{
    const Locale equal = localeOf(plain("'"), localeOf(plain(";") + monetary("'")));
    expect(L".", L".", localeOf(plain("."), equal));
}

TEST_P(MonetarySeparators, SetToNothingFollowThePlainOne)
{
    expect(L";", L";", localeOf(monetary(""), localeOf(plain(";") + monetary("'"))));
}

TEST_P(MonetarySeparators, StandAloneWhereThereIsNoPlainOne)
{
    expect(L"", L"'", localeOf(monetary("'")));
    expect(L"", L"", localeOf(plain(""), localeOf(plain(";"))));
}

INSTANTIATE_TEST_SUITE_P(Both, MonetarySeparators,
                         testing::Values(Kind{Locale::kThousandsSeparator, Locale::kMonetaryThousandsSeparator,
                                              "thousandsSeparator", "monetaryThousandsSeparator"},
                                         Kind{Locale::kDecimalSeparator, Locale::kMonetaryDecimalSeparator,
                                              "decimalSeparator", "monetaryDecimalSeparator"}),
                         [](const testing::TestParamInfo<Kind>& kind) { return std::string(kind.param.m_pPlain); });

TEST(MonetarySeparatorsOfUSA, ADerivedThousandsSeparatorMovesTheMonetaryOne)
{
    const Locale derived = localeOf(property("thousandsSeparator", "."), Locale::kUSA);
    EXPECT_EQ(String(L"."), derived.getInfoAsString(Locale::kMonetaryThousandsSeparator));
}

TEST(MonetarySeparatorsOfUSA, ADerivedMonetaryThousandsSeparatorStays)
{
    const Locale derived =
        localeOf(property("monetaryThousandsSeparator", " ") + property("thousandsSeparator", "."), Locale::kUSA);
    EXPECT_EQ(String(L" "), derived.getInfoAsString(Locale::kMonetaryThousandsSeparator));
    EXPECT_EQ(String(L"."), derived.getInfoAsString(Locale::kThousandsSeparator));
}

}  // namespace
