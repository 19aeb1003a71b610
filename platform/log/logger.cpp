#include "vel/log/logger.h"

#include <atomic>
#include <mutex>

#include "vel/core/assertion.h"

namespace vel {

namespace {

/// The current sink. Constant-initialised and never destroyed, so that static initialisers and destructors may log.
class SinkHolder
{
public:
    constexpr SinkHolder() noexcept : m_hSink() {}
    ~SinkHolder() {}  // NOLINT(modernize-use-equals-default): a defaulted one would be deleted by the union

    void set(Handle<LogSink> sink)
    {
        const int least = sink.isNull() ? kLogSeverityEnd_ : sink->leastSeverity();
        {
            const std::lock_guard<std::mutex> lock(m_tMutex);
            m_hSink.swap(sink);
            m_nLeast.store(least, std::memory_order_relaxed);
        }
        // The old sink goes here, outside the lock: its destructor may log.
    }

    bool isEnabled(LogSeverity severity) const noexcept { return severity >= m_nLeast.load(std::memory_order_relaxed); }

    /// A share in the sink that takes records of that severity, or null.
    Handle<LogSink> sinkFor(LogSeverity severity)
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        return isEnabled(severity) ? m_hSink : Handle<LogSink>();
    }

private:
    std::mutex m_tMutex;
    std::atomic<int> m_nLeast{kLogSeverityEnd_};
    union {
        Handle<LogSink> m_hSink;
    };
};

constinit SinkHolder g_sink;

// In the part of a thread's storage that is there from its beginning: what is added for a library that is loaded later
// is allocated at the first use, and where memory is lacking then the C library ends the process.
[[gnu::tls_model("initial-exec")]] constinit thread_local const ScopedLogSource* t_source = nullptr;
[[gnu::tls_model("initial-exec")]] constinit thread_local const ScopedLogProperty* t_property = nullptr;

/// The calling thread's properties, outermost first.
std::vector<LogProperty> currentProperties()
{
    std::size_t count = 0;
    for (const ScopedLogProperty* each = t_property; each != nullptr; each = each->outer()) {
        ++count;
    }
    std::vector<LogProperty> properties(count);
    for (const ScopedLogProperty* each = t_property; each != nullptr; each = each->outer()) {
        const LogProperty& property = each->property();
        properties[--count] = {property.m_sName, property.m_sValue.substr(0, Logger::kLongestInsert)};
    }
    return properties;
}

/// Cuts what is longer than an insert may be; false when nothing is. Inserts nest as deep as the code that builds a
/// message has it, not as its texts have it.
bool cutInserts(Message& message)
{
    bool isCut = false;
    for (Message::Insert& each : message.inserts()) {
        const std::wstring_view text = each.m_tValue.plainText();
        const bool isLong = text.size() > Logger::kLongestInsert;
        if (isLong) {
            each.m_tValue = Message::text(String(text.substr(0, Logger::kLongestInsert)).append(L"..."));
        }
        if (isLong || cutInserts(each.m_tValue)) {
            message.insert(each.m_nNumber, std::move(each.m_tValue));
            isCut = true;
        }
    }
    return isCut;
}

void logAssertion(const AssertionReport& report)
{
    if (!Logger::isEnabled(kLogWarning)) {
        return;
    }
    const String text = stringFromUtf8(report.m_pText).value_or(String());
    Logger::write(kLogWarning, Message::text(L"Assertion failed: %1").insert(1, text), report.m_pFile, report.m_nLine);
}

/// From here on, assertion reports reach the log unless the host has set a handler.
[[maybe_unused]] const bool g_assertionsAreLogged = (setInitialAssertionHandler(logAssertion), true);

}  // namespace

LogSink::~LogSink() = default;

void Logger::setSink(Handle<LogSink> sink)
{
    g_sink.set(std::move(sink));
}

bool Logger::isEnabled(LogSeverity severity) noexcept
{
    return g_sink.isEnabled(severity);
}

void Logger::write(LogSeverity severity, const Message& message, const char* file, int line)
{
    const Handle<LogSink> sink = g_sink.sinkFor(severity);
    if (sink.isNull()) {
        return;
    }
    const LogSource* source = ScopedLogSource::current();
    const std::vector<LogProperty> properties = currentProperties();
    Message shown = message;
    cutInserts(shown);
    sink->write({severity, source == nullptr ? L"" : source->name(), shown, properties, file, line});
}

ScopedLogSource::ScopedLogSource(const LogSource& source) noexcept : m_pSource(&source), m_pOuter(t_source)
{
    t_source = this;
}

ScopedLogSource::~ScopedLogSource()
{
    t_source = m_pOuter;
}

const LogSource* ScopedLogSource::current() noexcept
{
    return t_source == nullptr ? nullptr : t_source->m_pSource;
}

ScopedLogProperty::ScopedLogProperty(std::wstring_view name, std::wstring_view value) noexcept
    : m_tProperty{name, value}, m_pOuter(t_property)
{
    t_property = this;
}

ScopedLogProperty::~ScopedLogProperty()
{
    t_property = m_pOuter;
}

const ScopedLogProperty* ScopedLogProperty::current() noexcept
{
    return t_property;
}

}  // namespace vel
