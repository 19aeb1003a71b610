#include <gtest/gtest.h>

#include "currencies.h"

// The attributes of a "Currency" element, row by row.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::Handle;
using vel::String;

struct Row
{
    const char* m_pAttributes;
    const wchar_t* m_pOutline;  // "" for an element that is skipped
};

class CurrencyAttributes : public testing::TestWithParam<Row>
{};

TEST_P(CurrencyAttributes, AreReadAsStated)
{
    const vel::CurrencyLookup lookup = loaded(std::string("<Currency ") + GetParam().m_pAttributes + "/>");
    const String expected = GetParam().m_pOutline;
    ASSERT_EQ(expected.isEmpty() ? 0U : 1U, lookup.getCurrencyList().size());
    if (!expected.isEmpty()) {
        EXPECT_EQ(expected, outline(*lookup.getCurrencyList().front()));
    }
}

constexpr const wchar_t* kPlain = L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);||";
constexpr const wchar_t* kPlainInternational =
    L"t|international||# $|-1||display,thousands|minus|minus=-# $;parens=(# $);||";

INSTANTIATE_TEST_SUITE_P(
    TagAndType, CurrencyAttributes,
    testing::Values(Row{"tag='t' type='local'", kPlain}, Row{"tag='t' type='LOCAL'", kPlain},
                    Row{"tag='t' type='LocaL'", kPlain}, Row{"tag='t' type='international'", kPlainInternational},
                    Row{"tag='t' type='INTERNATIONAL'", kPlainInternational}, Row{"tag='t' type='national'", L""},
                    // One blank is not nothing, and no part of a type.
                    Row{"tag='t' type=' '", L""}, Row{"tag='t' type=' local'", L""}, Row{"tag='t' type='local '", L""},
                    Row{"tag='t' type='loca'", L""}, Row{"tag='t' type='locals'", L""}, Row{"tag='t' type=''", L""},
                    Row{"tag='t'", L""}, Row{"tag='' type='local'", L""}, Row{"type='local'", L""}, Row{"", L""},
                    Row{"Tag='t' type='local'", L""}, Row{"tag='t' Type='local'", L""},
                    Row{"tag=' ' type='local'", L" |local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);||"},
                    // Attributes of other vocabularies are ignored, wherever they stand.
                    Row{"x:tag='t' type='local'", L""}, Row{"tag='t' x:type='local'", L""},
                    Row{"xsi:type='x' tag='t' type='local'", kPlain},
                    Row{"tag='t' type='local' xsi:type='international' x:tag='u' x:symbol='s'", kPlain}));

INSTANTIATE_TEST_SUITE_P(
    Texts, CurrencyAttributes,
    testing::Values(
        Row{"tag='t' type='local' symbol='\xE2\x82\xAC'",
            L"t|local|\u20AC|$#|-1||display,thousands|minus|minus=-$#;parens=($#);||"},
        Row{"tag='t' type='local' symbol=''", kPlain},
        Row{"tag='t' type='local' symbol=' '", L"t|local| |$#|-1||display,thousands|minus|minus=-$#;parens=($#);||"},
        Row{"tag='t' type='local' format='#$'", L"t|local||#$|-1||display,thousands|minus|minus=-#$;parens=(#$);||"},
        Row{"tag='t' type='international' format='$ #'",
            L"t|international||$ #|-1||display,thousands|minus|minus=-$ #;parens=($ #);||"},
        Row{"tag='t' type='local' format=''", kPlain},
        Row{"tag='t' type='international' format=''", kPlainInternational},
        Row{"tag='t' type='local' format=' '", L"t|local|| |-1||display,thousands|minus|minus=- ;parens=( );||"},
        // A picture is not looked into.
        Row{"tag='t' type='local' format='x'", L"t|local||x|-1||display,thousands|minus|minus=-x;parens=(x);||"},
        Row{"tag='t' type='local' locale='de-de'",
            L"t|local||$#|-1|de-de|display,thousands|minus|minus=-$#;parens=($#);||"},
        Row{"tag='t' type='international' locale='de-de'",
            L"t|international||# $|-1|de-de|display,thousands|minus|minus=-# $;parens=(# $);||"},
        Row{"tag='t' type='local' locale=''", kPlain},
        Row{"tag='t' type='local' locale=' '", L"t|local||$#|-1| |display,thousands|minus|minus=-$#;parens=($#);||"}));

INSTANTIATE_TEST_SUITE_P(Captions, CurrencyAttributes,
                         testing::Values(Row{"tag='t' type='local' displayMessage='a'",
                                             L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);|a|"},
                                         Row{"tag='t' type='local' displaymessage='b'",
                                             L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);|b|"},
                                         Row{"tag='t' type='local' displaymessage='b' displayMessage='a'",
                                             L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);|a|"},
                                         Row{"tag='t' type='local' displayMessage='' displaymessage='b'",
                                             L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);|b|"},
                                         Row{"tag='t' type='local' displayMessage=' ' displaymessage='b'",
                                             L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);| |"},
                                         Row{"tag='t' type='local' displayMessage='' displaymessage='' displayName=''",
                                             kPlain},
                                         Row{"tag='t' type='local' displayName='n'",
                                             L"t|local||$#|-1||display,thousands|minus|minus=-$#;parens=($#);||n"},
                                         // The name has one spelling only.
                                         Row{"tag='t' type='local' displayname='n' DisplayMessage='a'", kPlain}));

struct DigitsRow
{
    const char* m_pText;
    std::int32_t m_nDigits;
};

TEST(CurrencyDigits, AreTheLeadingNumber)
{
    const DigitsRow rows[] = {{"0", 0},
                              {"2", 2},
                              {"3", 3},
                              {"-1", -1},
                              {"-3", -3},
                              {"+4", 4},
                              {" 2", 2},
                              {"&#9;2", 2},
                              {"2 ", 2},
                              {"2x", 2},
                              {"2.7", 2},
                              {"2,7", 2},
                              {"007", 7},
                              {"0x10", 0},
                              {"1e3", 1},
                              {"- 2", 0},
                              {"--2", 0},
                              {"x", 0},
                              {"two", 0},
                              // One blank is not nothing: it is no number.
                              {" ", 0},
                              {"\xEF\xBC\x92", 0},
                              {"2147483647", 2147483647},
                              {"-2147483648", -2147483647 - 1},
                              // What no record can hold is no number, and does not wrap around to one.
                              {"2147483648", 0},
                              {"-2147483649", 0},
                              {"4294967298", 0},
                              {"-4294967298", 0},
                              {"9223372036854775807", 0},
                              {"99999999999999999999999", 0},
                              {"-99999999999999999999999", 0},
                              // Nothing: the host's number format decides.
                              {"", -1}};
    for (const DigitsRow& row : rows) {
        const std::string attribute = std::string("digits=\"") + row.m_pText + "\"";
        EXPECT_EQ(row.m_nDigits, recordOf(currency("t", "local", attribute))->getDefaultDigits()) << attribute;
    }
}

TEST(CurrencyDigits, AreMinusOneWithoutTheAttribute)
{
    EXPECT_EQ(-1, recordOf(currency("t", "local"))->getDefaultDigits());
    EXPECT_EQ(-1, recordOf(currency("t", "international", "Digits=\"2\""))->getDefaultDigits());
}

struct Flag
{
    const char* m_pName;
    bool m_bDefault;
    bool (Currency::*m_fGet)() const noexcept;
};

TEST(CurrencyFlags, AreTheFourSpellingsAndElseTheDefault)
{
    const Flag flags[] = {{"display", true, &Currency::displayAsChoice},
                          {"placeholder", false, &Currency::isPlaceholder},
                          {"thousandsSeparator", true, &Currency::useThousandsSeparator}};
    for (const Flag& flag : flags) {
        const auto read = [&](const std::string& value) {
            const Handle<const Currency> record =
                recordOf(currency("t", "local", std::string(flag.m_pName) + "=\"" + value + "\""));
            return ((*record).*flag.m_fGet)();
        };
        EXPECT_EQ(flag.m_bDefault, ((*recordOf(currency("t", "local"))).*flag.m_fGet)()) << flag.m_pName;
        for (const char* each : {"true", "1"}) {
            EXPECT_TRUE(read(each)) << flag.m_pName << ' ' << each;
        }
        for (const char* each : {"false", "0"}) {
            EXPECT_FALSE(read(each)) << flag.m_pName << ' ' << each;
        }
        for (const char* each : {"", " ", "TRUE", "False", "yes", "no", " true", "false ", "2", "00", "-1", "t"}) {
            EXPECT_EQ(flag.m_bDefault, read(each)) << flag.m_pName << ' ' << each;
        }
    }
}

TEST(CurrencyFlags, AreReadOneByOne)
{
    const Handle<const Currency> record =
        recordOf(currency("t", "local", "display=\"0\" placeholder=\"1\" thousandsSeparator=\"0\""));
    EXPECT_EQ(String(L"t|local||$#|-1||placeholder,|minus|minus=-$#;parens=($#);||"), outline(*record));
}

}  // namespace
