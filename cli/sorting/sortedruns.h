#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "sorting/runfile.h"

namespace cli {

/// Runs of sorted lines in temporary files, merged in passes: so many runs become one of the next level, so many of
/// those one of the level above it. A line is written once a level, and the levels grow with the logarithm of what
/// there is. Of lines with equal keys, those of the run that was added first come first. Throws DataError.
class SortedRuns
{
public:
    /// `memory`: what merging may take, in bytes. Two runs are merged however long their lines are.
    explicit SortedRuns(std::size_t memory);

    bool isEmpty() const noexcept { return m_tLevels.empty(); }
    /// For the files of runs that are added.
    std::size_t bufferBytes() const noexcept { return m_nBufferBytes; }
    void add(std::unique_ptr<RunFile> run);
    /// Hands over the lines of all runs in order. Once, at the end.
    void handOver(const std::function<void(const KeyedLine&)>& take);

private:
    using Level = std::vector<std::unique_ptr<RunFile>>;

    bool isFull(const Level& runs) const noexcept;
    std::unique_ptr<RunFile> merged(const Level& runs) const;
    void mergeInto(std::size_t level);

    std::size_t m_nMemory;
    std::size_t m_nBufferBytes;
    std::vector<Level> m_tLevels;  // those of a higher level were added before those below
};

}  // namespace cli
