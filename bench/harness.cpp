#include "harness.h"

#include <algorithm>
#include <cmath>
#include <regex>

#include "report.h"

namespace bench {

namespace {

struct Effort
{
    std::size_t m_nBatches;
    double m_nNanosecondsPerBatch;
};

constexpr Effort kThorough = {31, 4e6};
constexpr Effort kQuick = {15, 4e5};

double median(std::vector<double>& values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// How often the work fits into a batch; the first runs also warm it up.
std::size_t repetitionsFor(const Batch& batch, double nanoseconds)
{
    std::size_t repetitions = 1;
    for (;;) {
        const double begin = processorTime();
        batch(repetitions);
        const double took = processorTime() - begin;
        if (took >= nanoseconds / 4) {
            const double fitting = std::floor(static_cast<double>(repetitions) * nanoseconds / took);
            return std::max<std::size_t>(1, static_cast<std::size_t>(fitting));
        }
        repetitions *= 2;
    }
}

Result measure(const Situation& situation, const Effort& effort)
{
    const Contest contest = situation.m_tPrepare();
    const auto repetitionsOf = [&](const Batch& batch) {
        if (!batch) {
            return std::size_t{0};
        }
        return contest.m_nRepetitions > 0 ? contest.m_nRepetitions
                                          : repetitionsFor(batch, effort.m_nNanosecondsPerBatch);
    };
    const std::size_t oursTimes = repetitionsOf(contest.m_tOurs);
    const std::size_t peerTimes = repetitionsOf(contest.m_tPeer);
    std::vector<double> ours;
    std::vector<double> peer;
    const std::size_t batches =
        contest.m_nMostBatches > 0 ? std::min(contest.m_nMostBatches, effort.m_nBatches) : effort.m_nBatches;
    for (std::size_t i = 0; i < batches; ++i) {
        ours.push_back(contest.m_tOurs(oursTimes) / static_cast<double>(oursTimes));
        if (contest.m_tPeer) {
            peer.push_back(contest.m_tPeer(peerTimes) / static_cast<double>(peerTimes));
        }
    }
    return {&situation, median(ours), peer.empty() ? 0 : median(peer), batches};
}

}  // namespace

bool Result::isReached() const noexcept
{
    const Target& target = m_pSituation->m_tTarget;
    switch (target.m_eKind) {
    case Target::kRatioAtLeast:
        return ratio() >= target.m_nValue;
    case Target::kOursBelow:
        return m_nOurs < target.m_nValue;
    default:
        return true;
    }
}

std::size_t run(const std::vector<Situation>& situations, const Options& options)
{
    const std::regex pattern(options.m_sRowPattern);
    const Effort effort = options.m_bQuick ? kQuick : kThorough;
    std::vector<const Situation*> chosen;
    for (const Situation& each : situations) {
        if (std::regex_search(each.m_sName, pattern)) {
            chosen.push_back(&each);
        }
    }
    Table table(chosen, effort.m_nBatches);
    std::vector<Result> results;
    for (const Situation* each : chosen) {
        results.push_back(measure(*each, effort));
        table.print(results.back());
    }
    if (!options.m_sJsonFile.empty()) {
        writeJson(options.m_sJsonFile, results);
    }
    return results.size();
}

}  // namespace bench
