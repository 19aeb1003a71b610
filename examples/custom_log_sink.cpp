// The library's log records go where the host's own go: custom_log_sink CURRENCIESFILE

#include <cstdlib>
#include <exception>
#include <iostream>
#include <mutex>
#include <optional>

#include <vel/log/logger.h>
#include <webi18n/currencylookup.h>
#include <webi18n/locale.h>

namespace {

const char* nameOf(vel::LogSeverity severity)
{
    switch (severity) {
    case vel::kLogInformation:
        return "information";
    case vel::kLogMinorWarning:
        return "minor warning";
    default:
        return "warning";
    }
}

/// Writes one line for each record to standard output. Any thread may call write(), so it locks; the record is valid
/// during the call only, so it keeps nothing of it.
class LineSink final : public vel::LogSink
{
public:
    explicit LineSink(vel::LogSeverity least) noexcept : m_eLeast(least) {}

    vel::LogSeverity leastSeverity() const noexcept override { return m_eLeast; }
    void write(const vel::LogRecord& record) override
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        std::cout << nameOf(record.m_eSeverity) << ' ' << vel::toUtf8Lossy(record.m_pSource) << ": "
                  << vel::toUtf8Lossy(record.m_tMessage.toString());
        for (const vel::LogProperty& each : record.m_tProperties) {
            std::cout << " [" << vel::toUtf8Lossy(each.m_sName) << '=' << vel::toUtf8Lossy(each.m_sValue) << ']';
        }
        std::cout << '\n';
    }

private:
    std::mutex m_tMutex;
    vel::LogSeverity m_eLeast;
};

/// A host's own records carry its own source and properties; the library's stand within them.
void start(const vel::String& file)
{
    static constexpr vel::LogSource klsStart(L"host.start");
    const vel::ScopedLogSource source(klsStart);
    const vel::ScopedLogProperty phase(L"phase", L"start");
    VEL_LOG(vel::kLogInformation, vel::Message::text(L"Reading %1").insert(1, file));
    vel::CurrencyLookup currencies;
    currencies.loadCurrencies(file);
}

/// A broken invariant is a record too: here a caller's mistake, after which the library goes on.
void makeAMistake()
{
    vel::Locale::kUSA.getNameAsString(vel::Locale::kNameTypeEnd_, 0);
}

}  // namespace

int main(int argc, char** argv)
{
    const auto file = argc == 2 ? vel::stringFromUtf8(argv[1]) : std::nullopt;
    if (!file) {
        std::cerr << "usage: custom_log_sink CURRENCIESFILE\n";
        return EXIT_FAILURE;
    }
    try {
        std::cout << "from information on:\n";
        vel::Logger::setSink(vel::makeHandle<LineSink>(vel::kLogInformation));
        start(*file);
        std::cout << "warnings only:\n";
        vel::Logger::setSink(vel::makeHandle<LineSink>(vel::kLogWarning));
        start(*file);
        makeAMistake();
        std::cout << "silent:\n";
        vel::Logger::setSink({});
        start(*file);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
