#include "sorting/sortedruns.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cli {

namespace {

/// Runs that are merged at once, each with an open file and a buffer.
constexpr std::size_t kMostRuns = 64;
constexpr std::size_t kLeastBufferBytes = std::size_t{4} << 10;
constexpr std::size_t kMostBufferBytes = std::size_t{256} << 10;

void mergeRuns(const std::vector<std::unique_ptr<RunFile>>& runs, const std::function<void(const KeyedLine&)>& take)
{
    std::vector<std::unique_ptr<LineSource>> sources;
    sources.reserve(runs.size());
    for (const std::unique_ptr<RunFile>& run : runs) {
        sources.push_back(run->read());
    }
    mergeLines(sources, take);
}

}  // namespace

SortedRuns::SortedRuns(std::size_t memory)
    : m_nMemory(memory), m_nBufferBytes(std::clamp(memory / (2 * kMostRuns), kLeastBufferBytes, kMostBufferBytes))
{}

void SortedRuns::add(std::unique_ptr<RunFile> run)
{
    if (m_tLevels.empty()) {
        m_tLevels.emplace_back();
    }
    m_tLevels.front().push_back(std::move(run));
    for (std::size_t level = 0; isFull(m_tLevels[level]); ++level) {
        mergeInto(level + 1);
    }
}

/// Of two or more, when there are as many as are merged at once, or their longest lines need the memory.
bool SortedRuns::isFull(const Level& runs) const noexcept
{
    std::size_t needed = 0;
    for (const std::unique_ptr<RunFile>& run : runs) {
        needed += std::max(m_nBufferBytes, 2 * run->longestLine());
    }
    return runs.size() > 1 && (runs.size() >= kMostRuns || needed > std::max(m_nMemory, kMostRuns * m_nBufferBytes));
}

std::unique_ptr<RunFile> SortedRuns::merged(const Level& runs) const
{
    auto result = std::make_unique<RunFile>(m_nBufferBytes);
    mergeRuns(runs, [&](const KeyedLine& line) { result->write(line); });
    return result;
}

/// All runs of the level below become one of this level.
void SortedRuns::mergeInto(std::size_t level)
{
    if (m_tLevels.size() == level) {
        m_tLevels.emplace_back();
    }
    m_tLevels[level].push_back(merged(m_tLevels[level - 1]));
    m_tLevels[level - 1].clear();
}

void SortedRuns::handOver(const std::function<void(const KeyedLine&)>& take)
{
    Level all;
    for (std::size_t level = 0; level < m_tLevels.size(); ++level) {
        Level& runs = m_tLevels[level];
        // The runs of higher levels come before those that are there already.
        runs.insert(runs.end(), std::make_move_iterator(all.begin()), std::make_move_iterator(all.end()));
        all = std::move(runs);
        if (level + 1 < m_tLevels.size() && isFull(all)) {
            std::unique_ptr<RunFile> one = merged(all);
            all.clear();
            all.push_back(std::move(one));
        }
    }
    mergeRuns(all, take);
}

}  // namespace cli
