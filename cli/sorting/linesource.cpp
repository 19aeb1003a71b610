#include "sorting/linesource.h"

#include <algorithm>

namespace cli {

bool MemorySource::next()
{
    if (m_nNext == m_tLines.size()) {
        return false;
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
