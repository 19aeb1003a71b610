#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "accesslog.h"
#include "api.h"
#include "net/httpserver.h"
#include "options.h"
#include "spdlogsink.h"

namespace server {

namespace {

enum ExitCode
{
    kExitSuccess = 0,
    kExitUsage = 2,
    kExitData = 3
};

ExitCode serve(const Options& options)
{
    const auto sink = vel::makeHandle<SpdlogSink>(options.m_eLog, options.m_bAccessLog);
    vel::Logger::setSink(sink);
    const Catalogues catalogues(options.m_tData);
    Metrics metrics(Api::routes(), [&sink] { return sink->dropped(); });
    const Api api(catalogues, metrics);
    HttpServer http(
        Limits(), [&api](const HttpRequest& request) { return api.answer(request); },
        [&metrics](const Served& served) {
            metrics.count(served);
            logAccess(served);
        },
        options.m_tAccess);
    http.stopOnSignals();
    // The one line of standard output: who started the server on a free port reads it there.
    std::printf("http://127.0.0.1:%u\n", static_cast<unsigned>(http.listen(options.m_nPort)));
    std::fflush(stdout);
    if (!http.run(options.m_nThreads)) {
        std::_Exit(kExitSuccess);  // the time for stopping is over, and somebody is still at work with what lives here
    }
    vel::Logger::setSink({});
    return kExitSuccess;
}

ExitCode run(const std::vector<std::string>& arguments)
{
    const Options options = readOptions(arguments);
    if (options.m_bHelp) {
        std::fputs(ksUsage, stdout);
        return kExitSuccess;
    }
    return serve(options);
}

/// Runs, and says on standard error what went wrong.
ExitCode runReporting(int count, char** arguments) noexcept
{
    try {
        return run(std::vector<std::string>(arguments + 1, arguments + count));
    } catch (const UsageError& error) {
        std::fprintf(stderr, "webi18n-server: %s\n%s", error.what(), ksUsage);
        return kExitUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "webi18n-server: %s\n", error.what());
    } catch (const wchar_t*) {  // how the language service's wrapper fails
        std::fprintf(stderr, "webi18n-server: the language service cannot be started\n");
    }
    return kExitData;
}

}  // namespace

}  // namespace server

int main(int count, char** arguments)
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
    // Neither a reader of the log that goes away nor a terminal that is closed is a reason to serve nobody.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGHUP, SIG_IGN);
    return server::runReporting(count, arguments);
}
