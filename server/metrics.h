#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "http.h"

namespace server {

/// The library's steps that requests take.
enum Stage
{
    kStageMapping,
    kStageOverrides,
    kStageLocale,
    kStageParsing,
    kStageRendering,
    kStageCurrencies,
    kStageSorting,
    kStageCharset,
    kStageEncoding,
    kStageEnd_
};

/// Counts for a scraper, kept without locks. Any thread.
class Metrics
{
public:
    /// `routes`: every name that served requests may have; it must outlive this object. `dropped` tells how many
    /// records the log had to leave out.
    explicit Metrics(std::vector<const char*> routes, std::function<std::uint64_t()> dropped = {});

    void count(const Served& served) noexcept;
    void count(Stage stage) noexcept { m_aStages[stage].fetch_add(1, std::memory_order_relaxed); }
    /// In Prometheus' text format.
    std::string text() const;

private:
    static constexpr std::array<unsigned, 14> kStatuses = {200, 304, 400, 403, 404, 405, 408,
                                                           413, 415, 421, 431, 500, 501, 503};
    static constexpr std::array<double, 10> kBounds = {0.0001, 0.00025, 0.0005, 0.001, 0.0025,
                                                       0.005,  0.01,    0.05,   0.25,  1};
    using Counter = std::atomic<std::uint64_t>;

    struct Route
    {
        std::array<Counter, kStatuses.size() + 1> m_aStatuses{};  // the last: any other
        std::array<Counter, kBounds.size() + 1> m_aBuckets{};
        Counter m_nNanoseconds = 0;
    };

    void appendRequests(std::string& text) const;
    void appendLatencies(std::string& text) const;

    std::function<std::uint64_t()> m_tDropped;
    std::vector<const char*> m_vNames;
    std::vector<Route> m_vRoutes;
    std::array<Counter, kStageEnd_> m_aStages{};
};

}  // namespace server
