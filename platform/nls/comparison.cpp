#include "comparison.h"

#include <algorithm>

#include "sortcursor.h"

namespace vel::nls {

namespace {

/// Reads one text character by character, and the bytes of its primary weights one by one.
class CompareSide
{
public:
    CompareSide(const SortData& data, WideText text, std::size_t begin) noexcept
        : m_rData(data), m_tText(text), m_nNext(begin)
    {}

    bool atEnd() const noexcept { return m_nNext == m_tText.size(); }
    /// The next character; false where it is not simple. A shifted one is passed over, with what it makes ignored.
    bool next() noexcept;

    std::uint64_t m_nBytes = 0;  ///< primary bytes not yet compared, the first one lowest
    unsigned m_nLength = 0;
    unsigned m_nElements = 0;
    SortEntry m_nEntry = 0;

private:
    const SortData& m_rData;
    WideText m_tText;
    std::size_t m_nNext;
};

bool CompareSide::next() noexcept
{
    Reading reading{m_tText.entryAt(m_rData.m_tPages, m_nNext), 1};
    if ((reading.m_nEntry & entry::kCare) != 0 && m_nNext + 1 < m_tText.size()) {
        // Half a character may be half of a mark.
        const char32_t behind = m_tText[m_nNext + 1];
        if (m_tText.isOdd(behind) || (m_rData.m_tPages.find(behind) & entry::kMark) != 0) {
            return false;
        }
    }
    if ((reading.m_nEntry & entry::kSpecial) != 0) {
        if (!readSpecial(m_rData, m_tText, m_nNext, reading) ||
            (m_rData.m_tRules.isShifted() && entry::primaryLength(reading.m_nEntry) == 0 &&
             (reading.m_nEntry & entry::kSpecial) == 0)) {
            return false;
        }
    }
    m_nNext += reading.m_nWidth;
    m_nEntry = reading.m_nEntry;
    if ((m_nEntry & entry::kSpecial) == 0) {
        m_nBytes = entry::primaryBytes(m_nEntry);
        m_nLength = entry::primaryLength(m_nEntry);
        m_nElements = entry::elements(m_nEntry);
        return true;
    }
    SyllableReading syllable;
    if (entry::kind(m_nEntry) == kVariableKind) {
        m_nNext = skipIgnored(m_rData, m_tText, m_nNext);
        // A mark that counts may have to change places with those passed over, which then count as well.
        if (!atEnd() && (m_tText.entryAt(m_rData.m_tPages, m_nNext) & entry::kMark) != 0) {
            return false;
        }
    } else if (!syllable.read(m_rData.m_tPages, entry::index(m_nEntry))) {
        return false;
    }
    m_nEntry = 0;
    m_nBytes = syllable.m_nBytes;
    m_nLength = syllable.m_nLength;
    m_nElements = syllable.m_nElements;
    return true;
}

class Comparison
{
public:
    Comparison(const SortData& data, WideText a, WideText b, std::size_t begin, SortStrength strength) noexcept
        : m_tLeft(data, a, begin), m_tRight(data, b, begin), m_eStrength(strength), m_tLower(data)
    {}

    std::optional<int> run() noexcept
    {
        for (;;) {
            if (m_tLeft.m_nLength == 0 && m_tRight.m_nLength == 0) {
                if (m_tLeft.atEnd() && m_tRight.atEnd()) {
                    return result();
                }
                if (!readBoth()) {
                    return std::nullopt;
                }
            } else if (!refill(m_tLeft) || !refill(m_tRight)) {
                return std::nullopt;
            }
            if (m_tLeft.m_nLength == 0 || m_tRight.m_nLength == 0) {
                if (const std::optional<int> order = orderAtEnd()) {
                    return order;
                }
                continue;
            }
            if (const int order = takeShared()) {
                return order;
            }
        }
    }

private:
    /// Both stand between characters: what follows counts on the lower levels as long as it goes in step.
    bool readBoth() noexcept
    {
        if (m_tLeft.atEnd() || m_tRight.atEnd()) {
            m_bInStep = false;
            CompareSide& side = m_tLeft.atEnd() ? m_tRight : m_tLeft;
            return side.next();
        }
        if (!m_tLeft.next() || !m_tRight.next()) {
            return false;
        }
        m_bInStep = m_bInStep && m_tLeft.m_nLength == m_tRight.m_nLength && m_tLeft.m_nElements == m_tRight.m_nElements;
        m_tLower.add(m_tLeft.m_nEntry, m_tRight.m_nEntry);
        return true;
    }

    /// One of them has bytes left over: the other one reads on.
    bool refill(CompareSide& side) noexcept
    {
        while (side.m_nLength == 0 && !side.atEnd()) {
            m_bInStep = false;
            if (!side.next()) {
                return false;
            }
        }
        return true;
    }

    /// Where a side has no bytes: it is at its end, or has read what counts on lower levels only.
    std::optional<int> orderAtEnd() const noexcept
    {
        if (m_tLeft.m_nLength != 0 && m_tRight.atEnd()) {
            return 1;
        }
        if (m_tRight.m_nLength != 0 && m_tLeft.atEnd()) {
            return -1;
        }
        return std::nullopt;
    }

    /// Compares the bytes that both have, and drops equal ones.
    int takeShared() noexcept
    {
        const unsigned shared = std::min(m_tLeft.m_nLength, m_tRight.m_nLength);
        const std::uint64_t mask = shared == 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * shared)) - 1;
        const std::uint64_t difference = (m_tLeft.m_nBytes ^ m_tRight.m_nBytes) & mask;
        if (difference != 0) {
            const int shift = __builtin_ctzll(difference) & ~7;
            return ((m_tLeft.m_nBytes >> shift) & 0xFF) < ((m_tRight.m_nBytes >> shift) & 0xFF) ? -1 : 1;
        }
        for (CompareSide* side : {&m_tLeft, &m_tRight}) {
            side->m_nBytes = shared == 8 ? 0 : side->m_nBytes >> (8 * shared);
            side->m_nLength -= shared;
        }
        return 0;
    }

    /// All primary weights are equal.
    std::optional<int> result() const noexcept
    {
        if (m_bInStep || m_eStrength == SortStrength::kPrimary) {
            return m_tLower.order(m_eStrength);
        }
        return std::nullopt;
    }

    CompareSide m_tLeft;
    CompareSide m_tRight;
    SortStrength m_eStrength;
    LowerLevels m_tLower;
    bool m_bInStep = true;
};

/// No character below takes part in a sequence behind another one as a mark.
constexpr char32_t kFirstMark = 0x300;

/// Whether what stands at `i` may be a mark that belongs to what stands before it.
bool mayBeMark(const SortData& data, WideText text, std::size_t i) noexcept
{
    return i < text.size() && text[i] >= kFirstMark &&
           (text.isOdd(text[i]) || (data.m_tPages.find(text[i]) & entry::kMark) != 0);
}

/// Back from `i` to where nothing before it changes what follows: so many plain characters stand before that place.
/// `kCare` says nothing where no mark follows, and a mark is not plain itself.
std::size_t stepBack(const SortData& data, WideText text, std::size_t i, bool isMarkNext) noexcept
{
    const SortEntry stops = entry::kSpecial | entry::kMark | (isMarkNext ? entry::kCare : 0);
    std::size_t begin = i;
    for (std::size_t plain = 0; i > 0 && plain < data.m_nCutRun; --i) {
        const SortEntry e = text.entryAt(data.m_tPages, i - 1);
        ++plain;
        if ((e & stops) != 0 || entry::primaryLength(e) == 0) {
            begin = i - 1;
            plain = 0;
        }
    }
    return begin;
}

}  // namespace

std::optional<int> compareByBytes(const SortData& data, WideText a, WideText b, std::size_t equal,
                                  SortStrength strength) noexcept
{
    // Behind the equal part a mark may belong to what stands in it.
    const std::size_t begin = stepBack(data, a, equal, mayBeMark(data, a, equal) || mayBeMark(data, b, equal));
    return Comparison(data, a, b, begin, strength).run();
}

}  // namespace vel::nls
