#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "client.h"
#include "net/httpserver.h"
#include "runningserver.h"

namespace {

using tests::Client;
using tests::Reply;
using tests::RunningServer;

constexpr std::string_view kHealth = "GET /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n";

server::Limits quickLimits()
{
    server::Limits limits;
    limits.m_tHeaderTime = std::chrono::milliseconds(1000);
    limits.m_tBodyTime = std::chrono::milliseconds(1000);
    limits.m_tIdleTime = std::chrono::milliseconds(1000);
    limits.m_tLingerTime = std::chrono::milliseconds(1000);
    return limits;
}

void expectRefusal(Client& client, unsigned status, const char* code)
{
    const auto reply = client.receive();
    ASSERT_TRUE(reply.has_value()) << code;
    EXPECT_EQ(reply->m_nStatus, status);
    EXPECT_EQ(reply->json()["error"]["code"], code);
    EXPECT_EQ(reply->m_tHeaders.at("x-content-type-options"), "nosniff");
    EXPECT_EQ(reply->m_tHeaders.at("connection"), "close");
    EXPECT_TRUE(client.isClosed());
}

TEST(Http, keepsAConnectionForMoreRequests)
{
    const RunningServer server;
    Client client(server.port());
    for (int round = 0; round < 3; ++round) {
        client.send(kHealth);
        EXPECT_EQ(client.receive()->m_nStatus, 200U);
    }
}

TEST(Http, answersPipelinedRequestsInOrder)
{
    const RunningServer server;
    Client client(server.port());
    std::string requests;
    for (int round = 0; round < 20; ++round) {
        requests += std::string(kHealth) + "GET /none HTTP/1.1\r\nHost: localhost\r\n\r\n";
    }
    client.send(requests);
    for (int round = 0; round < 20; ++round) {
        EXPECT_EQ(client.receive()->m_nStatus, 200U);
        EXPECT_EQ(client.receive()->m_nStatus, 404U);
    }
}

TEST(Http, answersHeadWithoutABody)
{
    const RunningServer server;
    Client client(server.port());
    client.send("HEAD /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const Reply head = client.receive(true).value();
    EXPECT_EQ(head.m_tHeaders.at("content-length"), "16");  // {"status":"ok"} and a line feed
    client.send(kHealth);
    EXPECT_EQ(client.receive()->m_sBody, "{\"status\":\"ok\"}\n");
}

TEST(Http, allowsReadingOnly)
{
    const RunningServer server;
    for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS", "PATCH", "BREW"}) {
        Client client(server.port());
        client.send(std::string(method) + " /api/resolve HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n" +
                    tests::ksFromOurPage + "\r\n");
        const Reply reply = client.receive().value();
        EXPECT_EQ(reply.m_nStatus, 405U) << method;
        EXPECT_EQ(reply.m_tHeaders.at("allow"), "GET, HEAD") << method;
    }
}

TEST(Http, refusesLargeHeaders)
{
    const RunningServer server;
    const std::string most(7 << 10, 'a');
    EXPECT_EQ(tests::get(server.port(), "/healthz", "X: " + most + "\r\n").m_nStatus, 200U);
    for (const std::size_t size : {std::size_t{9} << 10, std::size_t{100} << 10, std::size_t{3} << 20}) {
        Client client(server.port());
        client.send("GET /healthz HTTP/1.1\r\nHost: localhost\r\nX: " + std::string(size, 'a') + "\r\n\r\n");
        expectRefusal(client, 431, "header-too-large");
    }
    Client client(server.port());
    client.send("GET /" + std::string(9 << 10, 'a') + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
    expectRefusal(client, 431, "header-too-large");
}

TEST(Http, refusesLargeBodies)
{
    const RunningServer server;
    const auto head = [](std::size_t size) {
        return "GET /healthz HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(size) + "\r\n";
    };
    const std::size_t most = std::size_t{1} << 20;
    Client fits(server.port());
    fits.send(head(most) + "\r\n" + std::string(most, 'b'));
    EXPECT_EQ(fits.receive()->m_nStatus, 200U);

    Client sends(server.port());
    sends.send(head(most + 1) + "\r\n" + std::string(most + 1, 'b'));
    expectRefusal(sends, 413, "body-too-large");

    Client asks(server.port());
    asks.send(head(most + 1) + "Expect: 100-continue\r\n\r\n");
    expectRefusal(asks, 413, "body-too-large");

    Client chunked(server.port());
    chunked.send("GET /healthz HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n200000\r\n" +
                 std::string(2 << 20, 'c') + "\r\n0\r\n\r\n");
    expectRefusal(chunked, 413, "body-too-large");
}

TEST(Http, invitesABodyThatWaits)
{
    const RunningServer server;
    Client client(server.port());
    client.send("GET /healthz HTTP/1.1\r\nHost: localhost\r\nContent-Length: 3\r\nExpect: 100-continue\r\n\r\n");
    EXPECT_EQ(client.receive()->m_nStatus, 100U);
    client.send("abc");
    EXPECT_EQ(client.receive()->m_nStatus, 200U);
}

TEST(Http, answersSlowClients)
{
    const RunningServer server(quickLimits());
    Client header(server.port());
    header.send("GET /healthz HT");
    expectRefusal(header, 408, "request-timeout");
    Client body(server.port());
    body.send("GET /healthz HTTP/1.1\r\nHost: localhost\r\nContent-Length: 10\r\n\r\nabc");
    expectRefusal(body, 408, "request-timeout");
}

TEST(Http, answersClientsThatSendAByteNowAndThen)
{
    const RunningServer server(quickLimits());
    Client client(server.port());
    // A header that never ends: the time counts from its first byte, however many follow.
    client.send("GET /healthz HTTP/1.1\r\nX: ");
    for (int byte = 0; byte < 1000 && !client.hasSomething(std::chrono::milliseconds(20)); ++byte) {
        client.send("a");
    }
    expectRefusal(client, 408, "request-timeout");
}

TEST(Http, leavesClientsThatTakeNoAnswer)
{
    server::Limits limits = quickLimits();
    limits.m_nConnections = 1;
    limits.m_tWriteTime = std::chrono::milliseconds(200);
    const RunningServer server(limits);
    Client deaf(server.port());
    std::string requests;
    for (int round = 0; round < 300; ++round) {  // their answers are more than any buffer on the way holds
        requests += "GET /api/locales HTTP/1.1\r\nHost: localhost\r\n\r\n";
    }
    deaf.send(requests);
    unsigned status = 0;
    for (int round = 0; round < 1000 && status != 200; ++round) {
        Client next(server.port());
        next.send(kHealth);
        const auto reply = next.receive();
        status = reply ? reply->m_nStatus : 0;
        std::this_thread::sleep_for(std::chrono::milliseconds(status == 200 ? 0 : 10));
    }
    EXPECT_EQ(status, 200U);
}

TEST(Http, takesABodyInPieces)
{
    const RunningServer server;
    Client client(server.port());
    client.send("POST /api/sort HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n" +
                std::string(tests::ksFromOurPage) + "\r\nb\r\n{\"lines\":[\"\r\n");
    client.send("7\r\nb\",\"a\"]\r\n1\r\n}\r\n0\r\n\r\n");
    const Reply reply = client.receive().value();
    EXPECT_EQ(reply.m_nStatus, 200U);
    EXPECT_EQ(reply.json()["lines"][0]["text"], "a");
    // And one behind another.
    const std::string body = "{\"text\":\"a\"}";
    const std::string post = "POST /api/encode HTTP/1.1\r\nHost: localhost\r\n" + std::string(tests::ksFromOurPage) +
                             "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    client.send(post + std::string(kHealth) + post);
    EXPECT_EQ(client.receive()->json()["bytes"], "61");
    EXPECT_EQ(client.receive()->m_sBody, "{\"status\":\"ok\"}\n");
    EXPECT_EQ(client.receive()->json()["bytes"], "61");
}

TEST(Http, closesBehindTheAnswerWhenTheClientWants)
{
    const RunningServer server;
    for (const char* request : {"GET /healthz HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n",
                                "GET /healthz HTTP/1.0\r\nHost: localhost\r\n\r\n"}) {
        Client client(server.port());
        client.send(request);
        EXPECT_EQ(client.receive()->m_nStatus, 200U);
        EXPECT_TRUE(client.isClosed());
    }
}

TEST(Http, closesIdleConnections)
{
    const RunningServer server(quickLimits());
    Client silent(server.port());
    EXPECT_TRUE(silent.isClosed());
    Client idle(server.port());
    idle.send(kHealth);
    EXPECT_EQ(idle.receive()->m_nStatus, 200U);
    EXPECT_TRUE(idle.isClosed());
}

TEST(Http, answersHalfClosedClients)
{
    const RunningServer server;
    Client whole(server.port());
    whole.send(kHealth);
    whole.finishSending();
    EXPECT_EQ(whole.receive()->m_nStatus, 200U);
    EXPECT_TRUE(whole.isClosed());
    Client half(server.port());
    half.send("GET /healthz HTTP/1.1\r\nHost: loc");
    half.finishSending();
    expectRefusal(half, 400, "incomplete-request");
    Client nothing(server.port());
    nothing.finishSending();
    EXPECT_TRUE(nothing.isClosed());
}

TEST(Http, refusesWhatIsNoHttp)
{
    const RunningServer server;
    for (const char* text :
         {"\x16\x03\x01\x02\r\n\r\n", "hello\r\n\r\n", "GET /\r\n\r\n", "GET / HTTP/1.1\r\nno colon\r\n\r\n",
          "GET / HTTP/1.1\r\nContent-Length: x\r\n\r\n", "GET / FTP/1.1\r\n\r\n", "GET /\x80\x01 HTTP/1.1\r\n\r\n",
          "GET / HTTP/1.1\r\nContent-Length: 3\r\nTransfer-Encoding: chunked\r\n\r\n"}) {
        Client client(server.port());
        client.send(text);
        expectRefusal(client, 400, "bad-request");
    }
}

TEST(Http, refusesConnectionsAboveTheCap)
{
    server::Limits limits;
    limits.m_nConnections = 3;
    const RunningServer server(limits);
    std::vector<std::unique_ptr<Client>> clients;
    for (int index = 0; index < 3; ++index) {
        clients.push_back(std::make_unique<Client>(server.port()));
        clients.back()->send(kHealth);
        EXPECT_EQ(clients.back()->receive()->m_nStatus, 200U);
    }
    Client refused(server.port());
    expectRefusal(refused, 503, "too-many-connections");
    clients.front()->send(kHealth);
    EXPECT_EQ(clients.front()->receive()->m_nStatus, 200U);
}

TEST(Http, servesManyConnectionsAtOnce)
{
    const RunningServer server;
    std::vector<std::unique_ptr<Client>> clients;
    for (int index = 0; index < 200; ++index) {
        clients.push_back(std::make_unique<Client>(server.port()));
    }
    for (const auto& client : clients) {
        client->send("GET /api/resolve HTTP/1.1\r\nHost: localhost\r\nAccept-Language: ja\r\n\r\n");
    }
    for (const auto& client : clients) {
        EXPECT_EQ(client->receive()->json()["locale"], "ja-jp");
    }
}

TEST(Http, survivesClientsThatGoAway)
{
    const RunningServer server;
    for (int index = 0; index < 100; ++index) {
        Client client(server.port());
        client.send("GET /api/currencies HTTP/1.1\r\nHost: localhost\r\n\r\n");
    }
    EXPECT_EQ(tests::get(server.port(), "/healthz").m_nStatus, 200U);
}

TEST(Http, stopsWhenRequestsInFlightAreAnswered)
{
    RunningServer server;
    Client idle(server.port());
    idle.send(kHealth);
    EXPECT_EQ(idle.receive()->m_nStatus, 200U);
    Client under(server.port());
    under.send("GET /healthz HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\nExpect: 100-continue\r\n\r\n");
    EXPECT_EQ(under.receive()->m_nStatus, 100U);  // the request is under way
    server.stop();
    EXPECT_TRUE(idle.isClosed());
    under.send("abcd");
    const auto reply = under.receive();
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->m_nStatus, 200U);
    EXPECT_EQ(reply->m_tHeaders.at("connection"), "close");
    server.join();
}

bool isListening(std::uint16_t port)
{
    try {
        const Client client(port);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

TEST(Http, closesAConnectionThatIsStillTakingAnAnswerWhenItStops)
{
    server::Limits limits;
    limits.m_tIdleTime = limits.m_tStopTime = std::chrono::minutes(2);  // longer than the client waits
    limits.m_nAnswerBytes = limits.m_nSharedBytes = std::size_t{1} << 30;
    const std::string body(std::size_t{32} << 20, 'x');  // more than a socket takes that nobody reads from
    server::HttpServer server(
        limits,
        [&body](const server::HttpRequest&) {
            server::HttpAnswer answer;
            answer.m_sBody = body;
            return answer;
        },
        [](const server::Served&) {});
    const std::uint16_t port = server.listen(0);
    const std::jthread thread([&server] { server.run(1); });
    Client slow(port);
    slow.send(kHealth);
    EXPECT_TRUE(slow.hasSomething(std::chrono::minutes(1)));
    server.stop();
    while (isListening(port)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(slow.receive()->m_sBody.size(), body.size());
    EXPECT_TRUE(slow.isClosed());
}

TEST(Http, stopsInTimeWithRequestsThatNeverEnd)
{
    server::Limits limits;
    limits.m_tStopTime = std::chrono::milliseconds(100);
    RunningServer server(limits);
    Client never(server.port());
    never.send("GET /healthz HTTP/1.1\r\n");
    EXPECT_EQ(tests::get(server.port(), "/healthz").m_nStatus, 200U);
    server.stop();
    server.join();
    EXPECT_FALSE(never.receive().has_value());
}

}  // namespace
