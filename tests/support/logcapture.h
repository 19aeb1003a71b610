#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "vel/log/logger.h"

namespace testsupport {

/// A record that outlives the call of the sink.
struct StoredRecord
{
    vel::LogSeverity m_eSeverity;
    std::wstring m_sSource;
    vel::Message m_tMessage;
    std::vector<std::pair<std::wstring, std::wstring>> m_tProperties;
    std::string m_sFile;
    int m_nLine;

    vel::String text() const { return m_tMessage.toString(); }
};

/// A sink that keeps what it is given.
class StoringSink final : public vel::LogSink
{
public:
    explicit StoringSink(vel::LogSeverity least) : m_eLeast(least) {}

    vel::LogSeverity leastSeverity() const noexcept override { return m_eLeast; }
    void write(const vel::LogRecord& record) override
    {
        StoredRecord stored{record.m_eSeverity, record.m_pSource, record.m_tMessage, {},
                            record.m_pFile,     record.m_nLine};
        for (const vel::LogProperty& each : record.m_tProperties) {
            stored.m_tProperties.emplace_back(each.m_sName, each.m_sValue);
        }
        const std::lock_guard<std::mutex> lock(m_tMutex);
        m_tRecords.push_back(std::move(stored));
    }
    std::vector<StoredRecord> records() const
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        return m_tRecords;
    }

private:
    vel::LogSeverity m_eLeast;
    mutable std::mutex m_tMutex;
    std::vector<StoredRecord> m_tRecords;
};

/// Sends the process's records to a StoringSink while it lives, to nobody afterwards.
class LogCapture
{
public:
    explicit LogCapture(vel::LogSeverity least = vel::kLogInformation) : m_hSink(vel::makeHandle<StoringSink>(least))
    {
        vel::Logger::setSink(m_hSink);
    }
    ~LogCapture() { vel::Logger::setSink({}); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<StoredRecord> records() const { return m_hSink->records(); }

private:
    vel::Handle<StoringSink> m_hSink;
};

}  // namespace testsupport
