#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "progress.h"
#include "sorting/keyedlines.h"
#include "sorting/runfile.h"
#include "sorting/textround.h"

namespace cli {

/// Sorts the lines of a stream of any size: in memory while it fits, else in runs that are written to temporary files
/// and merged. Equal lines keep their order. An environment's guard must be held.
class LineSorter
{
public:
    /// `memory`: about how many bytes may be used. Throws UsageError for a sort that does not exist.
    LineSorter(const vel::String& sort, vel::i18n::CollationStrength strength, std::size_t memory, char separator);

    /// Adds a line to text as it is to be written. Called by several threads at once.
    using Append = std::function<void(std::string& text, std::string_view line)>;
    /// Takes the next lines in order, as they are to be written.
    using Take = std::function<void(std::string_view text)>;

    /// Hands over all lines in order. Throws UsageError for a line that is no UTF-8 and DataError for what cannot be
    /// read.
    void sort(InputFiles& files, const Append& append, const Take& take);

private:
    void sortRound(const TextRound& round);
    void addRun();
    void handOverRound(const Append& append, const Take& take) const;
    void handOverRuns(const Append& append, const Take& take) const;
    std::vector<std::unique_ptr<LineSource>> runSources() const;

    std::size_t m_nMemory;
    char m_cSeparator;
    std::vector<std::unique_ptr<KeyMaker>> m_tMakers;   // one a thread
    std::vector<std::unique_ptr<KeyedLines>> m_tParts;  // of the round, one a thread
    std::vector<std::unique_ptr<RunFile>> m_tRuns;
    std::size_t m_nLines = 0;
    Progress m_tProgress;
};

}  // namespace cli
