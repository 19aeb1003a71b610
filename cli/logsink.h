#pragma once

#include <mutex>

#include "vel/log/logger.h"

namespace cli {

/// Writes the library's records to standard error: one JSON object a line (`severity`, `source`, `message`,
/// `properties`), or a line for people:
///
///     webi18n: warning: Invalid date order string 'MDY'. [vel.i18n.xmllocale.applyDefinition] mappingFile=a.xml
class StandardErrorSink final : public vel::LogSink
{
public:
    StandardErrorSink(vel::LogSeverity leastSeverity, bool json) noexcept;
    ~StandardErrorSink() override;

    vel::LogSeverity leastSeverity() const noexcept override { return m_eLeastSeverity; }
    void write(const vel::LogRecord& record) override;

private:
    std::mutex m_tMutex;
    vel::LogSeverity m_eLeastSeverity;
    bool m_bJson;
};

}  // namespace cli
