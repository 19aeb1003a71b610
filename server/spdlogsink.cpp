#include "spdlogsink.h"

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <string>

#include "answers/text.h"

namespace server {

namespace {

spdlog::level::level_enum levelOf(vel::LogSeverity severity)
{
    return severity == vel::kLogInformation ? spdlog::level::info : spdlog::level::warn;
}

}  // namespace

SpdlogSink::SpdlogSink(vel::LogSeverity leastSeverity, bool access)
    : m_pLogger(std::make_shared<spdlog::logger>("webi18n", std::make_shared<spdlog::sinks::stderr_sink_mt>())),
      m_eLeastSeverity(leastSeverity),
      m_bAccess(access)
{
    m_pLogger->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l %v");
}

SpdlogSink::~SpdlogSink() = default;

void SpdlogSink::write(const vel::LogRecord& record)
{
    const bool isAccess = std::wstring_view(record.m_pSource) == klsAccess.name();
    if (isAccess ? !m_bAccess : record.m_eSeverity < m_eLeastSeverity) {
        return;
    }
    std::string line =
        answers::visibleText(record.m_tMessage.toString()) + " [" + answers::utf8Text(record.m_pSource) + "]";
    for (const vel::LogProperty& property : record.m_tProperties) {
        line += " " + answers::visibleText(property.m_sName) + "=" + answers::visibleText(property.m_sValue);
    }
    m_pLogger->log(levelOf(record.m_eSeverity), spdlog::string_view_t(line.data(), line.size()));
}

}  // namespace server
