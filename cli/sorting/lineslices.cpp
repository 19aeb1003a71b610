#include "sorting/lineslices.h"

#include <algorithm>
#include <tuple>

namespace cli {

namespace {

/// One line of so many is looked at to find the cuts.
constexpr std::size_t kLinesPerSample = 512;
/// With more of them in a slice, slices differ less in size.
constexpr std::size_t kSamplesPerSlice = 16;

}  // namespace

LineSlices::LineSlices(const std::vector<std::unique_ptr<KeyedLines>>& parts)
    : m_tParts(parts), m_tCuts{Cut(parts.size(), 0)}
{
    const std::vector<Place> places = samples();
    for (std::size_t i = kSamplesPerSlice; i < places.size(); i += kSamplesPerSlice) {
        Cut& cut = m_tCuts.emplace_back();
        for (std::size_t part = 0; part < parts.size(); ++part) {
            cut.push_back(countBefore(places[i], part));
        }
    }
    Cut& end = m_tCuts.emplace_back();
    for (const std::unique_ptr<KeyedLines>& part : parts) {
        end.push_back(part->size());
    }
}

/// In order.
std::vector<LineSlices::Place> LineSlices::samples() const
{
    std::vector<Place> places;
    for (std::size_t part = 0; part < m_tParts.size(); ++part) {
        for (std::size_t i = kLinesPerSample; i < m_tParts[part]->size(); i += kLinesPerSample) {
            places.push_back({part, i});
        }
    }
    std::sort(places.begin(), places.end(), [this](const Place& a, const Place& b) { return isBefore(a, b); });
    return places;
}

bool LineSlices::isBefore(const Place& a, const Place& b) const noexcept
{
    const int order = compareLines((*m_tParts[a.m_nPart])[a.m_nIndex], (*m_tParts[b.m_nPart])[b.m_nIndex]);
    return order != 0 ? order < 0 : std::tie(a.m_nPart, a.m_nIndex) < std::tie(b.m_nPart, b.m_nIndex);
}

std::size_t LineSlices::countBefore(const Place& place, std::size_t part) const noexcept
{
    std::size_t least = 0;
    std::size_t most = m_tParts[part]->size();
    while (least < most) {
        const std::size_t middle = least + (most - least) / 2;
        if (isBefore({part, middle}, place)) {
            least = middle + 1;
        } else {
            most = middle;
        }
    }
    return least;
}

std::vector<std::unique_ptr<LineSource>> LineSlices::sources(std::size_t slice) const
{
    std::vector<std::unique_ptr<LineSource>> sources;
    for (std::size_t part = 0; part < m_tParts.size(); ++part) {
        sources.push_back(
            std::make_unique<MemorySource>(*m_tParts[part], m_tCuts[slice][part], m_tCuts[slice + 1][part]));
    }
    return sources;
}

}  // namespace cli
