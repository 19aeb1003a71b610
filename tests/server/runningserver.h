#pragma once

#include <cstdint>
#include <memory>
#include <thread>

#include "api.h"
#include "catalogues.h"
#include "metrics.h"
#include "net/httpserver.h"
#include "serverlimits.h"

namespace tests {

/// The catalogues of the data pack, loaded once in the process.
const server::Catalogues& packCatalogues();

/// A server of the data pack on a free port, for the life of this object.
class RunningServer
{
public:
    explicit RunningServer(const server::Limits& limits = {});
    ~RunningServer();

    std::uint16_t port() const { return m_nPort; }
    void stop();
    /// When it has stopped.
    void join() { m_tThread.join(); }

private:
    server::Metrics m_tMetrics;
    server::Api m_tApi;
    server::HttpServer m_tServer;
    std::uint16_t m_nPort;
    std::thread m_tThread;
};

}  // namespace tests
