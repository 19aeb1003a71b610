#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "sorting/keyedlines.h"

namespace cli {

/// Sorted lines, one after the other.
class LineSource
{
public:
    LineSource() = default;
    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;
    virtual ~LineSource() = default;

    /// Goes to the next line, the first one at first; false behind the last.
    virtual bool next() = 0;
    /// Valid until the next one.
    const KeyedLine& line() const noexcept { return m_tLine; }

protected:
    KeyedLine m_tLine{};
};

/// Lines in memory, from one place in their order to before another; they must outlive it.
class MemorySource final : public LineSource
{
public:
    MemorySource(const KeyedLines& lines, std::size_t begin, std::size_t end) noexcept
        : m_tLines(lines), m_nNext(begin), m_nEnd(end)
    {}
    bool next() override;

private:
    const KeyedLines& m_tLines;
    std::size_t m_nNext;
    std::size_t m_nEnd;
};

/// Hands the lines of all sources to `take` in order; where keys are equal, those of an earlier source first.
void mergeLines(const std::vector<std::unique_ptr<LineSource>>& sources,
                const std::function<void(const KeyedLine&)>& take);

}  // namespace cli
