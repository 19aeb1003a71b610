#pragma once

#include <cstdint>
#include <memory>

#include "http.h"
#include "net/access.h"
#include "net/descriptor.h"
#include "serverlimits.h"

namespace server {

/// An HTTP/1.1 server on the loopback address. Every limit has an answer with a JSON error; security headers stand in
/// each answer. One thread keeps all connections, others do the work of the requests, so that no request is between a
/// client and its deadline. Whatever fails for one connection ends that connection alone.
class HttpServer
{
public:
    /// `handler` is called on the workers' threads, `observer` on the one that runs. Throws std::system_error when the
    /// system gives no descriptors.
    HttpServer(const Limits& limits, Handler handler, Observer observer, Access access = {});
    /// Waits for requests that are still worked at.
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    /// Starts to listen; 0 takes a free port. The port. Throws std::system_error when it is taken.
    std::uint16_t listen(std::uint16_t port);
    /// SIGTERM and SIGINT stop it; from here on they are blocked in the calling thread and those that it starts. Throws
    /// std::system_error.
    void stopOnSignals();
    /// Serves until it is stopped; so many threads work at short requests and one at long ones, none with 0: then the
    /// calling one does. Whether all work had ended when the time for stopping was over. Throws std::system_error when
    /// the system has no thread left.
    bool run(unsigned threads);
    /// No new connections; requests in flight are finished within the limit. From any thread.
    void stop() noexcept;

    /// For hosts with a loop of their own, in place of run(): takes a connected socket that does not block,
    void take(Descriptor socket) noexcept;
    /// and does what can be done without waiting. Returns how many connections there are.
    std::size_t step() noexcept;

private:
    class Implementation;
    std::unique_ptr<Implementation> m_pImplementation;
};

}  // namespace server
