#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "sorting/keyedlines.h"
#include "sorting/linesource.h"

namespace cli {

/// Sorted parts, cut into slices of about the same size so that they can be merged at once: all lines of a slice come
/// before those of the next. Where keys are equal, lines of an earlier part come first.
class LineSlices
{
public:
    /// The parts must outlive it. `memory`: bytes of which a slice's text takes no more than a small share, unless its
    /// lines are long.
    LineSlices(const std::vector<std::unique_ptr<KeyedLines>>& parts, std::size_t memory);

    std::size_t size() const noexcept { return m_tCuts.size() - 1; }
    /// The lines of a slice, a source for each part. May be called by several threads at once.
    std::vector<std::unique_ptr<LineSource>> sources(std::size_t slice) const;

private:
    /// A line by its part and its place in the order there.
    struct Place
    {
        std::size_t m_nPart;
        std::size_t m_nIndex;
    };
    /// A line, and what comes before it since the sample before: its size as a share of a slice's.
    struct Sample
    {
        Place m_tPlace;
        double m_nShare;
    };
    /// For each part, how many of its lines come before the cut.
    using Cut = std::vector<std::size_t>;

    std::vector<Sample> samples(std::size_t sliceBytes) const;
    bool isBefore(const Place& a, const Place& b) const noexcept;
    std::size_t countBefore(const Place& place, std::size_t part) const noexcept;

    const std::vector<std::unique_ptr<KeyedLines>>& m_tParts;
    std::vector<Cut> m_tCuts;  // from the begin of the first slice to the end of the last
};

}  // namespace cli
