// Clients that keep a connection busy around the moment at which its time is up.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "client.h"
#include "net/httpserver.h"
#include "runningserver.h"

namespace {

using std::chrono::milliseconds;
using tests::Client;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kTime{150};
constexpr milliseconds kPatience{10'000};  // on a machine that is busy with other things
constexpr std::size_t kClients = 24;

server::Limits shortTimes()
{
    server::Limits limits;
    limits.m_tHeaderTime = limits.m_tBodyTime = limits.m_tWriteTime = limits.m_tLingerTime = kTime;
    return limits;
}

using Clients = std::vector<std::unique_ptr<Client>>;

Clients clientsThatSay(std::uint16_t port, const std::string& beginning)
{
    Clients clients;
    for (std::size_t index = 0; index < kClients; ++index) {
        clients.push_back(std::make_unique<Client>(port));
        clients.back()->send(beginning);
    }
    return clients;
}

/// Moves single bytes through every connection, as fast as it can from shortly before its time is up, until the server
/// has closed all. The number of those that it has not closed in time.
template <typename Move>
std::size_t leftAfterFlood(Clients& clients, const Move& move)
{
    std::this_thread::sleep_for(kTime * 2 / 3);
    const auto fastUntil = Clock::now() + kTime;
    const auto end = Clock::now() + kPatience;
    while (!clients.empty() && Clock::now() < end) {
        std::erase_if(clients, [&](const auto& client) { return !move(*client); });
        std::this_thread::sleep_for(Clock::now() < fastUntil ? milliseconds(0) : milliseconds(10));
    }
    return clients.size();
}

std::size_t leftAfterFloodOf(Clients& clients, const std::string& bytes)
{
    return leftAfterFlood(clients, [&](Client& client) { return client.send(bytes); });
}

TEST(Deadlines, aHeaderIsOverInTimeThoughBytesComeAllTheWhile)
{
    const tests::RunningServer server(shortTimes());
    // Lines of one byte: a long one would reach the limit of bytes first.
    Clients clients = clientsThatSay(server.port(), "GET /healthz HTTP/1.1\r\nX: ");
    EXPECT_EQ(leftAfterFloodOf(clients, "a"), 0U);
}

TEST(Deadlines, aBodyIsOverInTimeThoughBytesComeAllTheWhile)
{
    const tests::RunningServer server(shortTimes());
    Clients clients =
        clientsThatSay(server.port(), "GET /healthz HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1000000\r\n\r\n");
    EXPECT_EQ(leftAfterFloodOf(clients, "a"), 0U);
}

TEST(Deadlines, lingeringIsOverInTimeThoughBytesComeAllTheWhile)
{
    const tests::RunningServer server(shortTimes());
    Clients clients = clientsThatSay(server.port(), "hello\r\n\r\n");
    EXPECT_EQ(leftAfterFloodOf(clients, "a"), 0U);
}

TEST(Deadlines, anAnswerIsOverInTimeThoughBytesAreTakenAllTheWhile)
{
    const std::string body(std::size_t{32} << 20, 'x');  // more than anything on the way holds
    server::Limits limits = shortTimes();
    limits.m_nAnswerBytes = limits.m_nSharedBytes = std::size_t{1} << 30;
    server::HttpServer server(
        limits,
        [&body](const server::HttpRequest&) {
            server::HttpAnswer answer;
            answer.m_sBody = body;
            return answer;
        },
        [](const server::Served&) {});
    const std::uint16_t port = server.listen(0);
    std::jthread thread([&server] { server.run(2); });
    Client client(port);
    client.send("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    std::size_t taken = 0;
    const auto end = Clock::now() + kPatience;
    for (std::size_t got = 1; got != 0 && Clock::now() < end; taken += got) {
        got = client.readSome(4096);
        std::this_thread::sleep_for(milliseconds(1));
    }
    EXPECT_LT(Clock::now(), end);
    EXPECT_LT(taken, body.size());
    server.stop();
}

}  // namespace
