#include <algorithm>
#include <memory>

#include "rows.h"
#include "serverload.h"

// The sample server in a process of its own, by the clock: what counts is how many requests it answers in a second.

namespace bench {

namespace {

constexpr std::size_t kRequests = 4000;  // a batch

/// A running server, one load of which asks for a decision and the other for nothing.
struct Rivals
{
    explicit Rivals(const std::string& data) : m_tServer(data) {}

    ServerProcess m_tServer;
    ServerLoad m_tResolve{m_tServer.port(), "/api/resolve"};
    ServerLoad m_tEmpty{m_tServer.port(), "/healthz"};
};

Contest resolveContest(const std::string& folder)
{
    const auto rivals = std::make_shared<Rivals>(folder);
    const auto batchOf = [rivals](ServerLoad& load) {
        return [rivals, &load](std::size_t requests) {
            return load.nanosecondsPerRequest(requests) * static_cast<double>(requests);
        };
    };
    return {batchOf(rivals->m_tResolve), batchOf(rivals->m_tEmpty), kRequests};
}

Contest startContest(const std::string& folder)
{
    return {[folder](std::size_t) {
                return std::max(0.0, nanosecondsToFirstAnswer(folder) - nanosecondsToFirstAnswer("none"));
            },
            {},
            1};
}

}  // namespace

void addServerRows(std::vector<Situation>& rows, const Data& data)
{
    rows.push_back({"the server: /api/resolve, 16 connections",
                    "its empty handler",
                    {Target::kRatioAtLeast, 0.75},
                    [folder = data.m_sFolder] { return resolveContest(folder); }});
    rows.push_back({"the server: start to first answer with the pack, above that without data",
                    "",
                    {Target::kOursBelow, 3e8},
                    [folder = data.m_sFolder] { return startContest(folder); }});
}

}  // namespace bench
