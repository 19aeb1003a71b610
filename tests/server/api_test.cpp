#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>
#include <vector>

#include "client.h"
#include "runningserver.h"

namespace {

using tests::get;
using tests::Reply;

std::string textOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Api : public testing::Test
{
protected:
    Reply ask(std::string_view target, std::string_view headers = {}) const
    {
        return get(m_tServer.port(), target, headers);
    }

    tests::RunningServer m_tServer;
};

TEST_F(Api, resolvesByTheBestEntryThatHasARule)
{
    const auto json = ask("/api/resolve", "Accept-Language: xx, en;q=0.3, fr-CA;q=0.8, e_n\r\n").json();
    EXPECT_EQ(json["locale"], "fr-ca");
    EXPECT_EQ(json["language"], "fr");
    EXPECT_EQ(json["input"], "xx, en;q=0.3, fr-CA;q=0.8, e_n");
    ASSERT_EQ(json["entries"].size(), 3U);
    EXPECT_EQ(json["entries"][0]["tag"], "xx");
    EXPECT_EQ(json["entries"][0]["decided"], false);
    EXPECT_EQ(json["entries"][1]["tag"], "fr-CA");
    EXPECT_EQ(json["entries"][1]["q"], 0.8);
    EXPECT_EQ(json["entries"][1]["decided"], true);
    EXPECT_EQ(json["entries"][2]["tag"], "en");
    ASSERT_EQ(json["malformed"].size(), 1U);
    EXPECT_EQ(json["malformed"][0]["text"], "e_n");
    EXPECT_TRUE(json["rule"]["index"].is_number());
}

TEST_F(Api, takesTheLastRuleWhenNoEntryDecides)
{
    for (const char* header : {"", "Accept-Language: \r\n", "Accept-Language: xx\r\n", "Accept-Language: fr;q=0\r\n",
                               "Accept-Language: \xFF\xFE\r\n"}) {
        const auto json = ask("/api/resolve", header).json();
        EXPECT_EQ(json["locale"], "en-us") << header;
        for (const auto& entry : json["entries"]) {
            EXPECT_EQ(entry["decided"], false) << header;
        }
    }
}

TEST_F(Api, takesTheRequestedLanguage)
{
    EXPECT_EQ(ask("/api/resolve?language=de", "Accept-Language: fr-CA\r\n").json()["language"], "de");
    EXPECT_EQ(ask("/api/resolve?language=" + std::string(65, 'd')).m_nStatus, 400U);
}

TEST_F(Api, appliesTheUsersOverrides)
{
    const auto json = ask("/api/locale?locale=de-de&user=dateOrder%3Dymd",
                          "Cookie: webi18n=dateOrder=mdy&decimalSeparator=%27&dateSeparator=-\r\n")
                          .json();
    EXPECT_EQ(json["locale"], "de-de");
    EXPECT_EQ(json["dateOrder"], "ymd");
    EXPECT_EQ(json["decimalSeparator"], "'");
    EXPECT_EQ(json["dateSeparator"], "-");
    EXPECT_EQ(ask("/api/locale?locale=de-de").json()["decimalSeparator"], ",");
}

TEST_F(Api, parsesInTheLocale)
{
    const auto json = ask("/api/parse?locale=de-de&text=31.12.2005").json();
    EXPECT_EQ(json["result"], 7);
    EXPECT_EQ(json["year"], 2005);
    EXPECT_EQ(json["month"], 12);
    EXPECT_EQ(json["day"], 31);
    EXPECT_EQ(ask("/api/parse?text=nothing").json()["result"], 0);
    EXPECT_EQ(ask("/api/parse?text=1%2F2%2F2003", "Accept-Language: en-US\r\n").json()["month"], 1);
    EXPECT_EQ(ask("/api/parse?text=1%2F2%2F2003", "Accept-Language: en-GB\r\n").json()["month"], 2);
}

TEST_F(Api, tellsCurrencies)
{
    const auto json = ask("/api/currencies?tag=EUR&language=fr").json();
    ASSERT_EQ(json["currencies"].size(), 1U);
    EXPECT_EQ(json["currencies"][0]["tag"], "EUR");
    EXPECT_EQ(json["currencies"][0]["name"], "euro");
    EXPECT_EQ(json["currencies"][0]["type"], "international");
    EXPECT_GT(ask("/api/currencies").json()["currencies"].size(), 100U);
    EXPECT_EQ(ask("/api/currencies?tag=XXQ").m_nStatus, 404U);
}

TEST_F(Api, tellsJavaLocales)
{
    EXPECT_EQ(ask("/api/java?locale=fr-ca").json()["string"], "fr_CA");
    EXPECT_EQ(ask("/api/java?locale=fr-ca&uiLanguage=de").json()["string"], "de_CA");
}

/// The entry of a locale among those that can be chosen.
nlohmann::json choiceOf(const nlohmann::json& answer, const std::string& locale)
{
    for (const auto& each : answer["locales"]) {
        if (each["locale"] == locale) {
            return each;
        }
    }
    return {};
}

TEST_F(Api, listsTheAllowedLocalesForAReader)
{
    const auto json = ask("/api/locales?uiLanguage=fr", "Accept-Language: de-DE\r\n").json();
    EXPECT_EQ(json["language"], "fr");
    EXPECT_EQ(json["current"], "de-de");
    EXPECT_GT(json["locales"].size(), 400U);
    const auto german = choiceOf(json, "de-de");
    EXPECT_EQ(german["name"], "allemand (Allemagne)");
    EXPECT_EQ(german["ownName"], "Deutsch (Deutschland)");
    EXPECT_EQ(german["defaultLanguage"], "de");
    EXPECT_EQ(german["tag"], "de-DE");
    EXPECT_EQ(german["direction"], "ltr");
    EXPECT_EQ(choiceOf(json, "sr-latn-rs")["tag"], "sr-Latn-RS");
    EXPECT_EQ(choiceOf(json, "es-419")["tag"], "es-419");
    EXPECT_EQ(choiceOf(json, "ja-jp")["ownName"], "日本語 (日本)");
}

TEST_F(Api, tellsWhichLocalesAreWrittenFromRightToLeft)
{
    const auto json = ask("/api/locales").json();
    EXPECT_EQ(json["language"], "en");
    for (const char* locale : {"ar-eg", "he-il", "fa-ir", "ur-pk", "ps-af", "ckb-iq", "pa-pk", "uz-af"}) {
        EXPECT_EQ(choiceOf(json, locale)["direction"], "rtl") << locale;
    }
    for (const char* locale : {"en-us", "ru-ru", "th-th", "hi-in", "zh-cn", "az-az", "tr-tr"}) {
        EXPECT_EQ(choiceOf(json, locale)["direction"], "ltr") << locale;
    }
    EXPECT_EQ(ask("/api/locales?uiLanguage=" + std::string(65, 'd')).m_nStatus, 400U);
}

/// The text of the row that has this member.
std::string textIn(const nlohmann::json& rows, const char* member, const std::string& value)
{
    for (const auto& row : rows) {
        if (row.value(member, std::string()) == value) {
            return row["text"];
        }
    }
    return "there is no such row";
}

TEST_F(Api, rendersInTheLocale)
{
    const auto json = ask("/api/render?locale=en-us&date=2005-12-31T15:07:01&number=-1234567.5").json();
    EXPECT_EQ(json["locale"], "en-us");
    EXPECT_EQ(json["tag"], "en-US");
    EXPECT_EQ(json["direction"], "ltr");
    EXPECT_EQ(textIn(json["dates"], "name", "dateShortFormat"), "12/31/2005");
    EXPECT_EQ(textIn(json["dates"], "name", "dateLongFormat"), "Saturday, December 31, 2005");
    EXPECT_EQ(textIn(json["dates"], "picture", "MMM d, yyyy"), "Dec 31, 2005");
    EXPECT_EQ(textIn(json["times"], "name", "timeFormat"), "3:07:01 PM");
    EXPECT_EQ(textIn(json["times"], "name", "timeInputFormat"), "03:07:01 PM");
    EXPECT_EQ(textIn(json["times"], "picture", "HH:mm"), "15:07");
    EXPECT_EQ(textIn(json["dateTimes"], "picture", "M/d/yyyy HH:mm"), "12/31/2005 15:07");
    EXPECT_EQ(json["numbers"]["positive"], "1,234,567.5");
    EXPECT_EQ(json["numbers"]["negative"], "-1,234,567.5");
    EXPECT_EQ(json["numbers"]["scaled"], "1.23 M");
    EXPECT_EQ(json["numbers"]["percent"], "25.6%");
    EXPECT_EQ(json["amounts"]["tag"], "loc:en-us");
    EXPECT_EQ(json["amounts"]["positive"], "$1,234,567.50");
    EXPECT_EQ(textIn(json["amounts"]["negatives"], "tag", "minus"), "-$1,234,567.50");
    EXPECT_EQ(textIn(json["amounts"]["negatives"], "picture", "($#)"), "($1,234,567.50)");
}

TEST_F(Api, rendersByTheUsersPreferences)
{
    const auto json = ask("/api/render?locale=de-de&currency=EUR&number=1234.5&user=decimalSeparator%3D%3B",
                          "Cookie: webi18n=dateFormat=yyyy%2FMM%2Fdd&thousandsSeparator=_\r\n")
                          .json();
    EXPECT_EQ(textIn(json["dates"], "name", "dateShortFormat"), "2026/02/03");
    EXPECT_EQ(json["numbers"]["positive"], "1_234;5");
    EXPECT_EQ(json["amounts"]["positive"], "1_234;50 EUR");
    EXPECT_EQ(ask("/api/render?locale=de-de", "Cookie: webi18n=currencyTag=USD\r\n").json()["amounts"]["tag"], "USD");
}

TEST_F(Api, showsAMonthFromTheFirstDayOfTheWeek)
{
    // February 2026 has four whole weeks from a Sunday on.
    const auto american = ask("/api/render?locale=en-us&date=2026-02-03").json()["month"];
    EXPECT_EQ(american["name"], "February");
    EXPECT_EQ(american["firstDayOfWeek"], 6);
    EXPECT_EQ(american["days"][0], "Sunday");
    EXPECT_EQ(american["shortDays"][6], "Sat");
    ASSERT_EQ(american["weeks"].size(), 4U);
    EXPECT_EQ(american["weeks"][0], nlohmann::json::parse("[1,2,3,4,5,6,7]"));
    const auto german = ask("/api/render?locale=de-de&date=2026-02-03").json()["month"];
    EXPECT_EQ(german["days"][0], "Montag");
    ASSERT_EQ(german["weeks"].size(), 5U);
    EXPECT_EQ(german["weeks"][0], nlohmann::json::parse("[0,0,0,0,0,0,1]"));
    EXPECT_EQ(german["weeks"][4], nlohmann::json::parse("[23,24,25,26,27,28,0]"));
    // A leap year's one, and a month of six weeks.
    EXPECT_EQ(ask("/api/render?locale=de-de&date=2024-02-29").json()["month"]["weeks"][4],
              nlohmann::json::parse("[26,27,28,29,0,0,0]"));
    EXPECT_EQ(ask("/api/render?locale=de-de&date=2026-08-31").json()["month"]["weeks"][5],
              nlohmann::json::parse("[31,0,0,0,0,0,0]"));
}

TEST_F(Api, rendersOnlyWhatIsADateOrANumber)
{
    for (const char* date : {"2026-02-29", "2026-13-01", "16:05:09", "2026-02", "0000-01-01", "-2026-01-01", "today",
                             "2026-02-03T24:00:00"}) {
        const Reply reply = ask(std::string("/api/render?date=") + date);
        EXPECT_EQ(reply.m_nStatus, 400U) << date;
        EXPECT_EQ(reply.json()["error"]["code"], "bad-parameter") << date;
    }
    for (const char* number : {"1e3", "1,5", "-", ".", "0x1", "%20", "--1", "%2B-1", "%D9%A1"}) {
        EXPECT_EQ(ask(std::string("/api/render?number=") + number).m_nStatus, 400U) << number;
    }
    EXPECT_EQ(ask("/api/render?number=" + std::string(65, '1')).json()["error"]["field"], "number");
    EXPECT_EQ(ask("/api/render?number=x").json()["error"]["field"], "number");
    EXPECT_EQ(ask("/api/render?date=x").json()["error"]["field"], "date");
    EXPECT_EQ(ask("/api/render?currency=x").json()["error"]["field"], "currency");
    EXPECT_EQ(ask("/api/render?number=" + std::string(64, '1')).m_nStatus, 200U);
    EXPECT_EQ(ask("/api/render?number=%2B.5").json()["numbers"]["negative"], "-0.5");
    EXPECT_EQ(ask("/api/render?currency=XXQ").m_nStatus, 404U);
}

TEST_F(Api, answersInTheCharacterSetThatIsAsked)
{
    const Reply reply = ask("/api/locale?locale=fr-fr", "Accept-Charset: x-no-such, iso-8859-1;q=0.5, utf-8;q=0.1\r\n");
    EXPECT_EQ(reply.m_tHeaders.at("content-type"), "application/json; charset=iso-8859-1");
    EXPECT_EQ(reply.json()["locale"], "fr-fr");
    EXPECT_EQ(reply.json(), ask("/api/locale?locale=fr-fr").json());
    EXPECT_EQ(ask("/api/charset", "Accept-Charset: iso-8859-1\r\n").json()["label"], "iso-8859-1");
    EXPECT_EQ(ask("/api/charset").json()["label"], "utf-8");
    EXPECT_EQ(ask("/api/charset?supported=no-such&preferred=supported").m_nStatus, 404U);
}

TEST_F(Api, refusesWithAReason)
{
    const std::tuple<const char*, const char*, unsigned, const char*> kRows[] = {
        {"/index.htm", "", 404, "not-found"},
        {"/page", "", 404, "not-found"},
        {"/api/resolve/", "", 404, "not-found"},
        {"/api/locale?locale=xx-yy", "", 404, "no-such-locale"},
        {"/api/parse", "", 400, "bad-parameter"},
        {"/api/parse?text=1&expect=noon", "", 400, "bad-parameter"},
        {"/api/parse?text=1&text=2", "", 400, "bad-parameter"},
        {"/api/parse?text=%FF", "", 400, "bad-encoding"},
        {"/api/parse?text=%2", "", 400, "bad-encoding"},
        {"/api/parse?%C0%80=1", "", 400, "bad-encoding"},
        {"/api/locale?user=colour%3Dred", "", 400, "bad-parameter"},
        {"/api/locale", "Cookie: webi18n=dateOrder=no\r\n", 400, "bad-cookie"},
        {"/api/locale?1&2&3&4&5&6&7&8&9&10&11&12&13&14&15&16&17&18&19&20&21&22&23&24&25&26&27&28&29&30&31&32&33", "",
         400, "too-many-parameters"},
    };
    for (const auto& [target, headers, status, code] : kRows) {
        const Reply reply = ask(target, headers);
        EXPECT_EQ(reply.m_nStatus, status) << target;
        EXPECT_EQ(reply.json()["error"]["code"], code) << target;
        EXPECT_EQ(reply.json()["error"]["status"], status) << target;
    }
}

TEST_F(Api, takesABadCookieFromTheClient)
{
    const Reply reply = ask("/api/locale", "Cookie: webi18n=" + std::string(1025, 'a') + "\r\n");
    EXPECT_EQ(reply.m_nStatus, 431U);
    EXPECT_EQ(reply.m_tHeaders.at("set-cookie"), "webi18n=; Path=/; Max-Age=0; SameSite=Strict");
    EXPECT_EQ(ask("/healthz", "Cookie: webi18n=dateOrder=no\r\n").m_nStatus, 200U);
}

TEST_F(Api, namesThePreferenceAtFault)
{
    const Reply reply = ask("/api/locale", "Cookie: webi18n=dateOrder=dmy&timeSeparator=h\r\n");
    EXPECT_EQ(reply.m_nStatus, 400U);
    EXPECT_EQ(reply.json()["error"]["code"], "bad-cookie");
    EXPECT_EQ(reply.json()["error"]["field"], "timeSeparator");
    EXPECT_EQ(reply.json()["error"]["message"], "The preference timeSeparator may not have letters or digits.");
    EXPECT_EQ(reply.m_tHeaders.count("set-cookie"), 1U);
    const Reply typed = ask("/api/locale?user=dateSeparator%3D%27");
    EXPECT_EQ(typed.json()["error"]["field"], "dateSeparator");
    EXPECT_EQ(typed.m_tHeaders.count("set-cookie"), 0U);
}

TEST_F(Api, echoesNothingUnescaped)
{
    const Reply control = ask("/api/resolve", "Accept-Language: \"><script>\\\x01\r\n");
    EXPECT_EQ(control.m_nStatus, 400U);
    EXPECT_EQ(control.m_sBody.find("script"), std::string::npos);
    const Reply marked = ask("/api/resolve", "Accept-Language: \"><script>\\\r\n");
    EXPECT_EQ(marked.json()["malformed"][0]["text"], "\"><script>\\");
    EXPECT_EQ(marked.m_tHeaders.at("x-content-type-options"), "nosniff");
}

TEST_F(Api, setsSecurityHeadersOnEachAnswer)
{
    for (const char* target : {"/", "/api/resolve", "/healthz", "/metrics", "/none", "/api/parse?text=%FF"}) {
        const Reply reply = ask(target);
        EXPECT_EQ(reply.m_tHeaders.at("x-content-type-options"), "nosniff") << target;
        EXPECT_EQ(reply.m_tHeaders.at("x-frame-options"), "DENY") << target;
        EXPECT_EQ(reply.m_tHeaders.at("referrer-policy"), "no-referrer") << target;
        EXPECT_NE(reply.m_tHeaders.at("content-security-policy").find("default-src 'none'; script-src 'self'; "),
                  std::string::npos)
            << target;
    }
}

TEST_F(Api, servesThePage)
{
    const std::pair<const char*, const char*> kFiles[] = {{"/", "text/html; charset=utf-8"},
                                                          {"/?locale=de-de", "text/html; charset=utf-8"},
                                                          {"/page.css", "text/css; charset=utf-8"},
                                                          {"/page.js", "text/javascript; charset=utf-8"}};
    for (const auto& [target, type] : kFiles) {
        const Reply reply = ask(target);
        EXPECT_EQ(reply.m_nStatus, 200U) << target;
        EXPECT_EQ(reply.m_tHeaders.at("content-type"), type) << target;
        EXPECT_EQ(reply.m_tHeaders.at("cache-control"), "no-cache") << target;
        EXPECT_GT(reply.m_sBody.size(), 0U) << target;
    }
    EXPECT_EQ(ask("/").m_sBody.substr(0, 15), "<!doctype html>");
    EXPECT_EQ(ask("/").m_sBody, textOf(WEBI18N_SOURCE_DIR "/../../server/page/index.html"));
}

TEST_F(Api, tellsWhenABrowsersCopyOfThePageStillHolds)
{
    const std::string tag = ask("/page.js").m_tHeaders.at("etag");
    const Reply same = ask("/page.js", "If-None-Match: \"x\", " + tag + "\r\n");
    EXPECT_EQ(same.m_nStatus, 304U);
    EXPECT_EQ(same.m_sBody, "");
    EXPECT_EQ(same.m_tHeaders.at("etag"), tag);
    EXPECT_EQ(ask("/page.js", "If-None-Match: \"x\"\r\n").m_nStatus, 200U);
    EXPECT_EQ(ask("/page.css", "If-None-Match: " + tag + "\r\n").m_nStatus, 200U);
}

TEST_F(Api, countsWhatItServed)
{
    ask("/api/resolve");
    ask("/api/resolve?language=%FF");
    const std::vector<std::string> lines = {
        "webi18n_requests_total{route=\"/api/resolve\",status=\"200\"} 1\n",
        "webi18n_requests_total{route=\"/api/resolve\",status=\"400\"} 1\n",
        "webi18n_request_seconds_count{route=\"/api/resolve\"} 2\n",
        "webi18n_stage_total{stage=\"mapping\"} 1\n",
    };
    // A connection counts after it has sent its answer, each in its own time: the client may ask before either has.
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    const auto isMissing = [](const std::string& text, const std::string& line) {
        return text.find(line) == std::string::npos;
    };
    for (const std::string& line : lines) {
        std::string text = ask("/metrics").m_sBody;
        while (isMissing(text, line) && std::chrono::steady_clock::now() < limit) {
            text = ask("/metrics").m_sBody;
        }
        EXPECT_FALSE(isMissing(text, line)) << line << text;
    }
}

}  // namespace
