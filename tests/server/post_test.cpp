#include <gtest/gtest.h>

#include <cstdio>

#include "client.h"
#include "runningserver.h"
#include "serverlimits.h"
#include "webi18n/collator.h"

namespace {

using tests::get;
using tests::Reply;

class Post : public testing::Test
{
protected:
    Reply ask(std::string_view target, std::string_view headers = {}) const
    {
        return get(m_tServer.port(), target, headers);
    }
    Reply send(std::string_view target, std::string_view body, std::string_view headers = {}) const
    {
        return tests::post(m_tServer.port(), target, body, headers);
    }

    tests::RunningServer m_tServer;
};

/// The texts in their order.
std::string linesIn(const nlohmann::json& answer)
{
    std::string lines;
    for (const auto& each : answer["lines"]) {
        lines += (lines.empty() ? "" : " ") + each["text"].get<std::string>();
    }
    return lines;
}

TEST_F(Post, sortsLines)
{
    const std::pair<const char*, const char*> kRows[] = {
        {R"({"lines":["z","ö","a","Ä","å"],"sort":"sv"})", "a z å Ä ö"},
        {R"({"lines":["z","ö","a","Ä","å"],"sort":"und"})", "a å Ä ö z"},
        {R"({"lines":["a","B","A","b"],"sort":"binary"})", "A B a b"},
        {R"({"lines":["a","B","A","b"],"sort":"da-u-kf-upper"})", "A a B b"},
        {R"({"lines":["a","B","A","b"],"sort":"und","strength":"primary"})", "a A B b"},
        {R"({"lines":["a","B","A","b"],"sort":"und","strength":1})", "a A B b"},
        {R"({"lines":["a","B","A","b"],"sort":"UND","strength":"4"})", "a A b B"},
        {R"({"lines":["x10","x9"],"sort":"en-u-kn"})", "x9 x10"},
        {R"({"lines":[],"sort":"sv"})", ""},
        {R"({})", ""},
    };
    for (const auto& [body, expected] : kRows) {
        const Reply reply = send("/api/sort", body);
        EXPECT_EQ(reply.m_nStatus, 200U) << body;
        EXPECT_EQ(linesIn(reply.json()), expected) << body;
    }
}

TEST_F(Post, tellsTheKeysAndWhereALineStood)
{
    const auto json = send("/api/sort", R"({"lines":["z","ö","\u0000","😀"],"sort":"sv","strength":"tertiary"})").json();
    EXPECT_EQ(json["sort"], "sv");
    EXPECT_EQ(json["strength"], 4);
    const auto hGuard = vel::i18n::NLSEnvironment::getEnvironmentGuard();
    vel::i18n::NLSThreadContext context(vel::i18n::NLSEnvironment::getDefaultEnvironment());
    vel::i18n::Collator collator(context, L"sv", vel::i18n::kCollationStrengthTertiaryFlag);
    EXPECT_EQ(json["version"], vel::toUtf8Lossy(collator.version()));
    ASSERT_EQ(json["lines"].size(), 4U);
    EXPECT_EQ(json["lines"][0]["text"], std::string(1, '\0'));
    EXPECT_EQ(json["lines"][1]["text"], "😀");
    EXPECT_EQ(json["lines"][3]["text"], "ö");
    EXPECT_EQ(json["lines"][3]["place"], 1);
    std::string key;
    const vel::i18n::CollationKey made = collator.createCollationKey(L"ö", 1);
    for (const char each : made.view()) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(each));
        key += digits;
    }
    EXPECT_EQ(json["lines"][3]["key"], key);
}

TEST_F(Post, sortsByTheLocaleWhenNoSortIsNamed)
{
    EXPECT_EQ(send("/api/sort?locale=sv-se", R"({"lines":["z","ö"]})").json()["sort"], "sv");
    EXPECT_EQ(linesIn(ask("/api/sort?line=z&line=%C3%B6&line=a", "Accept-Language: sv-SE\r\n").json()), "a z ö");
    EXPECT_EQ(linesIn(ask("/api/sort?line=z&line=%C3%B6&line=a&sort=de&strength=primary").json()), "a ö z");
}

TEST_F(Post, sortsByEverySortThatIsOffered)
{
    const auto json = ask("/api/sorts", "Accept-Language: sv-SE\r\n").json();
    EXPECT_EQ(json["locale"], "sv-se");
    EXPECT_EQ(json["sort"], "sv");
    EXPECT_EQ(json["strengths"][2], "tertiary");
    EXPECT_GT(json["sorts"].size(), 50U);
    for (const std::string sort : json["sorts"]) {
        const Reply reply = ask("/api/sort?line=b&line=a&sort=" + sort);
        EXPECT_EQ(reply.m_nStatus, 200U) << sort;
        EXPECT_EQ(linesIn(reply.json()), "a b") << sort;
    }
}

TEST_F(Post, encodesText)
{
    const std::tuple<const char*, const char*, unsigned, const char*> kRows[] = {
        {R"({"text":"naïve €","charset":"iso-8859-15"})", "6e61ef766520a4", 0, "iso-8859-15"},
        {R"({"text":"naïve €","charset":"KOI8-R"})",
         "6e61"  // na&#239;ve &#8364;
         "26233233393b"
         "766520"
         "2623383336343b",
         2, "KOI8-R"},
        {R"({"text":"a€","charset":"us-ascii","unencodable":"substitute"})", "611a", 1, "us-ascii"},
        {R"({"text":"€","charset":"utf-8"})", "e282ac", 0, "utf-8"},
        {R"({"text":"€"})", "e282ac", 0, "utf-8"},
        {R"({"text":"あ","charset":"shift_jis"})", "82a0", 0, "shift_jis"},
        {R"({"text":""})", "", 0, "utf-8"},
    };
    for (const auto& [body, bytes, replaced, label] : kRows) {
        const auto json = send("/api/encode", body).json();
        EXPECT_EQ(json["bytes"], bytes) << body;
        EXPECT_EQ(json["replaced"], replaced) << body;
        EXPECT_EQ(json["label"], label) << body;
    }
    const auto lacking = send("/api/encode", R"({"text":"€ñ€い😀","charset":"iso-2022-jp"})").json();
    EXPECT_EQ(lacking["replaced"], 4);
    EXPECT_EQ(lacking["lacking"], nlohmann::json({"ñ", "€", "😀"}));
    EXPECT_EQ(send("/api/encode", R"({"text":"い","charset":"iso-2022-jp"})").json()["lacking"],
              nlohmann::json::array());
    EXPECT_EQ(ask("/api/encode?text=%E2%82%AC", "Accept-Charset: iso-8859-15\r\n").json()["bytes"], "a4");
    EXPECT_EQ(ask("/api/encode?text=%E2%82%AC&charset=windows-1252").json()["bytes"], "80");
    EXPECT_EQ(ask("/api/encode?text=%E2%82%ACx&charset=koi8-r").json()["characters"], 2);
}

TEST_F(Post, checksPreferencesOneByOne)
{
    const auto json = send("/api/preferences?locale=de-de",
                           R"({"dateOrder":"ymd","timeSeparator":"h","decimalSeparator":";","24hours":"yes",
                               "dateFormat":"","thousandsSeparator":null})",
                           "Cookie: webi18n=dateSeparator=-\r\n")
                          .json();
    EXPECT_EQ(json["locale"], "de-de");
    EXPECT_EQ(json["preferences"].dump(), R"({"dateOrder":"ymd","decimalSeparator":";"})");
    EXPECT_EQ(json["cookie"], "webi18n=decimalSeparator=%3B&dateOrder=ymd");
    ASSERT_EQ(json["errors"].size(), 2U);
    EXPECT_EQ(json["errors"][0]["field"], "timeSeparator");
    EXPECT_EQ(json["errors"][0]["message"], "The preference timeSeparator may not have letters or digits.");
    EXPECT_EQ(json["errors"][1]["field"], "24hours");
    EXPECT_EQ(json["effect"]["decimalSeparator"], ";");
    EXPECT_EQ(json["effect"]["dateInputFormat"], "yyyy.MM.dd");
    EXPECT_EQ(json["effect"]["24hours"], true);
    const auto none = ask("/api/preferences?dateSeparator=-", "Accept-Language: en-US\r\n").json();
    EXPECT_EQ(none["cookie"], "webi18n=dateSeparator=-");
    EXPECT_EQ(none["effect"]["dateInputFormat"], "MM-dd-yyyy");
    EXPECT_TRUE(none["errors"].empty());
}

TEST_F(Post, listsTheCharacterSets)
{
    const auto json = ask("/api/charsets").json();
    EXPECT_GT(json["charsets"].size(), 30U);
    for (const auto& each : json["charsets"]) {
        const std::string definition = each["definition"];
        EXPECT_GT(each["implementations"].size(), 0U) << definition;
        EXPECT_EQ(ask("/api/encode?text=&charset=" + definition).m_nStatus, 200U) << definition;
    }
}

TEST_F(Post, refusesWithAReason)
{
    const std::tuple<const char*, std::string, unsigned, const char*, const char*> kRows[] = {
        {"/api/sort", "", 400, "bad-json", ""},
        {"/api/sort", "[]", 400, "bad-json", ""},
        {"/api/sort", "{\"lines\":[\"a\"}", 400, "bad-json", ""},
        {"/api/sort", "{\"lines\":[\"\xFF\"]}", 400, "bad-encoding", ""},
        {"/api/sort", "{\"lines\":[\"\\ud800\"]}", 400, "bad-json", ""},
        {"/api/sort", "{\"n\":1e999}", 400, "bad-json", ""},
        {"/api/sort", std::string(300000, '['), 400, "bad-json", ""},
        {"/api/sort", "{\"lines\":\"a\"}", 400, "bad-field", "lines"},
        {"/api/sort", "{\"lines\":[1]}", 400, "bad-field", "lines"},
        {"/api/sort", "{\"lines\":[],\"sort\":[]}", 400, "bad-field", "sort"},
        {"/api/sort", "{\"sort\":\"xx-YY\"}", 400, "no-such-sort", "sort"},
        {"/api/sort", "{\"sort\":\"en-u-ka-shifted-kn\"}", 400, "no-such-sort", "sort"},
        {"/api/sort", "{\"strength\":\"strong\"}", 400, "bad-field", "strength"},
        {"/api/sort", "{\"strength\":3}", 400, "bad-field", "strength"},
        {"/api/sort", "{\"strength\":1.0}", 400, "bad-field", "strength"},
        {"/api/sort?locale=xx", "{}", 404, "no-such-locale", ""},
        {"/api/preferences", "{\"dateOrder\":[]}", 400, "bad-field", "dateOrder"},
        {"/api/preferences", "null", 400, "bad-json", ""},
        {"/api/encode", "{}", 400, "bad-field", "text"},
        {"/api/encode", "{\"text\":null}", 400, "bad-field", "text"},
        {"/api/encode", "{\"text\":true}", 400, "bad-field", "text"},
        {"/api/encode", "{\"text\":\"\",\"charset\":\"utf-9\"}", 404, "no-such-charset", "charset"},
        {"/api/encode", "{\"text\":\"\",\"unencodable\":\"error\"}", 400, "bad-field", "unencodable"},
    };
    for (const auto& [target, body, status, code, field] : kRows) {
        const Reply reply = send(target, body);
        EXPECT_EQ(reply.m_nStatus, status) << body.substr(0, 60);
        EXPECT_EQ(reply.json()["error"]["code"], code) << body.substr(0, 60);
        EXPECT_EQ(reply.json()["error"].value("field", ""), field) << body.substr(0, 60);
    }
}

TEST_F(Post, refusesTooMuch)
{
    std::string lines = "\"a\"";
    for (std::size_t index = 1; index < server::kLines; ++index) {
        lines += ",\"a\"";
    }
    EXPECT_EQ(send("/api/sort", "{\"lines\":[" + lines + "]}").m_nStatus, 200U);
    EXPECT_EQ(send("/api/sort", "{\"lines\":[" + lines + ",\"a\"]}").json()["error"]["code"], "bad-field");
    EXPECT_EQ(send("/api/encode", "{\"text\":\"" + std::string(1 << 20, 'a') + "\"}").m_nStatus, 413U);
    const auto large = send("/api/encode", "{\"text\":\"" + std::string((1 << 20) - 11, 'a') + "\"}").json();
    EXPECT_EQ(large["characters"], (1 << 20) - 11);
}

TEST_F(Post, isAllowedWhereSomethingIsSent)
{
    for (const char* target : {"/api/sort", "/api/encode", "/api/preferences"}) {
        for (const char* method : {"PUT", "DELETE", "PATCH"}) {
            tests::Client client(m_tServer.port());
            client.send(std::string(method) + " " + target + " HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n" +
                        tests::ksFromOurPage + "\r\n");
            const Reply reply = client.receive().value();
            EXPECT_EQ(reply.m_nStatus, 405U) << target;
            EXPECT_EQ(reply.m_tHeaders.at("allow"), "GET, HEAD, POST") << target;
        }
    }
    for (const char* target : {"/", "/api/sorts", "/api/charsets", "/api/render", "/api/locales"}) {
        const Reply reply = send(target, "{}");
        EXPECT_EQ(reply.m_nStatus, 405U) << target;
        EXPECT_EQ(reply.m_tHeaders.at("allow"), "GET, HEAD") << target;
    }
}

}  // namespace
