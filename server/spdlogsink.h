#pragma once

#include <cstdint>
#include <memory>

#include "logqueue.h"
#include "vel/log/logger.h"

namespace spdlog {
class logger;
}  // namespace spdlog

namespace server {

/// Whose records are one line for each request.
inline constexpr vel::LogSource klsAccess{L"webi18n.server.access"};

/// Writes the logger's records to standard error, a line each, and never waits for who reads them: what does not fit
/// behind what is still unread is left out and counted. Control characters are spelled out, and those that turn the
/// direction of text, so that no client writes lines of its own or makes others read wrongly.
class SpdlogSink final : public vel::LogSink
{
public:
    /// The requests' records are written when `access` says so, all others from the least severity on.
    SpdlogSink(vel::LogSeverity leastSeverity, bool access);
    ~SpdlogSink() override;

    vel::LogSeverity leastSeverity() const noexcept override
    {
        return m_bAccess ? vel::kLogInformation : m_eLeastSeverity;
    }
    void write(const vel::LogRecord& record) override;
    /// How many records were left out.
    std::uint64_t dropped() const noexcept { return m_tQueue.dropped(); }

private:
    LogQueue m_tQueue;
    std::shared_ptr<spdlog::logger> m_pLogger;
    vel::LogSeverity m_eLeastSeverity;
    bool m_bAccess;
};

}  // namespace server
