#include <gtest/gtest.h>

#include "currencies.h"

// The pictures of negative amounts: what is declared, what is added, which is preferred.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::Handle;
using vel::String;

void expectNegatives(const std::string& children, const wchar_t* formats, const wchar_t* preferred,
                     const std::string& attributes = "")
{
    const Handle<const Currency> record = recordOf(currency("t", "local", attributes, children));
    EXPECT_EQ(String(formats), negativesOf(*record)) << children;
    EXPECT_EQ(String(preferred), record->getPreferredNegativeTag()) << children;
}

TEST(NegativeFormats, WithoutChildrenThereAreExactlyMinusAndParens)
{
    const Handle<const Currency> record = recordOf(currency("t", "local"));
    ASSERT_EQ(2U, record->getNegativeFormats().size());
    EXPECT_EQ(String(L"-$#"), record->getNegativeFormats().at(L"minus").getFormat());
    EXPECT_EQ(String(L"($#)"), record->getNegativeFormats().at(L"parens").getFormat());
    EXPECT_EQ(String(L"minus"), record->getPreferredNegativeTag());
}

TEST(NegativeFormats, TheAddedOnesAreMadeOfTheCurrencysOwnFormat)
{
    expectNegatives("", L"minus=-#\u00A0$;parens=(#\u00A0$);", L"minus", "format=\"#\xC2\xA0$\"");
    EXPECT_EQ(String(L"minus=-# $;parens=(# $);"), negativesOf(*recordOf(currency("t", "international"))));
}

TEST(NegativeFormats, AFirstOneOfAnotherTagIsPreferredAndGainsMinusAndParens)
{
    expectNegatives(negative("red", "[$#]"), L"minus=-$#;parens=($#);red=[$#];", L"red");
}

TEST(NegativeFormats, TheFirstOfSeveralIsPreferred)
{
    expectNegatives(negative("red", "r") + negative("blue", "b") + negative("minus", "m"),
                    L"blue=b;minus=m;parens=($#);red=r;", L"red");
}

TEST(NegativeFormats, ADeclaredMinusOrParensIsKept)
{
    expectNegatives(negative("minus", "$-#"), L"minus=$-#;parens=($#);", L"minus");
    expectNegatives(negative("parens", "$(#)"), L"minus=-$#;parens=$(#);", L"parens");
    expectNegatives(negative("parens", "p") + negative("minus", "m"), L"minus=m;parens=p;", L"parens");
}

TEST(NegativeFormats, TagsAreCaseSensitive)
{
    expectNegatives(negative("MINUS", "m"), L"MINUS=m;minus=-$#;parens=($#);", L"MINUS");
}

TEST(NegativeFormats, ALaterOneOfTheSameTagReplacesTheEarlierOneAndNotThePreference)
{
    expectNegatives(negative("red", "1") + negative("blue", "2") + negative("red", "3"),
                    L"blue=2;minus=-$#;parens=($#);red=3;", L"red");
}

TEST(NegativeFormats, OnesWithoutTagOrFormatAreSkipped)
{
    const std::string blanks = negative("", "x") + negative("a", "") + negative("", "") + "<negative/>" +
                               "<negative tag=\"b\"/><negative format=\"c\"/><negative Tag=\"d\" format=\"e\"/>";
    expectNegatives(blanks, L"minus=-$#;parens=($#);", L"minus");
    expectNegatives(blanks + negative("red", "r"), L"minus=-$#;parens=($#);red=r;", L"red");
}

TEST(NegativeFormats, OneBlankIsATagAndAFormat)
{
    expectNegatives(negative(" ", " "), L" = ;minus=-$#;parens=($#);", L" ");
}

TEST(NegativeFormats, OnlyChildrenOfThatNameCount)
{
    expectNegatives("<group>" + negative("a", "x") + "</group><Negative tag=\"b\" format=\"x\"/>text<other/>",
                    L"minus=-$#;parens=($#);", L"minus");
    expectNegatives("<v:negative xmlns:v=\"u\" tag=\"a\" format=\"x\">" + negative("b", "y") + "</v:negative>",
                    L"a=x;minus=-$#;parens=($#);", L"a");
}

}  // namespace
