#include "httpserver.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/strand.hpp>
#include <csignal>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include "connection.h"

namespace server {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

constexpr std::size_t kRefusedAtOnce = 128;  // beyond them a connection is closed without a word

}  // namespace

class HttpServer::Implementation : public std::enable_shared_from_this<HttpServer::Implementation>
{
public:
    Implementation(const Limits& limits, Handler handler, Observer observer)
    {
        m_tShared.m_tLimits = limits;
        m_tShared.m_tHandler = std::move(handler);
        m_tShared.m_tObserver = std::move(observer);
    }

    std::uint16_t listen(std::uint16_t port);
    void stopOnSignals();
    void run(unsigned threads);
    void stop();

private:
    void accept();
    void take(tcp::socket socket);
    void forget(const Connection* connection);
    void stopNow();
    std::vector<std::shared_ptr<Connection>> living();

    // What the context's last operations use when it is destroyed stands before it.
    Shared m_tShared;
    std::mutex m_tMutex;
    std::unordered_map<const Connection*, std::weak_ptr<Connection>> m_tConnections;  // under the mutex
    asio::io_context m_tContext;
    tcp::acceptor m_tAcceptor{m_tContext};
    asio::steady_timer m_tStopTimer{m_tContext};
    asio::steady_timer m_tRetryTimer{m_tContext};
    asio::signal_set m_tSignals{m_tContext};
};

std::uint16_t HttpServer::Implementation::listen(std::uint16_t port)
{
    const tcp::endpoint place(asio::ip::address_v4::loopback(), port);
    m_tAcceptor.open(place.protocol());
    m_tAcceptor.set_option(asio::socket_base::reuse_address(true));
    m_tAcceptor.bind(place);
    m_tAcceptor.listen(asio::socket_base::max_listen_connections);
    return m_tAcceptor.local_endpoint().port();
}

void HttpServer::Implementation::stopOnSignals()
{
    m_tSignals.add(SIGTERM);
    m_tSignals.add(SIGINT);
    m_tSignals.async_wait([this](const boost::system::error_code& error, int) {
        if (!error) {
            stopNow();
        }
    });
}

void HttpServer::Implementation::run(unsigned threads)
{
    accept();
    std::vector<std::thread> others;
    for (unsigned index = 1; index < threads; ++index) {
        others.emplace_back([this] { m_tContext.run(); });
    }
    m_tContext.run();
    for (std::thread& each : others) {
        each.join();
    }
}

void HttpServer::Implementation::accept()
{
    m_tAcceptor.async_accept(asio::make_strand(m_tContext),
                             [this](const boost::system::error_code& error, tcp::socket socket) {
                                 if (m_tShared.m_bStopping) {
                                     return;
                                 }
                                 if (!error) {
                                     take(std::move(socket));
                                     accept();
                                     return;
                                 }
                                 // Out of descriptors: trying again at once would only burn time.
                                 m_tRetryTimer.expires_after(std::chrono::milliseconds(50));
                                 m_tRetryTimer.async_wait([this](const boost::system::error_code& cancelled) {
                                     if (!cancelled && !m_tShared.m_bStopping) {
                                         accept();
                                     }
                                 });
                             });
}

void HttpServer::Implementation::take(tcp::socket socket)
{
    boost::system::error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    // The connection tells its address when it ends, which it has only once it is made.
    const auto address = std::make_shared<const Connection*>(nullptr);
    const auto connection =
        std::make_shared<Connection>(std::move(socket), m_tShared, [this, address] { forget(*address); });
    *address = connection.get();
    std::size_t count = 0;
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        count = m_tConnections.size();
        m_tConnections.emplace(connection.get(), connection);
    }
    const std::size_t most = m_tShared.m_tLimits.m_nConnections;
    if (count < most) {
        connection->start();
    } else if (count < most + kRefusedAtOnce) {
        connection->startRefusing();
    }
}

void HttpServer::Implementation::forget(const Connection* connection)
{
    const std::lock_guard<std::mutex> lock(m_tMutex);
    m_tConnections.erase(connection);
    if (m_tShared.m_bStopping && m_tConnections.empty() && !m_tContext.stopped()) {
        asio::post(m_tContext, [this] { m_tStopTimer.cancel(); });
    }
}

void HttpServer::Implementation::stop()
{
    asio::post(m_tContext, [this] { stopNow(); });
}

void HttpServer::Implementation::stopNow()
{
    if (m_tShared.m_bStopping.exchange(true)) {
        return;
    }
    boost::system::error_code ignored;
    m_tAcceptor.close(ignored);
    m_tSignals.cancel(ignored);
    m_tRetryTimer.cancel();
    const std::vector<std::shared_ptr<Connection>> connections = living();
    if (connections.empty()) {
        return;
    }
    m_tStopTimer.expires_after(m_tShared.m_tLimits.m_tStopTime);
    m_tStopTimer.async_wait([this](const boost::system::error_code& error) {
        if (!error) {
            m_tContext.stop();
        }
    });
    for (const auto& connection : connections) {
        connection->stop();
    }
}

/// Held, so that none of them ends, and is forgotten, under the mutex.
std::vector<std::shared_ptr<Connection>> HttpServer::Implementation::living()
{
    std::vector<std::shared_ptr<Connection>> connections;
    const std::lock_guard<std::mutex> lock(m_tMutex);
    for (const auto& [address, weak] : m_tConnections) {
        if (auto connection = weak.lock()) {
            connections.push_back(std::move(connection));
        }
    }
    return connections;
}

HttpServer::HttpServer(const Limits& limits, Handler handler, Observer observer)
    : m_pImplementation(std::make_shared<Implementation>(limits, std::move(handler), std::move(observer)))
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

void HttpServer::run(unsigned threads)
{
    m_pImplementation->run(threads);
}

void HttpServer::stop()
{
    m_pImplementation->stop();
}

}  // namespace server
