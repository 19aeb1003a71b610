// What one client can cost when memory runs out.

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <string>

#include "api.h"
#include "client.h"
#include "failingallocator.h"
#include "net/httpserver.h"
#include "runningserver.h"

namespace {

using server::Descriptor;

/// What the server has sent on a connection, as far as it is there.
std::string received(int socket)
{
    std::string all;
    char bytes[4096];
    for (ssize_t count = 0; (count = recv(socket, bytes, sizeof bytes, MSG_DONTWAIT)) > 0;) {
        all.append(bytes, static_cast<std::size_t>(count));
    }
    return all;
}

/// A server without threads that answers from the pack, and the ends of its connections.
class Stepped
{
public:
    explicit Stepped(const server::Limits& limits = {})
        : m_tServer(
              limits, [this](const server::HttpRequest& request) { return m_tApi.answer(request); },
              [this](const server::Served& served) { m_tMetrics.count(served); })
    {}

    /// Gives the server one end of a new connection; the other one.
    Descriptor connect()
    {
        int ends[2] = {-1, -1};
        socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends);
        m_tServer.take(Descriptor(ends[0]));
        return Descriptor(ends[1]);
    }
    void say(const Descriptor& end, std::string_view bytes)
    {
        send(end.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        for (int step = 0; step < 4; ++step) {
            m_tServer.step();
        }
    }
    std::size_t connections() { return m_tServer.step(); }

private:
    server::Metrics m_tMetrics{server::Api::routes()};
    server::Api m_tApi{tests::packCatalogues(), m_tMetrics};
    server::HttpServer m_tServer;
};

std::string posted(const std::string& path, const std::string& body)
{
    return "POST " + path + " HTTP/1.1\r\nHost: localhost\r\nCookie: webi18n=dateOrder=ymd\r\n" + tests::ksFromOurPage +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

constexpr std::string_view kHealth = "GET /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n";

/// Runs a request with its n-th and every later allocation failing, for every n until none fails. Each time the client
/// gets a whole answer or a close, and the next one is served. At the end the answer begins as it should.
void failEverywhere(const std::string& request, std::string_view beginning)
{
    Stepped server;
    server.say(server.connect(), request);  // what is made once is made
    bool hasFailed = true;
    for (std::size_t nth = 0; hasFailed; ++nth) {
        ASSERT_LT(nth, 100'000U);
        Descriptor end;
        {
            const testsupport::FailingAllocations failing(nth);
            end = server.connect();
            server.say(end, request);
            hasFailed = failing.hasFailed();
        }
        const std::string answer = received(end.get());
        EXPECT_TRUE(answer.empty() || answer.find("\r\n\r\n") != std::string::npos) << nth;
        EXPECT_TRUE(hasFailed || answer.starts_with(beginning)) << nth << answer;
        end.reset();
        const Descriptor next = server.connect();
        server.say(next, kHealth);
        ASSERT_TRUE(received(next.get()).starts_with("HTTP/1.1 200 OK\r\n")) << nth;
    }
    EXPECT_EQ(server.connections(), 0U);
}

TEST(RequestAllocations, mayFailAnywhereInAPage)
{
    failEverywhere("GET / HTTP/1.1\r\nHost: localhost\r\nCookie: webi18n=dateOrder=ymd\r\n\r\n", "HTTP/1.1 200 OK\r\n");
}

TEST(RequestAllocations, mayFailAnywhereInTheMetrics)
{
    failEverywhere("GET /metrics HTTP/1.1\r\nHost: localhost\r\n\r\n", "HTTP/1.1 200 OK\r\n");
}

TEST(RequestAllocations, mayFailAnywhereInAChunkedBody)
{
    failEverywhere(
        "GET /healthz HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n"
        "3\r\nabc\r\n0\r\nX: y\r\n\r\n",
        "HTTP/1.1 200 OK\r\n");
}

TEST(RequestAllocations, mayFailAnywhereInARefusal)
{
    failEverywhere("GET /healthz HTTP/1.1\r\nHost: evil.example\r\n\r\n", "HTTP/1.1 421 ");
    failEverywhere("GET /api/sort?sort=xx HTTP/1.1\r\nHost: localhost\r\n\r\n", "HTTP/1.1 400 ");
    failEverywhere(posted("/api/sort", "{\"lines\":[\"z\","), "HTTP/1.1 400 ");
}

}  // namespace
