#include "net/connection.h"

#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "net/responsehead.h"

namespace server {

namespace {

constexpr std::size_t kReadBytes = std::size_t{16} << 10;
constexpr std::size_t kDrainedBytes = std::size_t{4} << 20;  // read and thrown away, so that a late answer is read
constexpr std::string_view ksContinue = "HTTP/1.1 100 Continue\r\n\r\n";

bool wouldBlock() noexcept
{
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

iovec partOf(std::string_view text, std::size_t skipped) noexcept
{
    text.remove_prefix(std::min(skipped, text.size()));
    return {const_cast<char*>(text.data()), text.size()};
}

/// Sends what follows the first `skipped` bytes of both; -1 as the system has it.
ssize_t sendBoth(int socket, std::string_view head, std::string_view body, std::size_t skipped) noexcept
{
    iovec parts[2] = {partOf(head, skipped), partOf(body, skipped - std::min(skipped, head.size()))};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    return sendmsg(socket, &message, MSG_NOSIGNAL);
}

}  // namespace

Connection::Connection(Descriptor socket, Shared& shared)
    : m_tSocket(std::move(socket)),
      m_rShared(shared),
      m_tMoved(Clock::now()),
      m_tBuffer(shared.m_rLimits.m_nHeaderBytes + kReadBytes),
      m_tHeld(shared.m_rPool)
{
    m_tReader.emplace(m_rShared.m_rLimits, m_rShared.m_rAccess);
    enter(kIdle, m_rShared.m_rLimits.m_tHeaderTime);
    expect(kReadable);
}

Connection::~Connection()
{
    close();
}

/// Whatever goes wrong, memory that runs out above all, costs this client its connection.
template <typename Step>
void Connection::guarded(const Step& step) noexcept
{
    try {
        step();
    } catch (...) {
        close();
    }
}

void Connection::refuseForTooMany() noexcept
{
    guarded([this] {
        refuse({503, "too-many-connections", "There are too many connections; try again later."},
               m_rShared.m_rLimits.m_tWriteTime);
    });
}

void Connection::stop() noexcept
{
    if (m_eState == kIdle) {
        close();
    }
}

void Connection::close() noexcept
{
    if (m_eState == kClosed) {
        return;
    }
    m_eState = kClosed;
    m_tDeadline = Clock::time_point::max();
    shutdown(m_tSocket.get(), SHUT_RDWR);
    m_tSocket.reset();  // which the loop then forgets
    m_tHeld.hold(0);
}

void Connection::onReady() noexcept
{
    passDeadline(Clock::now());
    guarded([this] {
        switch (m_eState) {
        case kIdle:
        case kReadingHeader:
        case kReadingBody:
            receive();
            break;
        case kInviting:
        case kSending:
            send();
            break;
        case kAnswering:
            // Bytes of the next request, or the client has gone: both can wait.
            m_rShared.m_rLoop.forget(m_tSocket.get());
            m_eExpected.reset();
            break;
        case kLingering:
            drain();
            break;
        case kClosed:
            break;
        }
    });
}

void Connection::passDeadline(Clock::time_point now) noexcept
{
    if (now >= m_tDeadline) {
        guarded([this] { onDeadline(); });
    }
}

std::optional<Connection::Clock::time_point> Connection::stalledSince() const noexcept
{
    const bool isClients = m_eState == kReadingBody || m_eState == kSending;
    return isClients && m_tHeld.hasTaken() ? std::optional(m_tMoved) : std::nullopt;
}

void Connection::enter(State state, std::chrono::milliseconds time) noexcept
{
    m_eState = state;
    m_tDeadline = Clock::now() + time;
}

void Connection::expect(Readiness readiness)
{
    if (!m_eExpected) {
        m_rShared.m_rLoop.watch(m_tSocket.get(), *this, readiness);
    } else if (*m_eExpected != readiness) {
        m_rShared.m_rLoop.change(m_tSocket.get(), *this, readiness);
    }
    m_eExpected = readiness;
}

void Connection::receive()
{
    const std::size_t room = std::min(kReadBytes, m_tBuffer.max_size() - m_tBuffer.size());
    const auto place = m_tBuffer.prepare(room);
    const ssize_t count = recv(m_tSocket.get(), place.data(), place.size(), 0);
    if (count < 0) {
        wouldBlock() ? expect(kReadable) : close();
        return;
    }
    if (count == 0) {
        onEnd();
        return;
    }
    m_tBuffer.commit(static_cast<std::size_t>(count));
    m_tMoved = Clock::now();
    if (m_eState == kIdle) {
        enter(kReadingHeader, m_rShared.m_rLimits.m_tHeaderTime);
    }
    read();
}

void Connection::read()
{
    switch (m_tReader->read(m_tBuffer)) {
    case RequestReader::kNeedsMore:
        if (hold(m_tReader->bodyBytes())) {
            expect(kReadable);
        } else {
            refuse({503, "busy", "There is no memory left for such a body; try again later."},
                   m_rShared.m_rLimits.m_tWriteTime);
        }
        break;
    case RequestReader::kHasHeader:
        onHeader();
        break;
    case RequestReader::kComplete:
        submit();
        break;
    case RequestReader::kRefused:
        refuse(m_tReader->refusal(), m_rShared.m_rLimits.m_tWriteTime);
        break;
    }
}

/// A body follows. The client may wait with it until it is told that it is wanted.
void Connection::onHeader()
{
    if (!m_tReader->isInvitationAwaited()) {
        enter(kReadingBody, m_rShared.m_rLimits.m_tBodyTime);
        read();
        return;
    }
    m_sHead = ksContinue;
    m_tAnswer = HttpAnswer();
    m_nSent = 0;
    enter(kInviting, m_rShared.m_rLimits.m_tWriteTime);
    send();
}

/// The client sends no more.
void Connection::onEnd()
{
    if (m_tReader->hasBegun() || m_tBuffer.size() != 0) {
        refuse(m_tReader->cutOff(), m_rShared.m_rLimits.m_tWriteTime);
    } else {
        close();
    }
}

void Connection::onDeadline()
{
    if (m_eState == kReadingHeader || m_eState == kReadingBody) {
        // Who has not sent in time gets no more of it for taking the answer than for reading the last one.
        refuse({408, "request-timeout", "The request took too long."}, m_rShared.m_rLimits.m_tLingerTime);
    } else {
        close();
    }
}

void Connection::submit()
{
    m_bKeepAlive = m_tReader->isKeptAlive();
    m_tRequest = m_tReader->takeRequest();
    m_bWithoutBody = m_tRequest.m_sMethod == "HEAD";
    m_tBegin = Clock::now();
    m_eState = kAnswering;
    m_tDeadline = Clock::time_point::max();  // the work has an end of its own
    m_bAtWork = true;
    if (m_tRequest.m_sBody.size() <= m_rShared.m_rLimits.m_nShortBody) {
        m_rShared.m_rWorkers.submitShort(*this);
    } else if (!m_rShared.m_rWorkers.submitLong(*this)) {
        m_bAtWork = false;
        respond(answerOf({503, "busy", "There is too much work of that size; try again later."}), m_bKeepAlive,
                m_rShared.m_rLimits.m_tWriteTime);
    }
}

void Connection::work() noexcept
{
    try {
        try {
            m_tAnswer = m_rShared.m_rHandler(m_tRequest);
        } catch (const std::exception&) {
            m_tAnswer = answerOf({500, "internal-error", "The request could not be answered."});
        }
        m_bHasFailed = false;
    } catch (...) {
        m_bHasFailed = true;
    }
}

void Connection::onAnswered() noexcept
{
    m_bAtWork = false;
    if (m_eState != kAnswering) {
        return;  // closed meanwhile
    }
    if (m_bHasFailed) {
        close();
        return;
    }
    m_tRequest.m_sBody = std::string();
    guarded([this] {
        respond(std::move(m_tAnswer), m_bKeepAlive && !m_rShared.m_bStopping, m_rShared.m_rLimits.m_tWriteTime);
    });
}

/// Whether the memory is there, if need be because somebody who holds some has stalled.
bool Connection::hold(std::size_t bytes) noexcept
{
    m_tHeld.hold(0);
    while (!m_tHeld.hold(bytes)) {
        if (!m_rShared.m_tMakeRoom()) {
            return false;
        }
    }
    return true;
}

/// The answer to what is no request that can be taken.
void Connection::refuse(const Refusal& refusal, std::chrono::milliseconds time)
{
    HttpAnswer answer = answerOf(refusal);
    m_tBegin = Clock::now();
    m_tRequest = HttpRequest();
    m_tReader.reset();
    m_bWithoutBody = false;
    respond(std::move(answer), false, time);
}

void Connection::respond(HttpAnswer answer, bool keepAlive, std::chrono::milliseconds time)
{
    const char* const route = answer.m_pRoute;
    if (answer.m_sBody.size() > m_rShared.m_rLimits.m_nAnswerBytes) {
        answer = answerOf({413, "answer-too-large", "The answer would be too large."});
    }
    if (!hold(answer.m_sBody.capacity())) {
        answer = answerOf({503, "busy", "There is no memory left for such an answer; try again later."});
        hold(0);
    }
    try {
        m_sHead = headOf(answer, keepAlive);
    } catch (const std::invalid_argument&) {
        answer = answerOf({500, "internal-error", "The request could not be answered."});
        m_sHead = headOf(answer, keepAlive);
    }
    answer.m_pRoute = route;
    m_bKeepAlive = keepAlive;
    m_tAnswer = std::move(answer);
    m_nSent = 0;
    m_tMoved = Clock::now();
    enter(kSending, time);
    send();
}

void Connection::send()
{
    const std::string_view body = m_bWithoutBody || m_eState == kInviting ? std::string_view() : m_tAnswer.m_sBody;
    while (m_nSent < m_sHead.size() + body.size()) {
        const ssize_t count = sendBoth(m_tSocket.get(), m_sHead, body, m_nSent);
        if (count < 0 && wouldBlock()) {
            expect(kWritable);
            return;
        }
        if (count < 0) {
            observe();
            close();
            return;
        }
        m_nSent += static_cast<std::size_t>(count);
        m_tMoved = Clock::now();
        if (m_tMoved >= m_tDeadline) {
            close();
            return;
        }
    }
    onSent();
}

void Connection::observe()
{
    const std::chrono::duration<double> taken = Clock::now() - m_tBegin;
    m_rShared.m_rObserver(
        {m_tRequest.m_sMethod, m_tRequest.m_sTarget, m_tAnswer.m_pRoute, m_tAnswer.m_nStatus, taken.count()});
}

void Connection::onSent()
{
    if (m_eState == kInviting) {
        enter(kReadingBody, m_rShared.m_rLimits.m_tBodyTime);
        read();
        return;
    }
    observe();
    m_tAnswer = HttpAnswer();
    m_tHeld.hold(0);
    m_bKeepAlive ? nextRequest() : linger();
}

/// Between requests, until the first byte comes, nothing is owed to the client.
void Connection::nextRequest()
{
    m_tReader.emplace(m_rShared.m_rLimits, m_rShared.m_rAccess);
    if (m_tBuffer.size() != 0) {
        enter(kReadingHeader, m_rShared.m_rLimits.m_tHeaderTime);
        read();
    } else if (m_rShared.m_bStopping) {
        close();
    } else {
        enter(kIdle, m_rShared.m_rLimits.m_tIdleTime);
        expect(kReadable);
    }
}

/// Closing while the client still sends would take the answer from it: what it sends is read for a while.
void Connection::linger()
{
    shutdown(m_tSocket.get(), SHUT_WR);
    m_tReader.reset();
    m_tBuffer = boost::beast::flat_buffer();
    m_nDrained = 0;
    enter(kLingering, m_rShared.m_rLimits.m_tLingerTime);
    expect(kReadable);
}

void Connection::drain()
{
    char bytes[kReadBytes];
    const ssize_t count = recv(m_tSocket.get(), bytes, sizeof bytes, 0);
    if (count < 0 && wouldBlock()) {
        return;
    }
    m_nDrained += count > 0 ? static_cast<std::size_t>(count) : 0;
    if (count <= 0 || m_nDrained >= kDrainedBytes) {
        close();
    }
}

}  // namespace server
