// What any page of the web can make a browser send to this machine.

#include "net/access.h"

#include <gtest/gtest.h>

#include "client.h"
#include "net/responsehead.h"
#include "runningserver.h"

namespace {

using server::Claims;

/// The status of the refusal; 0 when the request is taken.
unsigned statusOf(const Claims& claims, const server::Access& access = {})
{
    const auto fault = server::accessFault(claims, access);
    return fault ? fault->m_nStatus : 0;
}

TEST(Access, hostIsOneOfOurNames)
{
    const std::pair<const char*, unsigned> kRows[] = {
        {"localhost", 0},
        {"LocalHost:8080", 0},
        {"127.0.0.1", 0},
        {"127.0.0.1:1", 0},
        {"[::1]", 0},
        {"[::1]:8080", 0},
        {"localhost:", 0},
        {"", 421},
        {"evil.example", 421},
        {"localhost.evil", 421},
        {"localhost:x", 421},
        {"localhost:80:80", 421},
        {"127.0.0.1.evil", 421},
        {"localhost, evil", 421},
        {"::1", 421},
        {"[::1]evil", 421},
        {"user@localhost", 421},
        {"localhost/", 421},
        {"[::1", 421},
        {"localhost:123456", 421},
    };
    for (const auto& [host, status] : kRows) {
        EXPECT_EQ(statusOf({"GET", {host}, {}, {}}), status) << host;
    }
    EXPECT_EQ(statusOf({"GET", {}, {}, {}}), 400U);
    EXPECT_EQ(statusOf({"GET", {"localhost", "localhost"}, {}, {}}), 400U);
    EXPECT_EQ(statusOf({"GET", {"i18n.example:443"}, {}, {}}, {{"i18n.example"}, {}}), 0U);
    EXPECT_EQ(statusOf({"GET", {"localhost"}, {}, {}}, {{"i18n.example"}, {}}), 421U);
}

TEST(Access, originIsOursWhereSomethingIsSent)
{
    const std::pair<const char*, unsigned> kRows[] = {
        {"http://localhost:8080", 0},
        {"https://LOCALHOST:8080", 0},
        {"https://partner.example", 0},
        {"http://localhost", 403},
        {"http://localhost:80801", 403},
        {"null", 403},
        {"http://evil.example", 403},
        {"localhost:8080", 403},
        {"ftp://localhost:8080", 403},
        {"http://partner.example", 403},
        {"", 403},
        {"http://localhost:8080/", 403},
    };
    const server::Access access = {{"localhost"}, {"https://partner.example"}};
    for (const auto& [origin, status] : kRows) {
        EXPECT_EQ(statusOf({"POST", {"localhost:8080"}, {origin}, {"application/json"}}, access), status) << origin;
        EXPECT_EQ(statusOf({"GET", {"localhost:8080"}, {origin}, {}}, access), 0U) << origin;
    }
    const std::string_view ours = "http://localhost";
    EXPECT_EQ(statusOf({"POST", {"localhost"}, {}, {"application/json"}}), 403U);
    EXPECT_EQ(statusOf({"POST", {"localhost"}, {ours, ours}, {"application/json"}}), 403U);
    EXPECT_EQ(statusOf({"DELETE", {"localhost"}, {"http://evil.example"}, {"application/json"}}), 403U);
}

TEST(Access, whatIsSentIsJson)
{
    const std::pair<const char*, unsigned> kRows[] = {
        {"application/json", 0},
        {"Application/JSON ; charset=UTF-8", 0},
        {"application/json;charset=\"utf-8\"", 0},
        {"application/json; charset=utf-7", 415},
        {"text/plain", 415},
        {"application/x-www-form-urlencoded", 415},
        {"text/plain; application/json", 415},
        {"application/jsonp", 415},
        {"", 415},
    };
    for (const auto& [type, status] : kRows) {
        EXPECT_EQ(statusOf({"POST", {"localhost"}, {"http://localhost"}, {type}}), status) << type;
    }
    EXPECT_EQ(statusOf({"POST", {"localhost"}, {"http://localhost"}, {}}), 415U);
}

TEST(Access, isLookedAtBeforeABodyIsRead)
{
    const tests::RunningServer server;
    const std::string end = "Content-Length: 100000\r\nExpect: 100-continue\r\n\r\n";
    const std::tuple<std::string, unsigned, const char*> kRows[] = {
        {"GET /healthz HTTP/1.1\r\nHost: evil.example\r\n" + end, 421, "wrong-host"},
        {"GET /healthz HTTP/1.1\r\n" + end, 400, "bad-host"},
        {"GET /healthz HTTP/1.1\r\nHost: localhost\r\nHost: localhost\r\n" + end, 400, "bad-host"},
        {"POST /api/sort HTTP/1.1\r\nHost: localhost\r\nOrigin: http://evil.example\r\n" + end, 403, "wrong-origin"},
        {"POST /api/sort HTTP/1.1\r\nHost: localhost\r\nOrigin: http://localhost\r\nContent-Type: text/plain\r\n" + end,
         415, "wrong-media-type"},
    };
    for (const auto& [request, status, code] : kRows) {
        tests::Client client(server.port());
        client.send(request);
        const auto reply = client.receive();
        ASSERT_TRUE(reply.has_value()) << request;
        EXPECT_EQ(reply->m_nStatus, status) << request;
        EXPECT_EQ(reply->json()["error"]["code"], code) << request;
        EXPECT_TRUE(client.isClosed()) << request;
    }
}

TEST(ResponseHead, isBuiltOfFieldValuesOnly)
{
    server::HttpAnswer answer;
    answer.m_sContentType = "application/json; charset=utf-8";
    answer.m_sBody = "{}";
    const std::string head = server::headOf(answer, true);
    EXPECT_TRUE(head.starts_with("HTTP/1.1 200 OK\r\nContent-Type: application/json; charset=utf-8\r\n")) << head;
    EXPECT_TRUE(head.ends_with("\r\nContent-Length: 2\r\n\r\n")) << head;
    for (const char* type : {"text/plain\r\nSet-Cookie: a=b", "text/plain\n", "text/\x01", "caf\xC3\xA9", "\x7F"}) {
        answer.m_sContentType = type;
        EXPECT_THROW(server::headOf(answer, true), std::invalid_argument) << type;
    }
    answer.m_sContentType = "text/plain";
    answer.m_tHeaders = {{"Allow", "GET\r\n"}};
    EXPECT_THROW(server::headOf(answer, true), std::invalid_argument);
}

TEST(ResponseHead, ofAnAnswerThatHasNoneIsThatOfARefusal)
{
    server::HttpServer server(
        {},
        [](const server::HttpRequest&) {
            server::HttpAnswer answer;
            answer.m_sContentType = "application/json; charset=a\r\nSet-Cookie: b=c";
            return answer;
        },
        [](const server::Served&) {});
    const std::uint16_t port = server.listen(0);
    const std::jthread thread([&server] { server.run(1); });
    const tests::Reply reply = tests::get(port, "/");
    EXPECT_EQ(reply.m_nStatus, 500U);
    EXPECT_EQ(reply.m_tHeaders.count("set-cookie"), 0U);
    server.stop();
}

}  // namespace
