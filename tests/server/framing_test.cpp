// Where a request ends, said in ways that a server in front may read otherwise; and headers that come line by line.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "client.h"
#include "runningserver.h"

namespace {

using tests::Client;

constexpr std::string_view kSmuggled = "GET /api/sorts HTTP/1.1\r\nHost: localhost\r\n\r\n";

std::string withFields(const std::string& fields)
{
    return "GET /healthz HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n";
}

/// The one answer to a request with those fields and a body that could be one of its own.
void expectOneRefusal(const tests::RunningServer& server, const std::string& fields, unsigned status)
{
    Client client(server.port());
    client.send(withFields(fields) + std::string(kSmuggled));
    const auto reply = client.receive();
    ASSERT_TRUE(reply.has_value()) << fields;
    EXPECT_EQ(reply->m_nStatus, status) << fields;
    EXPECT_EQ(reply->m_tHeaders.at("connection"), "close") << fields;
    EXPECT_TRUE(client.isClosed()) << fields;
}

TEST(Framing, codingsOtherThanChunkedAreRefused)
{
    const tests::RunningServer server;
    for (const char* coding : {"xchunked", "chunked, identity", "gzip, chunked", "identity", "chunked, chunked",
                               "chunked;q=1", "\"chunked\"", ""}) {
        expectOneRefusal(server, std::string("Transfer-Encoding: ") + coding + "\r\n", 501);
    }
    expectOneRefusal(server, "Transfer-Encoding: gzip\r\nTransfer-Encoding: chunked\r\n", 501);
}

TEST(Framing, twoLengthsAreRefused)
{
    const tests::RunningServer server;
    expectOneRefusal(server, "Content-Length: 3\r\nTransfer-Encoding: chunked\r\n", 400);
    expectOneRefusal(server, "Transfer-Encoding: chunked\r\nContent-Length: 3\r\n", 400);
    expectOneRefusal(server, "Transfer-Encoding: xchunked\r\nContent-Length: 3\r\n", 400);
    expectOneRefusal(server, "Content-Length: 3\r\nContent-Length: 4\r\n", 400);
    expectOneRefusal(server, "Content-Length: 3, 4\r\n", 400);
    Client old(server.port());
    old.send("GET /healthz HTTP/1.0\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n");
    EXPECT_EQ(old.receive()->m_nStatus, 400U);
}

TEST(Framing, trailersAreNoHeader)
{
    const tests::RunningServer server;
    Client client(server.port());
    client.send(
        "GET /api/locale HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: CHUNKED\r\nAccept-Language: de\r\n\r\n"
        "0\r\nCookie: webi18n=decimalSeparator=%21\r\nAccept-Language: fr\r\nConnection: close\r\nHost: evil\r\n\r\n");
    const tests::Reply reply = client.receive().value();
    EXPECT_EQ(reply.m_nStatus, 200U);
    EXPECT_EQ(reply.json()["locale"], "de-de");
    EXPECT_EQ(reply.json()["decimalSeparator"], ",");
    client.send(kSmuggled);
    EXPECT_EQ(client.receive()->m_nStatus, 200U);
}

TEST(Framing, aHeaderThatComesLineByLineHasItsLimitToo)
{
    const tests::RunningServer server;
    Client client(server.port());
    client.send("GET /healthz HTTP/1.1\r\n");
    const std::string line = "X: " + std::string(95, 'a') + "\r\n";
    for (int sent = 0; sent < 200 && !client.hasSomething(std::chrono::milliseconds(2)); ++sent) {
        client.send(line);  // in a packet of its own
    }
    const auto reply = client.receive();
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->m_nStatus, 431U);
}

}  // namespace
