#include <gtest/gtest.h>

#include <fstream>

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
    // The count follows the answer.
    std::string text;
    for (int round = 0; round < 1000 && text.find("\"400\"") == std::string::npos; ++round) {
        text = ask("/metrics").m_sBody;
    }
    EXPECT_NE(text.find("webi18n_requests_total{route=\"/api/resolve\",status=\"200\"} 1\n"), std::string::npos);
    EXPECT_NE(text.find("webi18n_requests_total{route=\"/api/resolve\",status=\"400\"} 1\n"), std::string::npos);
    EXPECT_NE(text.find("webi18n_request_seconds_count{route=\"/api/resolve\"} 2\n"), std::string::npos);
    EXPECT_NE(text.find("webi18n_stage_total{stage=\"mapping\"} 1\n"), std::string::npos);
}

}  // namespace
