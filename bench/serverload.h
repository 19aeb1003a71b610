#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// The sample server in a process of its own, on a free port; stopped with this object. Throws std::runtime_error when
/// it does not start.
class ServerProcess
{
public:
    /// `data`: the folder that it loads, or "none".
    explicit ServerProcess(const std::string& data);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    std::uint16_t port() const noexcept { return m_nPort; }

private:
    int m_nProcess = -1;
    std::uint16_t m_nPort = 0;
};

/// Clients that keep the server busy: threads, each with some connections that stay open.
class ServerLoad
{
public:
    ServerLoad(std::uint16_t port, std::string target);
    ~ServerLoad();
    ServerLoad(const ServerLoad&) = delete;
    ServerLoad& operator=(const ServerLoad&) = delete;

    /// Asks about so many times in all, and returns the nanoseconds that one request took on the clock, all connections
    /// taken together. Throws std::runtime_error for an answer that is not like the first one.
    double nanosecondsPerRequest(std::size_t requests);

private:
    void ask(std::size_t thread, std::size_t rounds);

    std::string m_sRequest;
    std::size_t m_nAnswerBytes = 0;
    std::vector<std::vector<int>> m_tSockets;  // of each thread
};

/// Starts a server, asks it once and stops it; the nanoseconds from its start to the end of its answer.
double nanosecondsToFirstAnswer(const std::string& data);

}  // namespace bench
