#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "sorting/keymaker.h"
#include "sorting/memorybudget.h"
#include "vel/core/stringpool.h"

namespace cli {

/// A line and its key, neither of which it owns.
struct KeyedLine
{
    std::uint64_t m_nPrefix;  ///< the key's first eight bytes as a big-endian number, zeros behind a shorter one
    std::string_view m_sKey;
    std::string_view m_sText;
};

KeyedLine makeKeyedLine(std::string_view key, std::string_view text) noexcept;

/// Negative, zero or positive, by the keys. Most pairs differ in their prefixes; keys hold no zero byte, so prefixes
/// compare as the keys do.
inline int compareLines(const KeyedLine& a, const KeyedLine& b) noexcept
{
    if (a.m_nPrefix != b.m_nPrefix) {
        return a.m_nPrefix < b.m_nPrefix ? -1 : 1;
    }
    return a.m_sKey.compare(b.m_sKey);
}

/// Lines in the order of their keys, and of the input where keys are equal. Filled and sorted by one thread.
class KeyedLines
{
public:
    /// Where a line begins that is no UTF-8, and the fault's offset in it.
    struct Fault
    {
        const char* m_pLine;
        std::size_t m_nOffset;
    };

    /// Makes the keys of the lines in `text`, each of which ends with the separator, and sorts. The lines refer to
    /// `text`. Ends with the line for which the budget is too small, though never before the first; rest() is then what
    /// was not looked at.
    void fill(std::string_view text, char separator, KeyMaker& maker, MemoryBudget& budget);
    /// No lines.
    void clear() noexcept;
    const std::optional<Fault>& fault() const noexcept { return m_tFault; }
    std::string_view rest() const noexcept { return m_sRest; }
    std::size_t size() const noexcept { return m_tOrder.size(); }
    std::size_t keyBytes() const noexcept { return m_nKeyBytes; }
    std::size_t textBytes() const noexcept { return m_nTextBytes; }
    std::size_t longestText() const noexcept { return m_nLongestText; }
    /// By its place in the order.
    const KeyedLine& operator[](std::size_t place) const noexcept { return m_tLines[m_tOrder[place].m_nLine]; }

private:
    /// What is moved about in place of a line. It holds those eight bytes of the key by which lines are being sorted,
    /// so that no key is looked at, which may be anywhere in memory, while they are compared.
    struct Entry
    {
        std::uint64_t m_nBytes;
        std::uint32_t m_nLine;
    };
    /// Entries whose keys are the same up to a place, and go on there.
    struct Group
    {
        std::vector<Entry>::iterator m_tBegin;
        std::vector<Entry>::iterator m_tEnd;
        std::size_t m_nFrom;
    };

    bool addLine(std::string_view line, KeyMaker& maker);
    void sort();
    void sortGroup(const Group& group, std::vector<Group>& open);
    void sortSmall(const Group& group) const;

    vel::NarrowStringPool m_tPool{std::size_t{1} << 20};
    std::vector<KeyedLine> m_tLines;  // in the order of the input
    std::vector<Entry> m_tOrder;
    std::size_t m_nKeyBytes = 0;
    std::size_t m_nTextBytes = 0;  // with the separators
    std::size_t m_nLongestText = 0;
    std::string_view m_sRest;
    std::optional<Fault> m_tFault;

public:
    /// What a line takes beside its text and its key.
    static constexpr std::size_t kBytesPerLine = sizeof(KeyedLine) + sizeof(Entry) + sizeof(Group) / 8;
};

}  // namespace cli
