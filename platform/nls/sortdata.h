#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "asciicodes.h"
#include "elementpool.h"
#include "farideographs.h"
#include "icuhandles.h"
#include "identicallevel.h"
#include "levelcodes.h"
#include "numberweights.h"
#include "primarycodes.h"
#include "sortelements.h"
#include "sortentry.h"
#include "sortpages.h"
#include "unknownweights.h"

namespace vel::nls {

/// The bytes that end a run of common weights, see docs/sort-keys.md.
constexpr unsigned char kSecondaryTop = 0x22;
constexpr unsigned char kTertiaryTop = 0x42;

/// An element with its bytes.
struct CodedElement
{
    PrimaryCode m_tPrimary;  ///< empty: ignored on this level
    LevelCode m_tSecondary;
    LevelCode m_tTertiary;
    bool m_bSecondary = false;  ///< counts on this level, as common where it has no code
    bool m_bTertiary = false;
    bool m_bVariable = false;
    bool m_bMerge = false;  ///< U+FFFE
    std::uint8_t m_nQuaternary = 0;
};

/// A run of elements, for what an entry cannot hold.
struct ElementList
{
    std::uint32_t m_nFirst;
    std::uint32_t m_nCount;
};

/// What a character may be the start of, or what it may stand behind: the entries of both together, by the code point
/// of the other one. Where still more may belong to them the entry is the next opening.
struct Opening
{
    struct Slot
    {
        char32_t m_cOther = kNone;
        SortEntry m_nEntry = 0;
    };
    static constexpr char32_t kNone = 0xFFFFFFFF;

    SortEntry m_nAlone = 0;  ///< slow: what leads here is no sequence by itself
    bool m_bMarks = false;   ///< marks are among those that may follow
    /// Open addressing; a power of two. Empty when there are none.
    std::vector<Slot> m_tSlots;

    const SortEntry* find(char32_t other) const noexcept
    {
        if (m_tSlots.empty()) {
            return nullptr;
        }
        const std::size_t mask = m_tSlots.size() - 1;
        for (std::size_t i = other & mask;; i = (i + 1) & mask) {
            if (m_tSlots[i].m_cOther == other) {
                return &m_tSlots[i].m_nEntry;
            }
            if (m_tSlots[i].m_cOther == kNone) {
                return nullptr;
            }
        }
    }
};

/// All that is known of one sort. Immutable once built.
struct SortData
{
    explicit SortData(const UCollator* collator);

    /// The opening of a character that has `kCare`; one with nothing in it when only the order of marks matters.
    const Opening& careOf(char32_t c) const noexcept;
    CodedElement encode(const Element& element) const;
    /// The primary weight of a character that the table does not hold and that needs no look beside it: its one element
    /// has common weights else. 0 for others. Throws std::bad_alloc.
    std::uint32_t primaryBeyond(char32_t c, SortEntry e) const
    {
        // What a table holds of its own is no plain slow entry, and neither is what the strings of a sort begin with.
        if (e != entry::special(kSlowKind)) {
            return 0;
        }
        return m_tUnknown.isUnknown(c) ? UnknownWeights::primaryOf(c) : m_pFar->primaryOf(c);
    }
    std::size_t memory() const noexcept;

    ElementRules m_tRules;
    CollatorPtr m_pCollator;   ///< tertiary
    CollatorPtr m_pUnshifted;  ///< quaternary, shifts nothing; null when no element has a quaternary weight
    mutable ElementPool m_tPool;
    SortPages m_tPages;
    UnknownWeights m_tUnknown;
    NumberWeights m_tNumbers;
    std::shared_ptr<const FarIdeographs> m_pFar = FarIdeographs::shared();
    AsciiCodes m_tAscii;
    std::optional<PrimaryCodes> m_tPrimaries;
    std::optional<LevelCodes> m_tSecondaries;
    std::optional<LevelCodes> m_tTertiaries;
    std::shared_ptr<const Decompositions> m_pDecompositions = Decompositions::shared();
    std::vector<CodedElement> m_tElements;
    std::vector<ElementList> m_tLists;
    std::vector<Opening> m_tOpenings;
    /// Openings of characters with `kCare`, by code point.
    std::vector<std::pair<char32_t, std::uint32_t>> m_tCare;
    Opening m_tOnlyOrder;
    /// So many plain characters part what stands before them from what follows.
    std::size_t m_nCutRun = 4;
};

}  // namespace vel::nls
