#include "tablecompare.h"

#include <emmintrin.h>

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

/// Codes as they order: the common weight, which has none, between the lower and the higher ones.
int compareCodes(unsigned left, unsigned right, unsigned top) noexcept
{
    const auto rank = [&](unsigned code) { return code == 0 ? 2 * top + 1 : 2 * code; };
    return rank(left) < rank(right) ? -1 : 1;
}

class Comparison
{
public:
    Comparison(const SortData& data, WideText a, WideText b, std::size_t begin, SortStrength strength) noexcept
        : m_tLeft(data, a, begin),
          m_tRight(data, b, begin),
          m_nLevels(static_cast<unsigned>(strength) + 1),
          m_bBackwards(data.m_tRules.isFrench())
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
        const SortEntry left = m_tLeft.m_nEntry;
        const SortEntry right = m_tRight.m_nEntry;
        if (entry::secondary(left) != entry::secondary(right) && (m_nSecondary == 0 || m_bBackwards)) {
            m_nSecondary = compareCodes(entry::secondary(left), entry::secondary(right), kSecondaryTop);
        }
        if (entry::tertiary(left) != entry::tertiary(right) && m_nTertiary == 0) {
            m_nTertiary = compareCodes(entry::tertiary(left), entry::tertiary(right), kTertiaryTop);
        }
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
        if (m_nLevels == 1) {
            return 0;
        }
        if (!m_bInStep) {
            return std::nullopt;
        }
        if (m_nSecondary != 0) {
            return m_nSecondary;
        }
        return m_nLevels >= 3 ? m_nTertiary : 0;
    }

    CompareSide m_tLeft;
    CompareSide m_tRight;
    unsigned m_nLevels;
    bool m_bBackwards;
    bool m_bInStep = true;
    int m_nSecondary = 0;
    int m_nTertiary = 0;
};

std::size_t equalPrefix(const wchar_t* a, const wchar_t* b, std::size_t count) noexcept
{
    std::size_t i = 0;
    for (; count - i >= 4; i += 4) {
        const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i));
        const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i));
        const auto equal = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi32(left, right)));
        if (equal != 0xFFFF) {
            return i + static_cast<std::size_t>(__builtin_ctz(~equal)) / sizeof(wchar_t);
        }
    }
    while (i < count && a[i] == b[i]) {
        ++i;
    }
    return i;
}

/// No character below takes part in a sequence behind another one as a mark.
constexpr char32_t kFirstMark = 0x300;

/// Whether the character at `i` is read by itself, whatever stands behind it, and has a primary weight.
bool isByItself(SortEntry e, WideText text, std::size_t i) noexcept
{
    return (e & (entry::kSpecial | entry::kMark)) == 0 && entry::primaryLength(e) != 0 &&
           ((e & entry::kCare) == 0 || i + 1 == text.size() || text[i + 1] < kFirstMark);
}

/// The usual case: the first characters that differ have different primary weights. 0 when it is not.
int compareFirst(const SortData& data, WideText a, WideText b, std::size_t i) noexcept
{
    if (i == a.size() || i == b.size()) {
        return 0;
    }
    const SortEntry left = a.entryAt(data.m_tPages, i);
    const SortEntry right = b.entryAt(data.m_tPages, i);
    if (!isByItself(left, a, i) || !isByItself(right, b, i)) {
        return 0;
    }
    const unsigned shared = std::min(entry::primaryLength(left), entry::primaryLength(right));
    const std::uint32_t difference = (entry::primaryBytes(left) ^ entry::primaryBytes(right)) &
                                     static_cast<std::uint32_t>((std::uint64_t{1} << (8 * shared)) - 1);
    if (difference == 0) {
        return 0;
    }
    return __builtin_bswap32(entry::primaryBytes(left)) < __builtin_bswap32(entry::primaryBytes(right)) ? -1 : 1;
}

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

std::optional<int> compareTexts(const SortData& data, const wchar_t* a, std::size_t na, const wchar_t* b,
                                std::size_t nb, SortStrength strength)
{
    const std::size_t equal = equalPrefix(a, b, std::min(na, nb));
    if (equal == na && equal == nb) {
        return 0;
    }
    const WideText left(a, na);
    // Behind the equal part a mark may belong to what stands in it.
    const WideText right(b, nb);
    const std::size_t begin =
        stepBack(data, left, equal, mayBeMark(data, left, equal) || mayBeMark(data, right, equal));
    if (begin == equal) {
        if (const int order = compareFirst(data, left, right, equal)) {
            return order;
        }
    }
    const bool hasMore =
        strength == SortStrength::kIdentical ||
        (strength == SortStrength::kQuaternary && (data.m_tRules.isShifted() || data.m_pUnshifted != nullptr));
    const std::optional<int> order =
        Comparison(data, left, right, begin, std::min(strength, SortStrength::kTertiary)).run();
    // Levels beyond the third decide only where the others are equal.
    return order == 0 && hasMore ? std::nullopt : order;
}

}  // namespace vel::nls
