// Load for a running server: server_soak PORT PROCESS DATA COMMAND SECONDS PERCENT [MEBIBYTES]
// Compares each answer with what the library says in this process, and that with what the command says where it can be
// asked the same. The server's resident memory may grow by PERCENT once it is warm. With MEBIBYTES a third of the
// connections attacks the server: then no answer to the others may be later than a second, and the server may never
// have more memory than that.

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "api.h"
#include "attacks.h"
#include "client.h"
#include "questions.h"

namespace {

constexpr unsigned kConnections = 64;
constexpr unsigned kAttackers = kConnections / 3;
constexpr std::chrono::milliseconds kLatest{1000};

/// A request and the answer that it must get; status 0: a clean close, or any refusal.
struct Case
{
    std::string m_sBytes;
    unsigned m_nStatus;
    std::string m_sBody;
};

server::HttpRequest requestOf(const char* method, const char* target, const char* body = "")
{
    server::HttpRequest request;
    request.m_sMethod = method;
    request.m_sTarget = target;
    request.m_sBody = body;
    return request;
}

void addCase(const server::Api& api, const server::HttpRequest& request, std::vector<Case>& cases)
{
    const server::HttpAnswer answer = api.answer(request);
    cases.push_back({tests::bytesOf(request), answer.m_nStatus, answer.m_sBody});
}

/// Good and bad questions, by each kind of user.
void addMixedCases(const server::Api& api, std::vector<Case>& cases)
{
    const server::HttpRequest kQuestions[] = {
        requestOf("GET", "/"),
        requestOf("GET", "/api/resolve"),
        requestOf("GET", "/api/locale"),
        requestOf("GET", "/api/parse?text=1%2F2%2F2003&expect=date"),
        requestOf("GET", "/api/render?date=2005-12-31&number=-1234.5"),
        requestOf("GET", "/api/currencies?tag=EUR"),
        requestOf("GET", "/api/java"),
        requestOf("GET", "/api/charset"),
        requestOf("POST", "/api/sort", R"({"lines":["z","ö","a"],"sort":"sv"})"),
        requestOf("POST", "/api/encode", R"({"text":"naïve €","charset":"koi8-r"})"),
        requestOf("POST", "/api/preferences", R"({"dateOrder":"dmy","timeSeparator":"h"})"),
        requestOf("POST", "/api/sort", R"({"lines":["z",)"),
        requestOf("POST", "/api/encode", "{\"text\":\"\xFF\"}"),
        requestOf("POST", "/api/resolve"),
        requestOf("GET", "/api/parse?text=%FF"),
        requestOf("GET", "/api/render?date=2005-02-29"),
        requestOf("GET", "/api/sort?sort=xx&line=a"),
        requestOf("GET", "/api/locale?locale=xx"),
        requestOf("GET", "/none"),
    };
    const char* const kLanguages[] = {"fr-CA,fr;q=0.9", "de", "ja;q=0.3,th;q=0.4", "xx,*;q=0.1", "a_b,,ar-EG", ""};
    const char* const kCookies[] = {"", "webi18n=dateOrder=ymd&decimalSeparator=%27", "webi18n=24hours=true",
                                    "webi18n=colour=red"};
    for (server::HttpRequest request : kQuestions) {
        for (const char* language : kLanguages) {
            for (const char* cookie : kCookies) {
                request.m_sAcceptLanguage = language;
                request.m_sCookie = cookie;
                addCase(api, request, cases);
            }
        }
    }
}

/// What the command is asked too, which must give the same answers.
void addCommandCases(const server::Api& api, const std::string& command, const std::string& data,
                     std::vector<Case>& cases)
{
    for (const tests::Question& question : tests::questionsForBoth()) {
        addCase(api, question.m_tRequest, cases);
        const answers::Json answer = answers::Json::parse(cases.back().m_sBody);
        if (question.m_pAsCommand(answer) != tests::askCommand(question, command, data)) {
            throw std::runtime_error(question.m_tRequest.m_sTarget + ": the command gives another answer");
        }
    }
}

std::vector<Case> makeCases(const server::Api& api, const std::string& command, const std::string& data)
{
    std::vector<Case> cases;
    addMixedCases(api, cases);
    addCommandCases(api, command, data, cases);
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

double mebibytes(std::size_t pages)
{
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

struct Tally
{
    std::atomic<std::size_t> m_nAnswers = 0;
    std::atomic<std::size_t> m_nWrong = 0;
    std::atomic<std::size_t> m_nLate = 0;
    std::atomic<std::int64_t> m_nLongest = 0;  // milliseconds
    std::atomic<bool> m_bEnough = false;
};

using Clock = std::chrono::steady_clock;

void countTime(Clock::duration taken, Tally& tally)
{
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(taken);
    tally.m_nLate += time > kLatest ? 1 : 0;
    std::int64_t before = tally.m_nLongest;
    while (time.count() > before && !tally.m_nLongest.compare_exchange_weak(before, time.count())) {}
}

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
                const auto begin = Clock::now();
                client.send(each.m_sBytes);
                isRight(each, client.receive()) ? ++tally.m_nAnswers : ++tally.m_nWrong;
                countTime(Clock::now() - begin, tally);
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

/// What the server had of memory while it was under load.
struct Memory
{
    std::size_t m_nWarm = 0;
    std::size_t m_nMost = 0;
    std::size_t m_nEnd = 0;

    double growth() const
    {
        return m_nWarm == 0 ? 100 : 100.0 * (static_cast<double>(m_nEnd) / static_cast<double>(m_nWarm) - 1);
    }
};

Memory watchMemory(const std::string& process, std::chrono::seconds time)
{
    Memory memory;
    const auto begin = Clock::now();
    while (Clock::now() - begin < time) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        memory.m_nEnd = residentPages(process);
        memory.m_nMost = std::max(memory.m_nMost, memory.m_nEnd);
        if (Clock::now() - begin < time / 3) {
            memory.m_nWarm = memory.m_nEnd;
        }
    }
    return memory;
}

std::vector<std::thread> startLoad(std::uint16_t port, const std::vector<Case>& cases, bool isHostile, Tally& tally)
{
    std::vector<std::thread> threads;
    for (unsigned index = 0; index < kConnections; ++index) {
        if (isHostile && index < kAttackers) {
            threads.emplace_back(&tests::attack, port, std::size_t{index}, std::cref(tally.m_bEnough));
        } else {
            threads.emplace_back(load, port, std::cref(cases), std::size_t{index} * 7, std::ref(tally));
        }
    }
    return threads;
}

/// Whether all was well; says how it was.
bool judge(const Tally& tally, const Memory& memory, double mostGrowth, double mostMebibytes)
{
    std::printf("%zu right answers, %zu wrong; the latest after %lld ms, %zu later than a second\n",
                tally.m_nAnswers.load(), tally.m_nWrong.load(), static_cast<long long>(tally.m_nLongest.load()),
                tally.m_nLate.load());
    std::printf("resident memory %.1f MiB at the end, %.1f MiB at most, %+.2f %% since it was warm\n",
                mebibytes(memory.m_nEnd), mebibytes(memory.m_nMost), memory.growth());
    const bool isRight = tally.m_nWrong == 0 && tally.m_nAnswers != 0;
    const bool isHostile = mostMebibytes != 0;
    return isRight && (isHostile ? tally.m_nLate == 0 && mebibytes(memory.m_nMost) <= mostMebibytes
                                 : memory.growth() <= mostGrowth);
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 7 && count != 8) {
        std::fprintf(stderr, "server_soak PORT PROCESS DATA COMMAND SECONDS PERCENT [MEBIBYTES]\n");
        return 2;
    }
    std::setlocale(LC_CTYPE, "C.UTF-8");
    answers::DataOptions options;
    options.m_sData = *vel::stringFromUtf8(arguments[3]);
    const server::Catalogues catalogues(options);
    server::Metrics metrics(server::Api::routes());
    const std::vector<Case> cases = makeCases(server::Api(catalogues, metrics), arguments[4], arguments[3]);
    const double mostMebibytes = count == 8 ? std::stod(arguments[7]) : 0;
    Tally tally;
    std::vector<std::thread> threads =
        startLoad(static_cast<std::uint16_t>(std::stoul(arguments[1])), cases, count == 8, tally);
    const Memory memory = watchMemory(arguments[2], std::chrono::seconds(std::stoul(arguments[5])));
    tally.m_bEnough = true;
    for (std::thread& each : threads) {
        each.join();
    }
    return judge(tally, memory, std::stod(arguments[6]), mostMebibytes) ? 0 : 1;
}
