#include "sorting/linesource.h"

#include <algorithm>

namespace cli {

namespace {

/// Lines in order lie anywhere in memory: those that come soon are fetched while others are written.
constexpr std::size_t kAhead = 16;

}  // namespace

bool MemorySource::next()
{
    if (m_nNext == m_nEnd) {
        return false;
    }
    if (m_nNext + 2 * kAhead < m_nEnd) {
        const KeyedLine& soon = m_tLines[m_nNext + kAhead];
        __builtin_prefetch(&m_tLines[m_nNext + 2 * kAhead]);
        __builtin_prefetch(soon.m_sText.data());
        __builtin_prefetch(soon.m_sKey.data());
    }
    m_tLine = m_tLines[m_nNext++];
    return true;
}

void mergeLines(const std::vector<std::unique_ptr<LineSource>>& sources,
                const std::function<void(const KeyedLine&)>& take)
{
    const auto isLater = [&](std::size_t a, std::size_t b) {
        const int order = compareLines(sources[a]->line(), sources[b]->line());
        return order != 0 ? order > 0 : a > b;
    };
    std::vector<std::size_t> heap;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (sources[i]->next()) {
            heap.push_back(i);
        }
    }
    std::make_heap(heap.begin(), heap.end(), isLater);
    while (!heap.empty()) {
        std::pop_heap(heap.begin(), heap.end(), isLater);
        LineSource& first = *sources[heap.back()];
        take(first.line());
        if (first.next()) {
            std::push_heap(heap.begin(), heap.end(), isLater);
        } else {
            heap.pop_back();
        }
    }
}

}  // namespace cli
