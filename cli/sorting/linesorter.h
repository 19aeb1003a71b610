#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "progress.h"
#include "sorting/keyedlines.h"
#include "sorting/sortedruns.h"
#include "sorting/textround.h"

namespace cli {

/// Sorts the lines of a stream of any size: in memory while it fits, else in runs that are written to temporary files
/// and merged. Equal lines keep their order. An environment's guard must be held.
class LineSorter
{
public:
    /// `memory`: how many bytes the process may use. It needs some 16 MB of them for itself, which come on top where
    /// less than 32 MB are given, and more than what is given where it cannot hold a line that is longer than a
    /// hundredth of it. Throws UsageError for a sort that does not exist.
    LineSorter(const vel::String& sort, vel::i18n::CollationStrength strength, std::size_t memory, char separator);

    /// Adds a line to text as it is to be written. Called by several threads at once.
    using Append = std::function<void(std::string& text, std::string_view line)>;
    /// Takes the next lines in order, as they are to be written.
    using Take = std::function<void(std::string_view text)>;

    /// Hands over all lines in order. Throws UsageError for a line that is no UTF-8 and DataError for what cannot be
    /// read.
    void sort(InputFiles& files, const Append& append, const Take& take);

private:
    void sortRound(TextRound& round);
    void keepWhatFitted(TextRound& round);
    void learnCost();
    void addRun();
    void handOverRound(const Append& append, const Take& take) const;
    void handOverRuns(const Append& append, const Take& take);

    std::size_t m_nMemory;
    TextCost m_tCost;
    char m_cSeparator;
    std::vector<std::unique_ptr<KeyMaker>> m_tMakers;   // one a thread
    std::vector<std::unique_ptr<KeyedLines>> m_tParts;  // of the round, one a thread
    SortedRuns m_tRuns;
    std::size_t m_nLines = 0;
    Progress m_tProgress;
};

}  // namespace cli
