// Load for a running server: server_soak PORT PROCESS DATA SECONDS
// Compares each answer with what the library says in this process, and watches the server's resident memory.

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "api.h"
#include "client.h"

namespace {

constexpr unsigned kConnections = 64;

/// A request and the answer that it must get; status 0: a clean close, or any refusal.
struct Case
{
    std::string m_sBytes;
    unsigned m_nStatus;
    std::string m_sBody;
};

std::vector<Case> makeCases(const server::Api& api)
{
    std::vector<Case> cases;
    const char* const kTargets[] = {"/api/resolve",
                                    "/api/locale",
                                    "/api/parse?text=1%2F2%2F2003&expect=date",
                                    "/api/currencies?tag=EUR",
                                    "/api/java",
                                    "/api/charset",
                                    "/api/parse?text=%FF",
                                    "/api/locale?locale=xx",
                                    "/none"};
    const char* const kLanguages[] = {"fr-CA,fr;q=0.9", "de", "ja;q=0.3,th;q=0.4", "xx,*;q=0.1", "a_b,,ar-EG", ""};
    const char* const kCookies[] = {"", "webi18n=dateOrder=ymd&decimalSeparator=%27", "webi18n=24hours=true",
                                    "webi18n=colour=red"};
    for (const char* target : kTargets) {
        for (const char* language : kLanguages) {
            for (const char* cookie : kCookies) {
                server::HttpRequest request;
                request.m_sMethod = "GET";
                request.m_sTarget = target;
                request.m_sAcceptLanguage = language;
                request.m_sCookie = cookie;
                const server::HttpAnswer answer = api.answer(request);
                cases.push_back({"GET " + request.m_sTarget + " HTTP/1.1\r\nHost: localhost\r\nAccept-Language: " +
                                     request.m_sAcceptLanguage + "\r\nCookie: " + request.m_sCookie + "\r\n\r\n",
                                 answer.m_nStatus, answer.m_sBody});
            }
        }
    }
    for (const char* bad : {"hello\r\n\r\n", "GET / HTTP/1.1\r\nContent-Length: x\r\n\r\n"}) {
        cases.push_back({bad, 0, {}});
    }
    return cases;
}

std::size_t residentPages(const std::string& process)
{
    std::ifstream file("/proc/" + process + "/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident;
}

struct Tally
{
    std::atomic<std::size_t> m_nAnswers = 0;
    std::atomic<std::size_t> m_nWrong = 0;
    std::atomic<bool> m_bEnough = false;
};

bool isRight(const Case& each, const std::optional<tests::Reply>& reply)
{
    if (each.m_nStatus == 0) {
        return !reply || reply->m_nStatus == 400;
    }
    return reply && reply->m_nStatus == each.m_nStatus && reply->m_sBody == each.m_sBody;
}

void load(std::uint16_t port, const std::vector<Case>& cases, std::size_t place, Tally& tally)
{
    while (!tally.m_bEnough) {
        try {
            tests::Client client(port);
            // Some answers to a connection, then a new one; a bad request ends it.
            for (int round = 0; round < 50 && !tally.m_bEnough; ++round) {
                const Case& each = cases[place++ % cases.size()];
                client.send(each.m_sBytes);
                isRight(each, client.receive()) ? ++tally.m_nAnswers : ++tally.m_nWrong;
                if (each.m_nStatus == 0) {
                    break;
                }
            }
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            ++tally.m_nWrong;
        }
    }
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 5) {
        std::fprintf(stderr, "server_soak PORT PROCESS DATA SECONDS\n");
        return 2;
    }
    std::setlocale(LC_CTYPE, "C.UTF-8");
    answers::DataOptions options;
    options.m_sData = *vel::stringFromUtf8(arguments[3]);
    const server::Catalogues catalogues(options);
    server::Metrics metrics(server::Api::routes());
    const std::vector<Case> cases = makeCases(server::Api(catalogues, metrics));
    const auto port = static_cast<std::uint16_t>(std::stoul(arguments[1]));
    const std::chrono::seconds time(std::stoul(arguments[4]));
    Tally tally;
    std::vector<std::thread> threads;
    for (unsigned index = 0; index < kConnections; ++index) {
        threads.emplace_back(load, port, std::cref(cases), std::size_t{index} * 7, std::ref(tally));
    }
    std::this_thread::sleep_for(time / 3);
    const std::size_t warm = residentPages(arguments[2]);
    std::this_thread::sleep_for(time - time / 3);
    const std::size_t end = residentPages(arguments[2]);
    tally.m_bEnough = true;
    for (std::thread& each : threads) {
        each.join();
    }
    const double growth = warm == 0 ? 100 : 100.0 * (static_cast<double>(end) / static_cast<double>(warm) - 1);
    std::printf("%zu right answers, %zu wrong; resident memory %zu KiB, %+.2f %% since it was warm\n",
                tally.m_nAnswers.load(), tally.m_nWrong.load(),
                end * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024, growth);
    return tally.m_nWrong == 0 && tally.m_nAnswers != 0 && growth <= 2 ? 0 : 1;
}
