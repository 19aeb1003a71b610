#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "sortcursor.h"
#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// Whether a mark, or half a character that may be one, stands at `i`.
inline bool isMarkAt(const SortPages& pages, WideText text, std::size_t i) noexcept
{
    constexpr char32_t kFirstMark = 0x300;
    return i < text.size() && text[i] >= kFirstMark &&
           (text.isOdd(text[i]) || (pages.find(text[i]) & entry::kMark) != 0);
}

/// Which of two characters that are read by themselves has the lower primary weights: -1 or 1; 0 when they are equal,
/// or what follows decides.
inline int orderOfPrimaries(SortEntry left, SortEntry right) noexcept
{
    const std::uint32_t leftBytes = entry::primaryBytes(left);
    const std::uint32_t rightBytes = entry::primaryBytes(right);
    const std::uint32_t difference = leftBytes ^ rightBytes;
    if (difference == 0) {
        return 0;
    }
    // No primary byte is 0: one that is shows that the bytes of one are the first ones of the other.
    const unsigned first = static_cast<unsigned>(__builtin_ctz(difference)) & ~7U;
    const std::uint32_t leftByte = (leftBytes >> first) & 0xFF;
    const std::uint32_t rightByte = (rightBytes >> first) & 0xFF;
    if (leftByte == 0 || rightByte == 0) [[unlikely]] {
        return 0;
    }
    return leftByte < rightByte ? -1 : 1;
}

/// The first difference of two texts on each of the lower levels, or the last one of accents where these count from the
/// end; taken down as long as both texts have elements of equal primary weights.
class LowerLevels
{
public:
    explicit LowerLevels(const SortData& data) noexcept : m_bBackwards(data.m_tRules.isFrench()) {}

    void add(SortEntry left, SortEntry right) noexcept
    {
        if (entry::secondary(left) != entry::secondary(right) && (m_nSecondary == 0 || m_bBackwards)) {
            m_nSecondary = compareCodes(entry::secondary(left), entry::secondary(right), kSecondaryTop);
        }
        if (entry::tertiary(left) != entry::tertiary(right) && m_nTertiary == 0) {
            m_nTertiary = compareCodes(entry::tertiary(left), entry::tertiary(right), kTertiaryTop);
        }
    }
    /// Whether the next difference of accents counts, and with it what stands before it.
    bool isOpen() const noexcept { return m_bBackwards && m_nSecondary != 0; }
    /// What they say up to the third level.
    int order(SortStrength strength) const noexcept
    {
        if (strength == SortStrength::kPrimary) {
            return 0;
        }
        return m_nSecondary != 0 || strength == SortStrength::kSecondary ? m_nSecondary : m_nTertiary;
    }

private:
    /// Codes as they order: the common weight, which has none, between the lower and the higher ones.
    static int compareCodes(unsigned left, unsigned right, unsigned top) noexcept
    {
        const auto rank = [&](unsigned code) { return code == 0 ? 2 * top + 1 : 2 * code; };
        return rank(left) < rank(right) ? -1 : 1;
    }

    bool m_bBackwards;
    int m_nSecondary = 0;
    int m_nTertiary = 0;
};

/// How far two texts have been compared.
struct Beginning
{
    std::size_t m_nPassed;  ///< up to here, which is no place within a sequence, they are done with
    std::size_t m_nEqual;   ///< from there on they are equal up to here
    LowerLevels m_tLower;   ///< what differs in what is done with
};

/// Reads one text character by character, and the bytes of its primary weights one by one.
class CompareSide
{
public:
    CompareSide(const SortData& data, WideText text) noexcept : m_rData(data), m_tText(text) {}

    const WideText& text() const noexcept { return m_tText; }
    std::size_t place() const noexcept { return m_nNext; }
    void moveTo(std::size_t place) noexcept { m_nNext = place; }
    bool atEnd() const noexcept { return m_nNext == m_tText.size(); }
    /// Whether what stands at the place does not depend on what stands before it.
    bool isCut() const noexcept { return isCut(m_nNext); }
    bool isCut(std::size_t place) const noexcept;
    /// The next character; false where it is not simple. A shifted one is passed over, with what it makes ignored.
    bool next() noexcept;

    std::uint64_t m_nBytes = 0;  ///< primary bytes not yet compared, the first one lowest
    unsigned m_nLength = 0;
    unsigned m_nElements = 0;
    SortEntry m_nEntry = 0;

private:
    bool take(SortEntry e) noexcept;
    bool nextHard(Reading reading) noexcept;

    const SortData& m_rData;
    WideText m_tText;
    std::size_t m_nNext = 0;
};

/// Compares two texts up to the third level, by the bytes of their primary weights; what is equal in both is passed
/// over.
class Comparison
{
public:
    Comparison(const SortData& data, WideText a, WideText b, const Beginning& beginning) noexcept;

    /// Nothing where only keys can tell.
    std::optional<int> run(SortStrength strength) noexcept;

private:
    void moveToCut(std::size_t place, std::size_t least) noexcept;
    void passEqual() noexcept;
    bool readBoth() noexcept;
    bool refill(CompareSide& side) noexcept;
    std::optional<int> orderAtEnd() const noexcept;
    int takeShared() noexcept;
    std::optional<int> result(SortStrength strength) const noexcept;

    CompareSide m_tLeft;
    CompareSide m_tRight;
    LowerLevels m_tLower;
    bool m_bInStep = true;
};

}  // namespace vel::nls
