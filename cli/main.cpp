#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <new>

#include "arguments.h"
#include "logsink.h"
#include "vel/xml/xmlexception.h"

namespace cli {

namespace {

ExitCode run(int count, char** arguments)
{
    Request request = readArguments(std::vector<std::string>(arguments + 1, arguments + count));
    Output output(request.m_tOptions.m_bJson);
    if (request.m_pSubcommand == nullptr) {
        output.text(request.m_sText);
        output.flush();
        return kExitSuccess;
    }
    if (const auto level = request.m_tOptions.m_eLog) {
        vel::Logger::setSink(vel::makeHandle<StandardErrorSink>(*level, output.isJson()));
    }
    Session session(std::move(request.m_tOptions));
    try {
        const ExitCode code = request.m_pSubcommand->run(session, output);
        output.flush();
        return code;
    } catch (const UsageError&) {
        output.flush();  // a batch's answers before the line that cannot be taken
        throw;
    }
}

/// Runs, and says on standard error what went wrong.
ExitCode runReporting(int count, char** arguments) noexcept
{
    try {
        return run(count, arguments);
    } catch (const UsageError& error) {
        complain("error", error.what());
        complain("hint", "webi18n --help lists what is accepted");
        return kExitUsage;
    } catch (const BrokenPipe&) {
        return kExitData;
    } catch (const vel::XmlException& error) {
        complainWithoutKind(error.what());
    } catch (const std::bad_alloc&) {
        complain("error", "out of memory");
    } catch (const std::exception& error) {
        complain("error", error.what());
    } catch (const wchar_t*) {  // how the language service's wrapper fails
        complain("error", "the language service cannot be started");
    }
    return kExitData;
}

/// Ends the command where an exception could not be caught: in a static initialiser, or a function that may not throw.
[[noreturn]] void endUncaught() noexcept
{
    try {
        if (std::current_exception()) {
            throw;
        }
    } catch (const std::bad_alloc&) {
        complain("error", "out of memory");
        _exit(kExitData);
    } catch (...) {
        // A fault of the program: the core shows where.
    }
    std::abort();
}

struct TerminateHandler
{
    TerminateHandler() noexcept { std::set_terminate(endUncaught); }
};

/// Before every other static object of the command, some of which need memory.
[[gnu::init_priority(101)]] const TerminateHandler g_terminateHandler;

}  // namespace

}  // namespace cli

int main(int count, char** arguments)
{
    return cli::runReporting(count, arguments);
}
