#pragma once

#include <atomic>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "http.h"
#include "serverlimits.h"

namespace server {

/// What all connections share; it outlives them.
struct Shared
{
    Limits m_tLimits;
    Handler m_tHandler;
    Observer m_tObserver;
    std::atomic<bool> m_bStopping = false;
};

/// One client: reads a request, answers, and so on. Everything happens on the socket's strand; it lives as long as an
/// operation of its own is under way.
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    Connection(boost::asio::ip::tcp::socket socket, Shared& shared, std::function<void()> ended);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Serves the client.
    void start();
    /// Says that there are too many connections, and closes.
    void startRefusing();
    /// The server stops: closes when no request is under way. From any thread.
    void stop();

private:
    using Error = boost::system::error_code;

    void waitForRequest();
    void readHeader();
    void onHeader(const Error& error);
    void inviteBody();
    void readBody();
    void onBody(const Error& error);
    void answerRequest();
    void refuse(const Error& error);
    void refuseWith(unsigned status, const char* code, const char* text);
    void send(HttpAnswer answer, bool keepAlive, bool withoutBody);
    void onSent(const Error& error, bool keepAlive);
    void lingerAndClose();
    void drain(std::size_t left);
    void close();
    void setTimer(std::chrono::milliseconds time);
    bool stopTimer();

    boost::asio::ip::tcp::socket m_tSocket;
    Shared& m_rShared;
    std::function<void()> m_tEnded;
    boost::asio::steady_timer m_tTimer;
    boost::beast::flat_buffer m_tBuffer;
    std::optional<boost::beast::http::request_parser<boost::beast::http::string_body>> m_tParser;
    std::optional<boost::beast::http::response<boost::beast::http::string_body>> m_tResponse;
    HttpRequest m_tRequest;
    const char* m_pRoute = "none";
    std::chrono::steady_clock::time_point m_tBegin;
    unsigned m_nTimer = 0;  // a timer that rings late is told by its number
    bool m_bIdle = false;
    bool m_bTimedOut = false;
};

}  // namespace server
