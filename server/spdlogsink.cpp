#include "spdlogsink.h"

#include <spdlog/sinks/base_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <mutex>
#include <string>

#include "answers/text.h"
#include "logtext.h"

namespace server {

namespace {

spdlog::level::level_enum levelOf(vel::LogSeverity severity)
{
    return severity == vel::kLogInformation ? spdlog::level::info : spdlog::level::warn;
}

class QueueSink final : public spdlog::sinks::base_sink<std::mutex>
{
public:
    explicit QueueSink(LogQueue& queue) : m_rQueue(queue) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override
    {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        m_rQueue.write({line.data(), line.size()});
    }
    void flush_() override {}

    LogQueue& m_rQueue;
};

}  // namespace

SpdlogSink::SpdlogSink(vel::LogSeverity leastSeverity, bool access)
    : m_tQueue(STDERR_FILENO),
      m_pLogger(std::make_shared<spdlog::logger>("webi18n", std::make_shared<QueueSink>(m_tQueue))),
      m_eLeastSeverity(leastSeverity),
      m_bAccess(access)
{
    // What cannot be formatted is left out too: to say so on standard error would be to wait for its reader.
    m_pLogger->set_error_handler([this](const std::string&) { m_tQueue.drop(); });
    m_pLogger->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l %v");
}

SpdlogSink::~SpdlogSink() = default;

void SpdlogSink::write(const vel::LogRecord& record)
{
    const bool isAccess = std::wstring_view(record.m_pSource) == klsAccess.name();
    if (isAccess ? !m_bAccess : record.m_eSeverity < m_eLeastSeverity) {
        return;
    }
    std::string line = logText(record.m_tMessage.toString()) + " [" + answers::utf8Text(record.m_pSource) + "]";
    for (const vel::LogProperty& property : record.m_tProperties) {
        line += " " + logText(property.m_sName) + "=" + logText(property.m_sValue);
    }
    m_pLogger->log(levelOf(record.m_eSeverity), spdlog::string_view_t(line.data(), line.size()));
}

}  // namespace server
