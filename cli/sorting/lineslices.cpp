#include "sorting/lineslices.h"

#include <algorithm>
#include <tuple>

namespace cli {

namespace {

/// Of a slice: enough for a thread to be worth its start.
constexpr std::size_t kLinesPerSlice = 8192;
/// With more of them in a slice, slices differ less in size.
constexpr std::size_t kSamplesPerSlice = 16;
/// A slice's text is that share of the memory: several are written at once, and JSON makes six bytes of some.
constexpr std::size_t kSlicesInMemory = 512;

}  // namespace

LineSlices::LineSlices(const std::vector<std::unique_ptr<KeyedLines>>& parts, std::size_t memory)
    : m_tParts(parts), m_tCuts{Cut(parts.size(), 0)}
{
    double share = 0;
    for (const Sample& sample : samples(memory / kSlicesInMemory)) {
        share += sample.m_nShare;
        if (share >= 1) {
            Cut& cut = m_tCuts.emplace_back();
            for (std::size_t part = 0; part < parts.size(); ++part) {
                cut.push_back(countBefore(sample.m_tPlace, part));
            }
            share = 0;
        }
    }
    Cut& end = m_tCuts.emplace_back();
    for (const std::unique_ptr<KeyedLines>& part : parts) {
        end.push_back(part->size());
    }
}

/// In order.
std::vector<LineSlices::Sample> LineSlices::samples(std::size_t sliceBytes) const
{
    const double line = 1.0 / kLinesPerSlice;
    const double byte = 1.0 / static_cast<double>(sliceBytes);
    std::vector<Sample> samples;
    for (std::size_t part = 0; part < m_tParts.size(); ++part) {
        const KeyedLines& lines = *m_tParts[part];
        // Lines lie anywhere in memory: none but the samples are looked at, where no slice could have too much text.
        const bool isShort = lines.longestText() <= sliceBytes / kLinesPerSlice;
        const std::size_t step = isShort ? kLinesPerSlice / kSamplesPerSlice : 1;
        double share = 0;
        for (std::size_t i = 0; i < lines.size(); i += step) {
            if (share >= 1.0 / kSamplesPerSlice) {
                samples.push_back({{part, i}, share});
                share = 0;
            }
            share += line * static_cast<double>(step);
            share += isShort ? 0 : byte * static_cast<double>(lines[i].m_sText.size());
        }
    }
    std::sort(samples.begin(), samples.end(),
              [this](const Sample& a, const Sample& b) { return isBefore(a.m_tPlace, b.m_tPlace); });
    return samples;
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
