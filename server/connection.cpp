#include "connection.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <exception>
#include <string_view>
#include <utility>

namespace server {

namespace asio = boost::asio;
namespace http = boost::beast::http;

namespace {

constexpr std::size_t kDrainedBytes = std::size_t{4} << 20;  // read and thrown away, so that a late answer is read

/// The fields of that name as one, joined by the separator.
std::string joined(const http::fields& fields, http::field name, const char* separator)
{
    std::string all;
    const auto [begin, end] = fields.equal_range(name);
    for (auto each = begin; each != end; ++each) {
        all.append(all.empty() ? "" : separator).append(each->value().data(), each->value().size());
    }
    return all;
}

HttpRequest requestOf(http::request<http::string_body>& message)
{
    HttpRequest request;
    request.m_sMethod.assign(message.method_string().data(), message.method_string().size());
    request.m_sTarget.assign(message.target().data(), message.target().size());
    request.m_sAcceptLanguage = joined(message, http::field::accept_language, ", ");
    request.m_sAcceptCharset = joined(message, http::field::accept_charset, ", ");
    request.m_sCookie = joined(message, http::field::cookie, "; ");
    request.m_sIfNoneMatch = joined(message, http::field::if_none_match, ", ");
    request.m_sBody = std::move(message.body());
    return request;
}

void addSecurityHeaders(http::fields& fields)
{
    fields.set("Content-Security-Policy",
               "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src 'self' data:; "
               "base-uri 'none'; form-action 'self'; frame-ancestors 'none'");
    fields.set("X-Content-Type-Options", "nosniff");
    fields.set("X-Frame-Options", "DENY");
    fields.set("Referrer-Policy", "no-referrer");
}

}  // namespace

Connection::Connection(asio::ip::tcp::socket socket, Shared& shared, std::function<void()> ended)
    : m_tSocket(std::move(socket)),
      m_rShared(shared),
      m_tEnded(std::move(ended)),
      m_tTimer(m_tSocket.get_executor()),
      m_tBuffer(shared.m_tLimits.m_nHeaderBytes + (std::size_t{64} << 10))
{}

Connection::~Connection()
{
    m_tEnded();
}

void Connection::start()
{
    asio::post(m_tSocket.get_executor(), [self = shared_from_this()] { self->readHeader(); });
}

void Connection::startRefusing()
{
    asio::post(m_tSocket.get_executor(), [self = shared_from_this()] {
        self->refuseWith(503, "too-many-connections", "There are too many connections; try again later.");
    });
}

void Connection::stop()
{
    asio::post(m_tSocket.get_executor(), [self = shared_from_this()] {
        if (self->m_bIdle) {
            self->close();
        }
    });
}

/// Between requests: until the first byte comes, nothing is owed to the client.
void Connection::waitForRequest()
{
    if (m_tBuffer.size() != 0) {
        readHeader();
        return;
    }
    // stop() may have come while the last answer was sent, and have found the connection at work.
    if (m_rShared.m_bStopping) {
        close();
        return;
    }
    m_bIdle = true;
    setTimer(m_rShared.m_tLimits.m_tIdleTime);
    m_tSocket.async_wait(asio::ip::tcp::socket::wait_read, [self = shared_from_this()](const Error& error) {
        self->m_bIdle = false;
        self->stopTimer() || error ? self->close() : self->readHeader();
    });
}

void Connection::readHeader()
{
    m_tParser.emplace();
    m_tParser->header_limit(static_cast<std::uint32_t>(m_rShared.m_tLimits.m_nHeaderBytes));
    m_tParser->body_limit(m_rShared.m_tLimits.m_nBodyBytes);
    m_bIdle = m_tBuffer.size() == 0;
    if (m_bIdle && m_rShared.m_bStopping) {
        close();
        return;
    }
    setTimer(m_rShared.m_tLimits.m_tHeaderTime);
    http::async_read_header(m_tSocket, m_tBuffer, *m_tParser,
                            [self = shared_from_this()](const Error& error, std::size_t) { self->onHeader(error); });
}

void Connection::onHeader(const Error& error)
{
    m_bIdle = false;
    m_bTimedOut = stopTimer();
    m_tBegin = std::chrono::steady_clock::now();
    if (error || m_bTimedOut) {
        refuse(error);
    } else if (boost::beast::iequals(m_tParser->get()[http::field::expect], "100-continue")) {
        inviteBody();
    } else {
        readBody();
    }
}

/// The client waits with its body until it is told that it is wanted.
void Connection::inviteBody()
{
    static constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
    setTimer(m_rShared.m_tLimits.m_tWriteTime);
    asio::async_write(m_tSocket, asio::buffer(kContinue.data(), kContinue.size()),
                      [self = shared_from_this()](const Error& error, std::size_t) {
                          self->stopTimer() || error ? self->close() : self->readBody();
                      });
}

void Connection::readBody()
{
    if (m_tParser->is_done()) {
        answerRequest();
        return;
    }
    setTimer(m_rShared.m_tLimits.m_tBodyTime);
    http::async_read(m_tSocket, m_tBuffer, *m_tParser,
                     [self = shared_from_this()](const Error& error, std::size_t) { self->onBody(error); });
}

void Connection::onBody(const Error& error)
{
    m_bTimedOut = stopTimer();
    error || m_bTimedOut ? refuse(error) : answerRequest();
}

void Connection::answerRequest()
{
    m_tBegin = std::chrono::steady_clock::now();
    auto& message = m_tParser->get();
    const bool keepAlive = message.keep_alive();
    m_tRequest = requestOf(message);
    HttpAnswer answer;
    try {
        answer = m_rShared.m_tHandler(m_tRequest);
    } catch (const std::exception&) {
        answer = answerOf({500, "internal-error", "The request could not be answered."});
    }
    send(std::move(answer), keepAlive && !m_rShared.m_bStopping, m_tRequest.m_sMethod == "HEAD");
}

/// The answer to what is no request that can be taken.
void Connection::refuse(const Error& error)
{
    const bool gotSome = m_tParser->got_some() || m_tBuffer.size() != 0;
    if (m_bTimedOut && gotSome) {
        refuseWith(408, "request-timeout", "The request took too long.");
    } else if (error == http::error::header_limit || error == http::error::buffer_overflow) {
        refuseWith(431, "header-too-large", "The request line and the header are too large.");
    } else if (error == http::error::body_limit) {
        refuseWith(413, "body-too-large", "The body is too large.");
    } else if (error == http::error::partial_message && gotSome) {
        refuseWith(400, "incomplete-request", "The request ended before it was complete.");
    } else if (error == http::error::end_of_stream || error.category() != make_error_code(http::error{}).category()) {
        close();
    } else {
        refuseWith(400, "bad-request", "The request is no HTTP request that can be read.");
    }
}

void Connection::refuseWith(unsigned status, const char* code, const char* text)
{
    m_tBegin = std::chrono::steady_clock::now();
    m_tRequest = HttpRequest();
    send(answerOf({status, code, text}), false, false);
}

void Connection::send(HttpAnswer answer, bool keepAlive, bool withoutBody)
{
    m_pRoute = answer.m_pRoute;
    m_tResponse.emplace(static_cast<http::status>(answer.m_nStatus), 11);
    if (!answer.m_sContentType.empty()) {
        m_tResponse->set(http::field::content_type, answer.m_sContentType);
    }
    m_tResponse->set(http::field::cache_control, answer.m_pCacheControl);
    addSecurityHeaders(*m_tResponse);
    for (const auto& [name, value] : answer.m_tHeaders) {
        m_tResponse->insert(name, value);
    }
    m_tResponse->keep_alive(keepAlive);
    if (answer.m_nStatus != 304) {
        m_tResponse->content_length(answer.m_sBody.size());
    }
    if (!withoutBody) {
        m_tResponse->body() = std::move(answer.m_sBody);
    }
    setTimer(m_rShared.m_tLimits.m_tWriteTime);
    http::async_write(m_tSocket, *m_tResponse, [self = shared_from_this(), keepAlive](const Error& error, std::size_t) {
        self->onSent(error, keepAlive);
    });
}

void Connection::onSent(const Error& error, bool keepAlive)
{
    const bool timedOut = stopTimer();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - m_tBegin;
    m_rShared.m_tObserver(
        {m_tRequest.m_sMethod, m_tRequest.m_sTarget, m_pRoute, m_tResponse->result_int(), taken.count()});
    m_tResponse.reset();
    if (error || timedOut) {
        close();
    } else if (keepAlive) {
        waitForRequest();
    } else {
        lingerAndClose();
    }
}

/// Closing while the client still sends would take the answer from it: what it sends is read for a while.
void Connection::lingerAndClose()
{
    Error ignored;
    m_tSocket.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
    m_tBuffer.clear();
    setTimer(m_rShared.m_tLimits.m_tLingerTime);
    drain(kDrainedBytes);
}

void Connection::drain(std::size_t left)
{
    m_tBuffer.clear();
    m_tSocket.async_read_some(m_tBuffer.prepare(std::size_t{16} << 10),
                              [self = shared_from_this(), left](const Error& error, std::size_t count) {
                                  if (error || count >= left) {
                                      self->stopTimer();
                                      self->close();
                                      return;
                                  }
                                  self->drain(left - count);
                              });
}

void Connection::close()
{
    ++m_nTimer;
    m_tTimer.cancel();
    Error ignored;
    m_tSocket.shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    m_tSocket.close(ignored);
}

void Connection::setTimer(std::chrono::milliseconds time)
{
    m_bTimedOut = false;
    m_tTimer.expires_after(time);
    m_tTimer.async_wait([self = shared_from_this(), number = ++m_nTimer](const Error& error) {
        if (!error && number == self->m_nTimer) {
            self->m_bTimedOut = true;
            Error ignored;
            self->m_tSocket.cancel(ignored);
        }
    });
}

/// Whether it has rung.
bool Connection::stopTimer()
{
    ++m_nTimer;
    m_tTimer.cancel();
    return m_bTimedOut;
}

}  // namespace server
