#include "keyshort.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "identicallevel.h"
#include "shortlevels.h"
#include "sortcursor.h"

namespace vel::nls {

namespace {

constexpr unsigned char kLevelEnd = 0x02;

/// Instead of a length: this is no short key.
constexpr std::size_t kNoShortKey = static_cast<std::size_t>(-1);

template <unsigned kLevels, bool kBackwards>
class ShortKey
{
public:
    ShortKey(const SortData& data, BigEndianText text, unsigned char* out, std::size_t capacity) noexcept
        : m_rData(data), m_tText(text), m_pOut(out), m_pEnd(out), m_pLimit(out + capacity)
    {}

    /// False when a character is not simple.
    bool read() noexcept;
    std::size_t put(bool isIdentical);

private:
    static constexpr SortEntry kHard = entry::kSpecial | entry::kMark;
    static constexpr SortEntry kEvents = (kLevels >= 2 ? entry::kSecondary : 0) |
                                         (kLevels >= 3 ? entry::kTertiary : 0) |
                                         (kLevels >= 4 ? entry::kQuaternary : 0);

    bool readAscii(std::size_t& next) noexcept;
    bool readOthers(std::size_t& next, std::size_t stop) noexcept;
    [[gnu::noinline]] bool readHard(std::size_t i, Reading& reading) noexcept;
    bool addEvents(SortEntry e, std::size_t number) noexcept;
    bool addSecondary(std::size_t number, unsigned char code) noexcept;
    bool addSyllable(std::uint32_t number, std::size_t unitsBehind) noexcept;
    bool addShifted(SortEntry e) noexcept;
    void putLevels() noexcept;
    std::size_t putIdentical(std::size_t used);

    const SortData& m_rData;
    BigEndianText m_tText;
    unsigned char* m_pOut;
    unsigned char* m_pEnd;
    unsigned char* m_pLimit;
    std::size_t m_nElements = 0;
    /// Levels that are not asked for have no place here.
    struct None
    {};
    std::conditional_t<kLevels >= 2, LevelEvents<kSecondaryTop>, None> m_tSecondary;
    std::conditional_t<kLevels >= 3, LevelEvents<kTertiaryTop>, None> m_tTertiary;
    std::conditional_t<kLevels >= 4, QuaternaryEvents, None> m_tQuaternary;
    std::conditional_t<kBackwards, BackwardEvents, None> m_tBackwards;
};

/// `number` counts the elements before those of the entry.
template <unsigned kLevels, bool kBackwards>
inline bool ShortKey<kLevels, kBackwards>::addEvents(SortEntry e, std::size_t number) noexcept
{
    if constexpr (kLevels >= 2) {
        if (entry::secondary(e) != 0 && !addSecondary(number + entry::elements(e) - 1, entry::secondary(e))) {
            return false;
        }
    }
    if constexpr (kLevels >= 4) {
        if (entry::quaternary(e) != 0) {
            m_tQuaternary.addWeight(number, entry::quaternary(e));
        }
    }
    if constexpr (kLevels >= 3) {
        return entry::tertiary(e) == 0 || m_tTertiary.add(number, entry::tertiary(e));
    }
    return true;
}

template <unsigned kLevels, bool kBackwards>
inline bool ShortKey<kLevels, kBackwards>::addSecondary(std::size_t number, unsigned char code) noexcept
{
    if constexpr (kBackwards) {
        m_tBackwards.add(number, code);
        return true;
    } else {
        return m_tSecondary.add(number, code);
    }
}

template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::addSyllable(std::uint32_t number, std::size_t unitsBehind) noexcept
{
    SyllableReading syllable;
    // May take more than the four bytes of other characters.
    if (static_cast<std::size_t>(m_pLimit - m_pEnd) < sizeof syllable.m_nBytes + 4 * (unitsBehind + 1) ||
        !syllable.read(m_rData.m_tPages, number)) {
        return false;
    }
    std::memcpy(m_pEnd, &syllable.m_nBytes, sizeof syllable.m_nBytes);
    m_pEnd += syllable.m_nLength;
    m_nElements += syllable.m_nElements;
    return true;
}

/// A shifted character counts on the fourth level only.
template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::addShifted(SortEntry e) noexcept
{
    if constexpr (kLevels >= 4) {
        const ElementList list = m_rData.m_tLists[entry::index(e)];
        return m_tQuaternary.addShifted(m_nElements, m_rData.m_tElements[list.m_nFirst].m_tPrimary);
    }
    return true;
}

/// What an entry alone does not tell: leaves a plain entry to be stored, or an empty one.
template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::readHard(std::size_t i, Reading& reading) noexcept
{
    const SortEntry e = reading.m_nEntry;
    if ((e & entry::kMark) != 0) {
        // A mark that its base may take in, or half a character before it.
        if (i > 0 && (m_tText.entryAt(m_rData.m_tPages, i - 1) & (entry::kCare | entry::kSpecial)) != 0) {
            return false;
        }
    }
    if ((e & entry::kSpecial) == 0) {
        return true;
    }
    if (!readSpecial(m_rData, m_tText, i, reading)) {
        return false;
    }
    if ((reading.m_nEntry & entry::kSpecial) == 0) {
        // Ignored, if a shifted character stands before it.
        return entry::primaryLength(reading.m_nEntry) != 0 || !m_rData.m_tRules.isShifted();
    }
    const SortEntry special = std::exchange(reading.m_nEntry, 0);
    if (entry::kind(special) == kHangulKind) {
        return addSyllable(entry::index(special), m_tText.size() - i - 1);
    }
    reading.m_nWidth = skipIgnored(m_rData, m_tText, i + reading.m_nWidth) - i;
    return addShifted(special);
}

/// Reads simple ASCII characters from `next` on, up to a block of them.
template <unsigned kLevels, bool kBackwards>
inline bool ShortKey<kLevels, kBackwards>::readAscii(std::size_t& next) noexcept
{
    if (static_cast<std::size_t>(m_pLimit - m_pEnd) < AsciiCodes::kBlock) {
        return true;
    }
    AsciiCodes::Block block;
    m_rData.m_tAscii.read(m_tText.bytes() + 2 * next, m_tText.size() - next, m_pEnd, block);
    if constexpr (kLevels >= 3) {
        if (!m_tTertiary.addAll(m_nElements, block.m_nUncommon, block.m_aTertiary)) {
            return false;
        }
    }
    m_pEnd += block.m_nCount;
    m_nElements += block.m_nCount;
    next += block.m_nCount;
    return true;
}

template <unsigned kLevels, bool kBackwards>
[[gnu::always_inline]] inline bool ShortKey<kLevels, kBackwards>::read() noexcept
{
    constexpr std::size_t kStep = 16;
    const std::size_t size = m_tText.size();
    for (std::size_t i = 0; i < size;) {
        if (m_tText[i] < 0x80 && !readAscii(i)) {
            return false;
        }
        if (i < size && !readOthers(i, std::min(size, i + kStep))) {
            return false;
        }
    }
    if constexpr (kLevels >= 4) {
        m_tQuaternary.finish(m_nElements, m_rData.m_tRules.isShifted());
    }
    if constexpr (kBackwards) {
        return m_tBackwards.writeTo(m_tSecondary, m_nElements);
    }
    return true;
}

/// Reads up to `stop`, or beyond where a sequence ends there.
template <unsigned kLevels, bool kBackwards>
inline bool ShortKey<kLevels, kBackwards>::readOthers(std::size_t& next, std::size_t stop) noexcept
{
    // Copies that no store of bytes can change, as far as the compiler knows.
    const SortPages& pages = m_rData.m_tPages;
    const BigEndianText text = m_tText;
    unsigned char* end = m_pEnd;
    std::size_t elements = m_nElements;
    std::size_t i = next;
    while (i < stop) {
        SortEntry e = text.entryAt(pages, i);
        std::size_t width = 1;
        if ((e & (kHard | kEvents)) != 0) {
            if ((e & kHard) != 0) {
                Reading reading{e, 1};
                m_pEnd = end;
                m_nElements = elements;
                if (!readHard(i, reading)) {
                    return false;
                }
                end = m_pEnd;
                elements = m_nElements;
                e = reading.m_nEntry;
                width = reading.m_nWidth;
            }
            if (!addEvents(e, elements)) {
                return false;
            }
        }
        const std::uint32_t bytes = entry::primaryBytes(e);
        std::memcpy(end, &bytes, sizeof bytes);
        end += entry::primaryLength(e);
        if constexpr (kLevels >= 2) {
            elements += entry::elements(e);  // only the other levels count them
        }
        i += width;
    }
    m_pEnd = end;
    m_nElements = elements;
    next = i;
    return true;
}

template <unsigned kLevels, bool kBackwards>
inline std::size_t ShortKey<kLevels, kBackwards>::put(bool isIdentical)
{
    const auto primary = static_cast<std::size_t>(m_pEnd - m_pOut);
    if constexpr (kLevels == 1) {
        return primary;
    } else {
        std::size_t total = primary + m_tSecondary.bytes().size();
        if constexpr (kLevels >= 3) {
            total += m_tTertiary.bytes().size();
        }
        if constexpr (kLevels >= 4) {
            total += m_tQuaternary.bytes().size();
        }
        if (total == 0) [[unlikely]] {
            return isIdentical && m_tText.size() != 0 ? kNoShortKey : 0;
        }
        total += std::min(kLevels, 3U);
        if (total > static_cast<std::size_t>(m_pLimit - m_pOut)) [[unlikely]] {
            return isIdentical ? kNoShortKey : total;
        }
        putLevels();
        return isIdentical ? putIdentical(total) : total;
    }
}

/// Behind the primary level, where there is room for all of them.
template <unsigned kLevels, bool kBackwards>
inline void ShortKey<kLevels, kBackwards>::putLevels() noexcept
{
    unsigned char* out = m_pEnd;
    *out++ = kLevelEnd;
    out = m_tSecondary.bytes().copyTo(out, m_pLimit);
    *out++ = kLevelEnd;
    if constexpr (kLevels >= 3) {
        out = m_tTertiary.bytes().copyTo(out, m_pLimit);
        *out++ = kLevelEnd;
    }
    if constexpr (kLevels >= 4) {
        m_tQuaternary.bytes().copyTo(out, m_pLimit);
    }
}

/// Behind the other levels.
template <unsigned kLevels, bool kBackwards>
std::size_t ShortKey<kLevels, kBackwards>::putIdentical(std::size_t used)
{
    KeyBytes level(m_pOut + used, static_cast<std::size_t>(m_pLimit - m_pOut) - used);
    if (level.room() == 0) {
        return kNoShortKey;
    }
    level.put(kLevelEnd);
    const unsigned char* const begin = level.data();
    m_rData.m_pDecompositions->append(m_tText.bytes(), 2 * m_tText.size(), level);
    // A level that may not fit has moved.
    if (level.data() != begin && used + level.size() <= static_cast<std::size_t>(m_pLimit - m_pOut)) {
        std::memcpy(m_pOut + used, level.data(), level.size());
    }
    return used + level.size();
}

/// The strength of such keys; one of four levels whose last one is always empty is tertiary.
constexpr SortStrength strengthOf(unsigned levels, bool isIdentical) noexcept
{
    return isIdentical ? SortStrength::kIdentical : static_cast<SortStrength>(levels - 1);
}

template <unsigned kLevels, bool kBackwards, bool kIdentical = false>
std::size_t makeShortKey(const SortData& data, const unsigned char* utf16be, std::size_t byteCount, unsigned char* out,
                         std::size_t capacity, LongKeyMaker otherwise)
{
    const std::size_t units = byteCount / 2;
    // Each character stores four bytes, of which up to four stay.
    if (units <= kMostShortUnits && byteCount % 2 == 0 && capacity >= 4 * units + 4) [[likely]] {
        ShortKey<kLevels, kBackwards> key(data, BigEndianText(utf16be, units), out, capacity);
        if (key.read()) [[likely]] {
            const std::size_t size = key.put(kIdentical);
            if (!kIdentical || size != kNoShortKey) {
                return size;
            }
        }
    }
    return otherwise(data, utf16be, byteCount, strengthOf(kLevels, kIdentical), out, capacity);
}

template <bool kBackwards>
ShortKeyMaker makerOf(SortStrength strength, bool hasFourth) noexcept
{
    switch (strength) {
    case SortStrength::kPrimary:
        return makeShortKey<1, false>;
    case SortStrength::kSecondary:
        return makeShortKey<2, kBackwards>;
    case SortStrength::kIdentical:
        return hasFourth ? makeShortKey<4, kBackwards, true> : makeShortKey<3, kBackwards, true>;
    case SortStrength::kQuaternary:
        return hasFourth ? makeShortKey<4, kBackwards> : makeShortKey<3, kBackwards>;
    default:
        return makeShortKey<3, kBackwards>;
    }
}

}  // namespace

ShortKeyMaker shortKeyMaker(const SortData& data, SortStrength strength) noexcept
{
    const bool hasFourth = data.m_tRules.isShifted() || data.m_pUnshifted != nullptr;
    return data.m_tRules.isFrench() ? makerOf<true>(strength, hasFourth) : makerOf<false>(strength, hasFourth);
}

}  // namespace vel::nls
