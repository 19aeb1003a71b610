#pragma once

#include <memory>

#include "vel/log/logger.h"

namespace spdlog {
class logger;
}  // namespace spdlog

namespace server {

/// Whose records are one line for each request.
inline constexpr vel::LogSource klsAccess{L"webi18n.server.access"};

/// Writes the logger's records to standard error, a line each. Control characters are spelled out, so that no client
/// writes lines of its own.
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

private:
    std::shared_ptr<spdlog::logger> m_pLogger;
    vel::LogSeverity m_eLeastSeverity;
    bool m_bAccess;
};

}  // namespace server
