#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "markorder.h"
#include "sortdata.h"

namespace vel::nls {

/// Reads characters with a long run of marks behind them as ICU reads them, in n log n where ICU's time grows with the
/// square: marks in canonical order where the sort normalizes, and each character together with those behind it that
/// belong to it, though others stand between.
///
/// What belongs together is found as Unicode's collation algorithm states it. A character takes the longest sequence
/// that stands behind it. Then of the marks that follow it takes each with which the sequence goes on and that is not
/// blocked: the mark passed over last has a lower class. Those passed over are read afterwards in the same way. ICU
/// looks through all that follow for each; here an index has the marks that are not blocked, by code point and place.
///
///     text             0F74 0F71 0F72 0F71      (classes 132, 129, 130, 129)
///     in order         0F71 0F71 0F72 0F74
///     what is read     0F71 0F72, then 0F71 0F74
class LongRuns
{
public:
    explicit LongRuns(const SortData& data) : m_rData(data) {}

    /// Adds the next character, which begins at that place of the text. Throws std::bad_alloc, as do all others.
    void add(char32_t c, std::size_t place);
    /// After the last character.
    void finish() { closeSegment(); }

    /// What is read next: an entry, or a primary weight whose element has common weights else.
    struct Step
    {
        SortEntry m_nEntry = 0;
        std::uint32_t m_nPrimary = 0;
    };
    /// False at the end, and where only ICU knows; place() says where that is.
    bool next(Step& step);
    /// Whether what comes next is no mark and nothing before it matters to it.
    bool isAtStarter() const noexcept { return m_nFront == m_tItems.size() || m_tItems[m_nFront].m_nLead == 0; }
    /// The place in the text of what comes next; only at a starter. `atEnd` when all was read.
    std::size_t place(std::size_t atEnd) const noexcept
    {
        return m_nFront == m_tItems.size() ? atEnd : m_tItems[m_nFront].m_nPlace;
    }

    /// Characters and places of the index that were looked at: what the time depends on.
    std::size_t work() const noexcept { return m_nWork; }

private:
    using Index = std::uint32_t;
    static constexpr Index kNone = static_cast<Index>(-1);

    /// A character, and its neighbours among those that are not read yet.
    struct Item
    {
        char32_t m_cCode;
        std::uint8_t m_nLead;   ///< the combining class with which it begins
        std::uint8_t m_nTrail;  ///< and ends
        std::size_t m_nPlace;
        Index m_nBefore;
        Index m_nNext;
    };
    /// A sequence that may go on.
    struct Sequence
    {
        SortEntry m_nEntry;
        const Opening* m_pOpening;  ///< null: it does not go on
    };

    void closeSegment();
    bool isSegmentOrdered() const noexcept;
    void addOrdered();
    void append(char32_t c, std::size_t place, int lead, int trail);

    Sequence beginningWith(char32_t c) const noexcept;
    bool readAlone(const Item& item, SortEntry e, Step& step) const;
    SortEntry readSequence(Index first, const Sequence& alone);
    Sequence longest(Index first, Sequence sequence, Index& last);
    Sequence extended(Sequence sequence, const SortEntry& member) const noexcept;
    Index findUnblocked(const Opening& opening, Index behind);
    void remove(Index item);
    void indexRun(Index first);
    bool isUnblocked(Index item) const noexcept;
    void updateIndex(Index item);
    std::uint64_t keyOf(Index item) const noexcept;
    Index nextOf(Index item) const noexcept { return m_tItems[item].m_nNext; }
    bool isMarkItem(Index item) const noexcept { return item != m_tItems.size() && m_tItems[item].m_nLead != 0; }

    const SortData& m_rData;
    std::vector<Item> m_tItems;
    std::vector<Item> m_tSegment;  ///< characters that may have to change places
    MarkOrder m_tOrder;
    Index m_nFront = 0;
    /// The marks of one run, up to `m_nRunEnd`, that are not blocked: code point, then place.
    std::set<std::uint64_t> m_tIndex;
    Index m_nRunEnd = 0;
    std::size_t m_nWork = 0;
};

}  // namespace vel::nls
