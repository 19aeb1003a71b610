#include "net/httpserver.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/signalfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>
#include <vector>

#include "net/connection.h"

namespace server {

namespace {

using Clock = Connection::Clock;
using std::chrono::milliseconds;

constexpr std::size_t kRefusedAtOnce = 128;  // beyond them a connection is closed without a word
constexpr int kAcceptedAtOnce = 64;          // then those that are there have their turn
constexpr int kAnsweredAtOnce = 64;
constexpr int kSendBufferBytes = 128 << 10;  // of the system's memory for what a client does not take
constexpr milliseconds kRetryTime{50};       // out of descriptors: trying again at once would only burn time
constexpr milliseconds kLongestWait{60'000};

[[noreturn]] void throwSystemError(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// Calls a function when its descriptor is ready.
class Bell final : public Watched
{
public:
    explicit Bell(std::function<void()> ring) : m_tRing(std::move(ring)) {}
    void onReady() noexcept override { m_tRing(); }

private:
    std::function<void()> m_tRing;  // may not throw
};

}  // namespace

class HttpServer::Implementation
{
public:
    Implementation(const Limits& limits, Handler handler, Observer observer, Access access);

    std::uint16_t listen(std::uint16_t port);
    void stopOnSignals();
    bool run(unsigned threads);
    void stop() noexcept;
    void take(Descriptor socket) noexcept;
    std::size_t step(milliseconds longest) noexcept;

private:
    void accept() noexcept;
    void onSignal() noexcept;
    void passAnswers() noexcept;
    void stopListening(Clock::time_point until) noexcept;
    void begin(Descriptor socket);
    void beginStopping() noexcept;
    bool makeRoom() noexcept;
    void passDeadlines() noexcept;
    void reap() noexcept;
    bool isOver() const noexcept;
    milliseconds timeToWait() const noexcept;

    const Limits m_tLimits;
    const Access m_tAccess;
    const Handler m_tHandler;
    const Observer m_tObserver;
    std::atomic<bool> m_bStopAsked = false;
    EventLoop m_tLoop;
    MemoryPool m_tPool;
    Descriptor m_tListener;
    Descriptor m_tSignals;
    Bell m_tDoorbell{[this] { accept(); }};
    Bell m_tSignalBell{[this] { onSignal(); }};
    Clock::time_point m_tListenAgain = Clock::time_point::max();
    Clock::time_point m_tStopDeadline = Clock::time_point::max();
    std::vector<std::unique_ptr<Connection>> m_tConnections;
    Workers m_tWorkers;  // has ended before the connections do
    Shared m_tShared;
};

HttpServer::Implementation::Implementation(const Limits& limits, Handler handler, Observer observer, Access access)
    : m_tLimits(limits),
      m_tAccess(std::move(access)),
      m_tHandler(std::move(handler)),
      m_tObserver(std::move(observer)),
      m_tPool(limits.m_nOwnBytes, limits.m_nSharedBytes),
      m_tWorkers(limits.m_nLongJobs, [this] { m_tLoop.wake(); }),
      m_tShared{m_tLimits, m_tAccess, m_tHandler, m_tObserver, m_tLoop, m_tWorkers, m_tPool}
{
    m_tShared.m_tMakeRoom = [this] { return makeRoom(); };
    m_tConnections.reserve(m_tLimits.m_nConnections + kRefusedAtOnce);
}

std::uint16_t HttpServer::Implementation::listen(std::uint16_t port)
{
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    const int yes = 1;
    m_tListener = Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    setsockopt(m_tListener.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    // What is accepted inherits it.
    setsockopt(m_tListener.get(), SOL_SOCKET, SO_SNDBUF, &kSendBufferBytes, sizeof kSendBufferBytes);
    if (!m_tListener.isOpen() || bind(m_tListener.get(), reinterpret_cast<sockaddr*>(&place), size) != 0 ||
        ::listen(m_tListener.get(), SOMAXCONN) != 0 ||
        getsockname(m_tListener.get(), reinterpret_cast<sockaddr*>(&place), &size) != 0) {
        throwSystemError("listening");
    }
    m_tLoop.watch(m_tListener.get(), m_tDoorbell, kReadable);
    return ntohs(place.sin_port);
}

void HttpServer::Implementation::stopOnSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_tSignals = Descriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!m_tSignals.isOpen()) {
        throwSystemError("waiting for signals");
    }
    m_tLoop.watch(m_tSignals.get(), m_tSignalBell, kReadable);
}

bool HttpServer::Implementation::run(unsigned threads)
{
    m_tWorkers.start(threads);
    while (!isOver()) {
        step(timeToWait());
    }
    // At the stop's deadline there may be some left.
    for (const auto& each : m_tConnections) {
        each->close();
    }
    reap();
    return m_tConnections.empty();
}

void HttpServer::Implementation::stop() noexcept
{
    m_bStopAsked = true;
    m_tLoop.wake();
}

std::size_t HttpServer::Implementation::step(milliseconds longest) noexcept
{
    m_tLoop.wait(longest);
    if (m_bStopAsked && !m_tShared.m_bStopping) {
        beginStopping();
    }
    passAnswers();
    passDeadlines();
    reap();
    return m_tConnections.size();
}

void HttpServer::Implementation::accept() noexcept
{
    for (int index = 0; index < kAcceptedAtOnce; ++index) {
        Descriptor socket(accept4(m_tListener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (socket.isOpen()) {
            const int yes = 1;
            setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
            take(std::move(socket));
        } else if (errno != EINTR && errno != ECONNABORTED) {
            if (errno != EAGAIN && errno != EWOULDBLOCK) {
                stopListening(Clock::now() + kRetryTime);
            }
            return;
        }
    }
}

/// It stays there to be told: the loop would not wait any more.
void HttpServer::Implementation::onSignal() noexcept
{
    m_tLoop.forget(m_tSignals.get());
    stop();
}

/// Some of those that are done, so that clients have their turn; for the others the loop does not wait.
void HttpServer::Implementation::passAnswers() noexcept
{
    for (int count = 0; Job* const done = m_tWorkers.takeDone(); ++count) {
        static_cast<Connection*>(done)->onAnswered();
        if (count == kAnsweredAtOnce) {
            m_tLoop.wake();
            return;
        }
    }
}

void HttpServer::Implementation::stopListening(Clock::time_point until) noexcept
{
    m_tLoop.forget(m_tListener.get());
    m_tListenAgain = until;
}

/// What cannot be taken is closed.
void HttpServer::Implementation::take(Descriptor socket) noexcept
{
    try {
        begin(std::move(socket));
    } catch (...) {}
}

void HttpServer::Implementation::begin(Descriptor socket)
{
    if (m_tConnections.size() == m_tConnections.capacity() || m_tShared.m_bStopping) {
        return;
    }
    auto connection = std::make_unique<Connection>(std::move(socket), m_tShared);
    Connection& taken = *connection;
    m_tConnections.push_back(std::move(connection));
    if (m_tConnections.size() > m_tLimits.m_nConnections) {
        taken.refuseForTooMany();
    }
}

void HttpServer::Implementation::beginStopping() noexcept
{
    m_tShared.m_bStopping = true;
    m_tStopDeadline = Clock::now() + m_tLimits.m_tStopTime;
    m_tListener.reset();
    m_tListenAgain = Clock::time_point::max();
    for (const auto& each : m_tConnections) {
        each->stop();
    }
}

/// Closes who has stalled for the longest, if that is long enough.
bool HttpServer::Implementation::makeRoom() noexcept
{
    Clock::time_point earliest = Clock::now() - m_tLimits.m_tStallTime;
    Connection* stalled = nullptr;
    for (const auto& each : m_tConnections) {
        if (const auto since = each->stalledSince(); since && *since <= earliest) {
            earliest = *since;
            stalled = each.get();
        }
    }
    if (stalled != nullptr) {
        stalled->close();
    }
    return stalled != nullptr;
}

void HttpServer::Implementation::passDeadlines() noexcept
{
    const auto now = Clock::now();
    for (const auto& each : m_tConnections) {
        each->passDeadline(now);
    }
    if (now >= m_tListenAgain) {
        m_tListenAgain = Clock::time_point::max();
        try {
            m_tLoop.watch(m_tListener.get(), m_tDoorbell, kReadable);
        } catch (const std::system_error&) {
            m_tListenAgain = now + kRetryTime;
        }
    }
}

void HttpServer::Implementation::reap() noexcept
{
    std::erase_if(m_tConnections, [](const auto& each) { return each->isOver(); });
}

bool HttpServer::Implementation::isOver() const noexcept
{
    return m_tShared.m_bStopping && (m_tConnections.empty() || Clock::now() >= m_tStopDeadline);
}

/// Until the next deadline, rounded up, so that it has passed then.
milliseconds HttpServer::Implementation::timeToWait() const noexcept
{
    Clock::time_point next = std::min(m_tListenAgain, m_tStopDeadline);
    for (const auto& each : m_tConnections) {
        next = std::min(next, each->deadline());
    }
    const auto now = Clock::now();
    return next <= now ? milliseconds(0) : std::min(kLongestWait, std::chrono::ceil<milliseconds>(next - now));
}

HttpServer::HttpServer(const Limits& limits, Handler handler, Observer observer, Access access)
    : m_pImplementation(
          std::make_unique<Implementation>(limits, std::move(handler), std::move(observer), std::move(access)))
{}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::listen(std::uint16_t port)
{
    return m_pImplementation->listen(port);
}

void HttpServer::stopOnSignals()
{
    m_pImplementation->stopOnSignals();
}

bool HttpServer::run(unsigned threads)
{
    return m_pImplementation->run(threads);
}

void HttpServer::stop() noexcept
{
    m_pImplementation->stop();
}

void HttpServer::take(Descriptor socket) noexcept
{
    m_pImplementation->take(std::move(socket));
}

std::size_t HttpServer::step() noexcept
{
    return m_pImplementation->step(milliseconds(0));
}

}  // namespace server
