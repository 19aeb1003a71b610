#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/message.h"
#include "vel/core/string.h"

namespace vel {

/// Rising severity.
enum LogSeverity
{
    kLogInformation = 0,
    kLogMinorWarning = 1,
    kLogWarning = 2,
    kLogSeverityEnd_ = 3
};

/// A dotted name that says which activity writes a record ("vel.i18n.localeMapping.load"). A constant: it refers to
/// text with static storage duration and is usable from any static initialiser.
class LogSource
{
public:
    constexpr explicit LogSource(const wchar_t* name) noexcept : m_pName(name) {}
    constexpr const wchar_t* name() const noexcept { return m_pName; }

private:
    const wchar_t* m_pName;
};

/// A named value that the records written meanwhile carry.
struct LogProperty
{
    std::wstring_view m_sName;
    std::wstring_view m_sValue;
};

/// One record as a sink sees it. Valid during the call only.
struct LogRecord
{
    LogSeverity m_eSeverity;
    const wchar_t* m_pSource;                       ///< the innermost current source's name, or an empty text
    const Message& m_tMessage;                      ///< its inserts cut, see Logger::kLongestInsert
    const std::vector<LogProperty>& m_tProperties;  ///< outermost first, their values cut
    const char* m_pFile;                            ///< source file
    int m_nLine;                                    ///< source line
};

/// Receives records. write() may be called by several threads at once and must do its own locking.
class WEBI18N_API LogSink : public RefCounted
{
public:
    /// Records below this severity are not built at all.
    virtual LogSeverity leastSeverity() const noexcept = 0;
    virtual void write(const LogRecord& record) = 0;

protected:
    ~LogSink() override;
};

/// The process-wide logger: silent until a sink is set. Every operation is safe from any thread.
class WEBI18N_API Logger
{
public:
    Logger() = delete;

    /// What is inserted in a record may come from a file or a request, so it has a longest length: of a longer insert,
    /// at any depth, this many characters are kept and "..." stands behind them; of a property's value this many.
    static constexpr std::size_t kLongestInsert = 1000;

    /// Replaces the sink; a null handle silences. A record that is being written on another thread ends on the old one.
    static void setSink(Handle<LogSink> sink);
    /// Whether a record of that severity would be written; ask before building a message.
    static bool isEnabled(LogSeverity severity) noexcept;
    /// Hands a record to the sink with the calling thread's current source and properties. Exceptions of the sink pass.
    static void write(LogSeverity severity, const Message& message, const char* file, int line);
};

/// Makes a source the calling thread's current one for the life of the object; scopes nest. Costs no allocation.
class WEBI18N_API ScopedLogSource
{
public:
    explicit ScopedLogSource(const LogSource& source) noexcept;
    ~ScopedLogSource();
    ScopedLogSource(const ScopedLogSource&) = delete;
    ScopedLogSource& operator=(const ScopedLogSource&) = delete;

    /// The calling thread's current source, or null.
    static const LogSource* current() noexcept;

private:
    const LogSource* m_pSource;
    const ScopedLogSource* m_pOuter;
};

/// Attaches a named value to the records that the calling thread writes during the life of the object. Both texts must
/// outlive it. Costs no allocation.
class WEBI18N_API ScopedLogProperty
{
public:
    ScopedLogProperty(std::wstring_view name, std::wstring_view value) noexcept;
    ~ScopedLogProperty();
    ScopedLogProperty(const ScopedLogProperty&) = delete;
    ScopedLogProperty& operator=(const ScopedLogProperty&) = delete;

    const LogProperty& property() const noexcept { return m_tProperty; }
    const ScopedLogProperty* outer() const noexcept { return m_pOuter; }
    /// The calling thread's innermost property, or null.
    static const ScopedLogProperty* current() noexcept;

private:
    LogProperty m_tProperty;
    const ScopedLogProperty* m_pOuter;
};

}  // namespace vel

/// Writes a record with the place of the call; the message expression is evaluated only when it will be written.
#define VEL_LOG(severity, message)                                           \
    do {                                                                     \
        if (::vel::Logger::isEnabled(severity))                              \
            ::vel::Logger::write((severity), (message), __FILE__, __LINE__); \
    } while (false)
