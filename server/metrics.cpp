#include "metrics.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace server {

namespace {

constexpr const char* kStageNames[] = {"mapping",    "overrides", "locale",  "parsing", "rendering",
                                       "currencies", "sorting",   "charset", "encoding"};

std::string decimal(double number)
{
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    return text.ends_with('.') ? text + "0" : text;
}

}  // namespace

Metrics::Metrics(std::vector<const char*> routes, std::function<std::uint64_t()> dropped)
    : m_tDropped(std::move(dropped)), m_vNames(std::move(routes)), m_vRoutes(m_vNames.size())
{}

void Metrics::count(const Served& served) noexcept
{
    const auto isRoute = [&](const char* name) { return std::strcmp(name, served.m_pRoute) == 0; };
    const auto name = std::find_if(m_vNames.begin(), m_vNames.end(), isRoute);
    Route& route = m_vRoutes[name == m_vNames.end() ? 0 : static_cast<std::size_t>(name - m_vNames.begin())];
    const auto status = std::find(kStatuses.begin(), kStatuses.end(), served.m_nStatus);
    route.m_aStatuses[static_cast<std::size_t>(status - kStatuses.begin())].fetch_add(1, std::memory_order_relaxed);
    const auto bound = std::lower_bound(kBounds.begin(), kBounds.end(), served.m_nSeconds);
    route.m_aBuckets[static_cast<std::size_t>(bound - kBounds.begin())].fetch_add(1, std::memory_order_relaxed);
    route.m_nNanoseconds.fetch_add(static_cast<std::uint64_t>(served.m_nSeconds * 1e9), std::memory_order_relaxed);
}

std::string Metrics::text() const
{
    std::string text;
    appendRequests(text);
    appendLatencies(text);
    text +=
        "# HELP webi18n_log_dropped_total Records that the log left out, because nobody read them in time.\n"
        "# TYPE webi18n_log_dropped_total counter\nwebi18n_log_dropped_total " +
        std::to_string(m_tDropped ? m_tDropped() : 0) + "\n";
    text += "# HELP webi18n_stage_total Steps of the library that requests took.\n# TYPE webi18n_stage_total counter\n";
    for (std::size_t stage = 0; stage < m_aStages.size(); ++stage) {
        text += "webi18n_stage_total{stage=\"" + std::string(kStageNames[stage]) + "\"} " +
                std::to_string(m_aStages[stage].load()) + "\n";
    }
    return text;
}

void Metrics::appendRequests(std::string& text) const
{
    text += "# HELP webi18n_requests_total Answers by route and status.\n# TYPE webi18n_requests_total counter\n";
    for (std::size_t route = 0; route < m_vRoutes.size(); ++route) {
        for (std::size_t status = 0; status <= kStatuses.size(); ++status) {
            const std::uint64_t count = m_vRoutes[route].m_aStatuses[status].load();
            if (count != 0) {
                text += "webi18n_requests_total{route=\"" + std::string(m_vNames[route]) + "\",status=\"" +
                        (status < kStatuses.size() ? std::to_string(kStatuses[status]) : "other") + "\"} " +
                        std::to_string(count) + "\n";
            }
        }
    }
}

void Metrics::appendLatencies(std::string& text) const
{
    static constexpr const char* kName = "webi18n_request_seconds";
    text += std::string("# HELP ") + kName + " Time from request to answer.\n# TYPE " + kName + " histogram\n";
    for (std::size_t route = 0; route < m_vRoutes.size(); ++route) {
        const std::string label = "{route=\"" + std::string(m_vNames[route]) + "\"";
        std::uint64_t sum = 0;
        for (std::size_t bound = 0; bound <= kBounds.size(); ++bound) {
            sum += m_vRoutes[route].m_aBuckets[bound].load();
            text += std::string(kName) + "_bucket" + label + ",le=\"" +
                    (bound < kBounds.size() ? decimal(kBounds[bound]) : "+Inf") + "\"} " + std::to_string(sum) + "\n";
        }
        const double seconds = static_cast<double>(m_vRoutes[route].m_nNanoseconds.load()) / 1e9;
        text += std::string(kName) + "_sum" + label + "} " + std::to_string(seconds) + "\n";
        text += std::string(kName) + "_count" + label + "} " + std::to_string(sum) + "\n";
    }
}

}  // namespace server
