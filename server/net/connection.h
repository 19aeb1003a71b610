#pragma once

#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "http.h"
#include "net/eventloop.h"
#include "net/memorypool.h"
#include "net/requestreader.h"
#include "net/workers.h"
#include "serverlimits.h"

namespace server {

class Connection;

/// What all connections share; it outlives them.
struct Shared
{
    const Limits& m_rLimits;
    const Access& m_rAccess;
    const Handler& m_rHandler;
    const Observer& m_rObserver;
    EventLoop& m_rLoop;
    Workers& m_rWorkers;
    MemoryPool& m_rPool;
    bool m_bStopping = false;
    /// Closes a client that holds memory and neither sends nor takes; false when there is none.
    std::function<bool()> m_tMakeRoom = {};
};

/// One client: reads a request, has it answered, sends the answer, and so on. Everything but the work at the answer
/// happens on the loop's thread. Each state has a deadline, which is looked at before anything else is done; whatever
/// fails, ends this connection and nothing else.
class Connection final : public Watched, public Job
{
public:
    using Clock = std::chrono::steady_clock;

    /// The socket must not block. Throws when memory or what the system has runs out.
    Connection(Descriptor socket, Shared& shared);
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Says that there are too many connections, and closes.
    void refuseForTooMany() noexcept;
    /// The server stops: closes when no request is under way.
    void stop() noexcept;
    void close() noexcept;

    void onReady() noexcept override;
    void work() noexcept override;
    /// The work is done.
    void onAnswered() noexcept;
    /// Does what is due at the deadline, if it has passed.
    void passDeadline(Clock::time_point now) noexcept;

    Clock::time_point deadline() const noexcept { return m_tDeadline; }
    /// Whether it is closed and no worker has it, so that it may be destroyed.
    bool isOver() const noexcept { return m_eState == kClosed && !m_bAtWork; }
    /// Since when it holds shared memory and neither sends nor takes; nothing while it does, or holds none.
    std::optional<Clock::time_point> stalledSince() const noexcept;

private:
    enum State
    {
        kIdle,  ///< nothing is owed to the client
        kReadingHeader,
        kInviting,
        kReadingBody,
        kAnswering,
        kSending,
        kLingering,
        kClosed
    };

    template <typename Step>
    void guarded(const Step& step) noexcept;
    void enter(State state, std::chrono::milliseconds time) noexcept;
    void expect(Readiness readiness);

    void receive();
    void read();
    void onHeader();
    void onEnd();
    void onDeadline();
    void submit();
    bool hold(std::size_t bytes) noexcept;
    void refuse(const Refusal& refusal, std::chrono::milliseconds time);
    void respond(HttpAnswer answer, bool keepAlive, std::chrono::milliseconds time);
    void send();
    void observe();
    void onSent();
    void nextRequest();
    void linger();
    void drain();

    Descriptor m_tSocket;
    Shared& m_rShared;
    State m_eState = kIdle;
    Clock::time_point m_tDeadline;
    Clock::time_point m_tMoved;  // when a byte came or went
    Clock::time_point m_tBegin;
    std::optional<Readiness> m_eExpected;  // what the loop watches for
    boost::beast::flat_buffer m_tBuffer;
    std::optional<RequestReader> m_tReader;
    HeldMemory m_tHeld;
    HttpRequest m_tRequest;
    HttpAnswer m_tAnswer;
    std::string m_sHead;
    std::size_t m_nSent = 0;  // of head and body
    std::size_t m_nDrained = 0;
    bool m_bKeepAlive = false;
    bool m_bAtWork = false;
    bool m_bWithoutBody = false;
    bool m_bHasFailed = false;  // the worker could not even refuse
};

}  // namespace server
