#pragma once

#include <cstdint>
#include <memory>

#include "http.h"
#include "serverlimits.h"

namespace server {

/// An HTTP/1.1 server on the loopback address. Every limit has an answer with a JSON error; security headers stand in
/// each answer.
class HttpServer
{
public:
    HttpServer(const Limits& limits, Handler handler, Observer observer);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    /// Starts to listen; 0 takes a free port. The port. Throws std::system_error when it is taken.
    std::uint16_t listen(std::uint16_t port);
    /// SIGTERM and SIGINT stop it.
    void stopOnSignals();
    /// Serves on `threads` threads, the calling one among them, until it is stopped.
    void run(unsigned threads);
    /// No new connections; requests in flight are finished within the limit. From any thread.
    void stop();

private:
    class Implementation;
    std::shared_ptr<Implementation> m_pImplementation;
};

}  // namespace server
