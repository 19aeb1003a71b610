#include "attacks.h"

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include "client.h"

namespace tests {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Flag = std::atomic<bool>;

constexpr std::size_t kBody = std::size_t{1} << 20;
constexpr std::chrono::seconds kHeldTime{25};  // longer than every deadline of a request

std::string posted(const std::string& target, const std::string& body)
{
    return "POST " + target + " HTTP/1.1\r\nHost: localhost\r\n" + ksFromOurPage +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

/// Sends single bytes until the server closes: slowly, and every second fast for a while.
void flood(Client& client, const Flag& isEnough)
{
    const auto begin = Clock::now();
    for (unsigned round = 0; !isEnough && Clock::now() - begin < kHeldTime && client.send("a"); ++round) {
        if (round % 64 == 0) {
            std::this_thread::sleep_for(milliseconds(100));
        }
    }
}

void floodADeadline(std::uint16_t port, std::size_t number, const Flag& isEnough)
{
    Client client(port);
    const char* const kBeginnings[] = {"GET / HTTP/1.1\r\nHost: localhost\r\nX: ",
                                       "GET / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1000000\r\n\r\n",
                                       "hello\r\n\r\n"};
    client.send(kBeginnings[number % 3]);
    flood(client, isEnough);
}

void sendManyKeys(std::uint16_t port, std::size_t, const Flag& isEnough)
{
    std::string body = "{";
    for (std::size_t key = 0; body.size() < kBody - 20; ++key) {
        body += (key == 0 ? "\"" : ",\"") + std::to_string(key) + "\":0";
    }
    body += "}";
    const std::string request = posted("/api/sort", body);
    Client client(port);
    for (int round = 0; round < 20 && !isEnough && client.send(request); ++round) {
        client.receive();
    }
}

/// Asks for as much as can be had, and takes nothing of it.
void readNothing(std::uint16_t port, std::size_t number, const Flag& isEnough)
{
    std::string text;
    while (text.size() < kBody - 100) {
        text += number % 2 == 0 ? "\xEF\xB7\xBA" : "a";
    }
    Client client(port);
    client.send(posted("/api/encode", "{\"text\":\"" + text + "\",\"charset\":\"utf-8\"}"));
    const auto begin = Clock::now();
    while (!isEnough && Clock::now() - begin < kHeldTime) {
        std::this_thread::sleep_for(milliseconds(50));
        if (!client.send("GET /api/currencies HTTP/1.1\r\nHost: localhost\r\n\r\n")) {
            return;
        }
    }
}

void sayTheEndWrongly(std::uint16_t port, std::size_t number, const Flag&)
{
    const char* const kCodings[] = {"xchunked", "chunked, identity", "gzip, chunked", "chunked\r\nContent-Length: 5"};
    Client client(port);
    client.send(std::string("GET /api/resolve HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: ") +
                kCodings[number % 4] + "\r\n\r\n0\r\n\r\nGET /api/locales HTTP/1.1\r\nHost: localhost\r\n\r\n");
    while (client.receive()) {}
}

using Attack = void (*)(std::uint16_t, std::size_t, const Flag&);

constexpr Attack kAttacks[] = {&floodADeadline, &sendManyKeys, &readNothing, &sayTheEndWrongly};

}  // namespace

void attack(std::uint16_t port, std::size_t number, const std::atomic<bool>& isEnough)
{
    const Attack own = kAttacks[number % 4];
    for (std::size_t round = number / 4; !isEnough; ++round) {
        try {
            own(port, round, isEnough);
        } catch (const std::runtime_error&) {
            // Closed by the server, which is its right.
            std::this_thread::sleep_for(milliseconds(10));
        }
    }
}

}  // namespace tests
