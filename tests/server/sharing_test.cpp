// What clients share, memory and work, and what one of them can take of it.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "client.h"
#include "net/httpserver.h"
#include "net/memorypool.h"

namespace {

using std::chrono::milliseconds;
using tests::Client;

constexpr std::size_t kLarge = std::size_t{16} << 20;  // more than what is between the server and a client takes

/// Answers /large with that many bytes, and holds what has a long body until it is let go.
class Answers
{
public:
    server::HttpAnswer answer(const server::HttpRequest& request)
    {
        server::HttpAnswer answer;
        if (request.m_sTarget == "/large") {
            answer.m_sBody.assign(kLarge, 'x');
        }
        if (request.m_sTarget == "/held") {
            std::unique_lock<std::mutex> lock(m_tMutex);
            ++m_nHeld;
            m_tSignal.notify_all();
            m_tSignal.wait(lock, [this] { return m_bLetGo; });
        }
        return answer;
    }
    void awaitHeld()
    {
        std::unique_lock<std::mutex> lock(m_tMutex);
        m_tSignal.wait(lock, [this] { return m_nHeld != 0; });
    }
    void letGo()
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        m_bLetGo = true;
        m_tSignal.notify_all();
    }

private:
    std::mutex m_tMutex;
    std::condition_variable m_tSignal;
    int m_nHeld = 0;
    bool m_bLetGo = false;
};

class Sharing : public testing::Test
{
protected:
    ~Sharing() override
    {
        m_tAnswers.letGo();
        if (m_pServer) {
            m_pServer->stop();
        }
        if (m_tThread.joinable()) {
            m_tThread.join();
        }
    }

    void serve(const server::Limits& limits)
    {
        m_pServer = std::make_unique<server::HttpServer>(
            limits, [this](const server::HttpRequest& request) { return m_tAnswers.answer(request); },
            [](const server::Served&) {});
        m_nPort = m_pServer->listen(0);
        m_tThread = std::thread([this] { m_bAllEnded = m_pServer->run(1); });
    }

    Answers m_tAnswers;
    std::unique_ptr<server::HttpServer> m_pServer;
    std::uint16_t m_nPort = 0;
    std::thread m_tThread;
    std::atomic<bool> m_bAllEnded = false;
};

std::string requestFor(const std::string& target, std::size_t body = 0)
{
    return "GET " + target + " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(body) + "\r\n\r\n" +
           std::string(body, 'b');
}

server::Limits twoLargeAnswers()
{
    server::Limits limits;
    limits.m_nAnswerBytes = kLarge;
    limits.m_nSharedBytes = 2 * kLarge + kLarge / 2;
    return limits;
}

TEST(MemoryPool, givesEachItsOwnAndAllTheRest)
{
    server::MemoryPool pool(10, 100);
    server::HeldMemory first(pool);
    server::HeldMemory second(pool);
    EXPECT_TRUE(first.hold(10));
    EXPECT_FALSE(first.hasTaken());
    EXPECT_TRUE(first.hold(70));
    EXPECT_TRUE(first.hasTaken());
    EXPECT_FALSE(second.hold(51));
    EXPECT_TRUE(second.hold(50));
    EXPECT_FALSE(first.hold(71));
    EXPECT_TRUE(first.hold(0));
    EXPECT_TRUE(second.hold(110));
    EXPECT_FALSE(second.hold(111));
}

TEST_F(Sharing, clientsThatDoNotReadHoldNoMoreThanTheirShare)
{
    server::Limits limits = twoLargeAnswers();
    limits.m_tStallTime = std::chrono::minutes(1);
    serve(limits);
    Client first(m_nPort);
    Client second(m_nPort);
    first.send(requestFor("/large"));
    second.send(requestFor("/large"));
    EXPECT_TRUE(first.hasSomething(std::chrono::minutes(1)));
    EXPECT_TRUE(second.hasSomething(std::chrono::minutes(1)));
    Client third(m_nPort);
    third.send(requestFor("/large"));
    const tests::Reply refused = third.receive().value();
    EXPECT_EQ(refused.m_nStatus, 503U);
    EXPECT_EQ(refused.json()["error"]["code"], "busy");
    // Small answers are each connection's own; and who reads has its answer.
    third.send(requestFor("/"));
    EXPECT_EQ(third.receive()->m_nStatus, 200U);
    EXPECT_EQ(first.receive()->m_sBody.size(), kLarge);
}

TEST_F(Sharing, whoHasStalledMakesRoom)
{
    server::Limits limits = twoLargeAnswers();
    limits.m_tStallTime = milliseconds(50);
    serve(limits);
    Client first(m_nPort);
    first.send(requestFor("/large"));
    EXPECT_TRUE(first.hasSomething(std::chrono::minutes(1)));
    std::this_thread::sleep_for(milliseconds(20));
    Client second(m_nPort);
    second.send(requestFor("/large"));
    EXPECT_TRUE(second.hasSomething(std::chrono::minutes(1)));
    std::this_thread::sleep_for(milliseconds(200));
    Client third(m_nPort);
    third.send(requestFor("/large"));
    EXPECT_EQ(third.receive()->m_sBody.size(), kLarge);
    EXPECT_EQ(second.receive()->m_sBody.size(), kLarge);
    EXPECT_THROW(first.receive(), std::runtime_error);  // cut off
}

TEST_F(Sharing, longRequestsWaitForEachOtherAndNobodyForThem)
{
    server::Limits limits;
    limits.m_nLongJobs = 1;
    serve(limits);
    Client atWork(m_nPort);
    atWork.send(requestFor("/held", limits.m_nShortBody + 1));
    m_tAnswers.awaitHeld();
    Client waiting(m_nPort);
    waiting.send(requestFor("/", limits.m_nShortBody + 1));
    unsigned status = 0;
    for (int round = 0; round < 1000 && status != 503; ++round) {  // until the one that waits has been read
        Client next(m_nPort);
        next.send(requestFor("/", limits.m_nShortBody + 1));
        status = next.hasSomething(milliseconds(20)) ? next.receive()->m_nStatus : 0;
    }
    EXPECT_EQ(status, 503U);
    EXPECT_EQ(tests::get(m_nPort, "/").m_nStatus, 200U);
    m_tAnswers.letGo();
    EXPECT_EQ(atWork.receive()->m_nStatus, 200U);
    EXPECT_EQ(waiting.receive()->m_nStatus, 200U);
}

TEST_F(Sharing, stoppingTakesNoLongerThanItsTimeWhateverIsBeingWorkedAt)
{
    server::Limits limits;
    limits.m_tStopTime = milliseconds(50);
    serve(limits);
    Client client(m_nPort);
    client.send(requestFor("/held"));
    m_tAnswers.awaitHeld();
    m_pServer->stop();
    m_tThread.join();  // though the answer is still held
    EXPECT_FALSE(m_bAllEnded);
    EXPECT_TRUE(client.isClosed());
}

}  // namespace
