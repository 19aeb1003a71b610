#include <gtest/gtest.h>

#include <clocale>

#include "http.h"
#include "preferences.h"
#include "qualitylist.h"
#include "query.h"
#include "serverlimits.h"

namespace {

/// "name thousandths, ..." of the entries, then the malformed ones in brackets.
std::string shown(const server::QualityList& list)
{
    std::string text;
    for (const auto& entry : list.m_tEntries) {
        text += entry.m_sName + " " + std::to_string(entry.m_nThousandths) + ", ";
    }
    for (const auto& entry : list.m_tMalformed) {
        text += "[" + entry.m_sText + "] ";
    }
    return text;
}

TEST(AcceptLanguage, isReadBestFirst)
{
    const std::pair<const char*, const char*> kRows[] = {
        {"", ""},
        {"fr-CA,fr;q=0.9", "fr-CA 1000, fr 900, "},
        {"en;q=0.5, de", "de 1000, en 500, "},
        {"a,b,c;q=1,d;q=1.000", "a 1000, b 1000, c 1000, d 1000, "},  // equal ones keep their order
        {"x;q=0.1,y;q=0.1,z;q=0.2", "z 200, x 100, y 100, "},
        {", ,*;q=0.001", "* 1, "},
        {"fr ; q=0.25", "fr 250, "},
        {"de;Q=0.", "de 0, "},
        {"fr;q=1.5,de;q=0", "de 0, [fr;q=1.5] "},
        {"fr_CA,de", "de 1000, [fr_CA] "},
        {"fr;q=0.1234", "[fr;q=0.1234] "},
        {"fr;q=", "[fr;q=] "},
        {"fr;q=-1", "[fr;q=-1] "},
        {"fr;level=1", "[fr;level=1] "},
        {"fr;", "[fr;] "},
        {";q=1", "[;q=1] "},
        {"abcdefgh,abcdefghi", "abcdefgh 1000, [abcdefghi] "},
        {"fr--ca,-fr,fr-", "[fr--ca] [-fr] [fr-] "},
        {"1a,a1,a-1", "a-1 1000, [1a] [a1] "},
        {"fr\xC3\xA9", "[fr\xC3\xA9] "},
    };
    for (const auto& [header, expected] : kRows) {
        EXPECT_EQ(shown(server::parseAcceptLanguage(header)), expected) << header;
    }
}

TEST(AcceptLanguage, takesSoManyEntriesAndReportsTheOthers)
{
    std::string header;
    for (std::size_t index = 0; index < server::kQualityEntries + 2; ++index) {
        header += "en,";
    }
    const auto list = server::parseAcceptLanguage(header);
    EXPECT_EQ(list.m_tEntries.size(), server::kQualityEntries);
    EXPECT_EQ(list.m_tMalformed.size(), 2U);
}

TEST(AcceptCharset, takesNamesThatAreNoLanguages)
{
    EXPECT_EQ(shown(server::parseAcceptCharset("iso_8859-1:1987;q=0.5,windows-1252")),
              "windows-1252 1000, [iso_8859-1:1987;q=0.5] ");
    EXPECT_EQ(shown(server::parseAcceptCharset("Shift_JIS;q=0.7,*;q=0.1")), "Shift_JIS 700, * 100, ");
}

TEST(PercentDecoding, needsTwoDigits)
{
    EXPECT_EQ(server::percentDecoded("a%20b+c"), "a b c");
    EXPECT_EQ(server::percentDecoded("%c3%A9"), "\xC3\xA9");
    EXPECT_EQ(server::percentDecoded("%00"), std::string(1, '\0'));
    for (const char* wrong : {"%", "%4", "a%", "%g0", "%0g", "%%41"}) {
        EXPECT_EQ(server::percentDecoded(wrong), std::nullopt) << wrong;
    }
}

TEST(PercentEncoding, isTheInverse)
{
    EXPECT_EQ(server::percentEncoded("a b"), "a%20b");
    EXPECT_EQ(server::percentEncoded("\xC3\xA9;,\"\\&=+%"), "%C3%A9%3B%2C%22%5C%26%3D%2B%25");
    EXPECT_EQ(server::percentEncoded("azAZ09-._~"), "azAZ09-._~");
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(server::percentDecoded(server::percentEncoded(all)), all);
}

unsigned statusOf(const std::string& cookie)
{
    try {
        server::preferencesOf(cookie);
    } catch (const server::Refusal& refusal) {
        return refusal.m_nStatus;
    }
    return 200;
}

TEST(PreferencesCookie, isReadAmongOthers)
{
    const auto preferences =
        server::preferencesOf("theme=dark; webi18n=\"dateOrder=dmy&decimalSeparator=%2C&24hours=\"; x");
    ASSERT_EQ(preferences.size(), 3U);
    EXPECT_EQ(preferences[0], std::make_pair(std::string("dateOrder"), vel::String(L"dmy")));
    EXPECT_EQ(preferences[1].second, vel::String(L","));
    EXPECT_TRUE(preferences[2].second.isEmpty());
    EXPECT_TRUE(server::preferencesOf("webi18nx=1; xwebi18n=2; webi18n").empty());
}

TEST(PreferencesCookie, isWrittenAsItIsRead)
{
    const server::Parameters preferences = {{"dateFormat", L"dd 'of' MMMM"}, {"decimalSeparator", L"\u066B"}};
    const std::string cookie = server::cookieOf(preferences);
    EXPECT_EQ(cookie, "webi18n=dateFormat=dd%20%27of%27%20MMMM&decimalSeparator=%D9%AB");
    EXPECT_EQ(server::preferencesOf(cookie), preferences);
    EXPECT_EQ(server::cookieOf({}), "webi18n=");
}

TEST(PreferencesCookie, refusesSeparatorsThatWouldBeReadAsSomethingElse)
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const std::tuple<const char*, const wchar_t*, const char*> kRows[] = {
        {"dateSeparator", L"/", ""},
        {"dateSeparator", L". ", ""},
        {"dateSeparator", L"d", "may not have letters or digits"},
        {"dateSeparator", L"-\u5E74", "may not have letters or digits"},  // the sign for year
        {"dateSeparator", L"0", "may not have letters or digits"},
        {"dateSeparator", L"'", "may not have apostrophes"},
        {"timeSeparator", L"h", "may not have letters or digits"},
        {"timeSeparator", L"':'", "may not have apostrophes"},
        {"timeSeparator", L":", ""},
        {"decimalSeparator", L"\u066B", ""},
        {"decimalSeparator", L"5", "may not have letters or digits"},
        {"decimalSeparator", L"p", "may not have letters or digits"},
        {"thousandsSeparator", L"'", ""},  // as in Switzerland
        {"thousandsSeparator", L"1", "may not have letters or digits"},
        {"dateFormat", L"d 'de' MMMM", ""},
        {"currencyTag", L"EUR", ""},
        {"24hours", L"yes", "is not accepted: accepted are true and false"},
        {"timeSeparator", L"", ""},
    };
    for (const auto& [key, value, fault] : kRows) {
        EXPECT_EQ(server::preferenceFault(key, value), fault) << key << " " << vel::toUtf8Lossy(value);
    }
}

TEST(PreferencesCookie, isValidated)
{
    EXPECT_EQ(statusOf("webi18n="), 200U);
    EXPECT_EQ(statusOf("webi18n=colour=red"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateOrder=dym"), 400U);
    EXPECT_EQ(statusOf("webi18n=24hours=yes"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateOrder=dmy&dateOrder=mdy"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateOrder=dmy; webi18n=dateOrder=dmy"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateSeparator=%FF"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateSeparator=%2"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateSeparator=%0A"), 400U);
    EXPECT_EQ(statusOf("webi18n=dateFormat=" + std::string(server::kOverrideLength, 'd')), 200U);
    EXPECT_EQ(statusOf("webi18n=dateFormat=" + std::string(server::kOverrideLength + 1, 'd')), 400U);
    EXPECT_EQ(statusOf("webi18n=" + std::string(server::kCookieBytes, '&')), 200U);
    EXPECT_EQ(statusOf("webi18n=" + std::string(server::kCookieBytes + 1, '&')), 431U);
}

}  // namespace
