#include "logsink.h"

#include <cstdio>
#include <string>

#include "output.h"
#include "text.h"

namespace cli {

namespace {

const char* nameOf(vel::LogSeverity severity) noexcept
{
    switch (severity) {
    case vel::kLogInformation:
        return "information";
    case vel::kLogMinorWarning:
        return "minorWarning";
    default:
        return "warning";
    }
}

std::string jsonLine(const vel::LogRecord& record)
{
    Json json;
    json["severity"] = nameOf(record.m_eSeverity);
    json["source"] = utf8Text(record.m_pSource);
    json["message"] = utf8Text(record.m_tMessage.toString());
    json["properties"] = Json::object();
    for (const vel::LogProperty& property : record.m_tProperties) {
        json["properties"][utf8Text(property.m_sName)] = utf8Text(property.m_sValue);
    }
    return json.dump();
}

std::string plainLine(const vel::LogRecord& record)
{
    std::string line = std::string("webi18n: ") + nameOf(record.m_eSeverity) + ": " +
                       visibleText(record.m_tMessage.toString()) + " [" + utf8Text(record.m_pSource) + "]";
    for (const vel::LogProperty& property : record.m_tProperties) {
        line += " " + visibleText(property.m_sName) + "=" + visibleText(property.m_sValue);
    }
    return line;
}

}  // namespace

StandardErrorSink::StandardErrorSink(vel::LogSeverity leastSeverity, bool json) noexcept
    : m_eLeastSeverity(leastSeverity), m_bJson(json)
{}

StandardErrorSink::~StandardErrorSink() = default;

void StandardErrorSink::write(const vel::LogRecord& record)
{
    const std::string line = (m_bJson ? jsonLine(record) : plainLine(record)) + "\n";
    const std::lock_guard<std::mutex> lock(m_tMutex);
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace cli
