#include "keyshort.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstring>

#include "identicallevel.h"
#include "sortcursor.h"

namespace vel::nls {

namespace {

constexpr std::size_t kMostUnits = 256;
constexpr unsigned char kLevelEnd = 0x02;
/// Two bytes for each event, and those of long runs.
constexpr std::size_t kLevelRoom = 4 * kMostUnits;
constexpr std::size_t kLongestLowRun = 251;

/// The events of one level, written as they come.
template <unsigned char kTop>
struct LevelEvents
{
    unsigned char* m_pEnd = m_aBytes;
    std::size_t m_nNext = 0;
    unsigned char m_aBytes[kLevelRoom];

    LevelEvents() noexcept {}  // the bytes stay as they are

    bool add(std::size_t number, unsigned char code) noexcept
    {
        std::size_t run = number - m_nNext;
        m_nNext = number + 1;
        unsigned char* end = m_pEnd;
        if (code > kTop) [[likely]] {
            for (; run > kTop - 2U; run -= kTop - 2U) {
                *end++ = 0x03;
            }
            *end = static_cast<unsigned char>(kTop + 1 - run);
            end += run != 0;
        } else {
            if (run > kLongestLowRun) {
                return false;
            }
            *end++ = 0x01;
            *end++ = static_cast<unsigned char>(0x03 + run);
        }
        *end++ = code;
        m_pEnd = end;
        return true;
    }
    std::size_t size() const noexcept { return static_cast<std::size_t>(m_pEnd - m_aBytes); }
};

/// Accents that count from the end: kept with their numbers until all are known.
struct BackwardEvents
{
    struct Event
    {
        std::uint32_t m_nNumber;
        unsigned char m_nCode;
    };
    std::size_t m_nCount = 0;
    Event m_aEvents[kMostUnits];

    BackwardEvents() noexcept {}

    bool add(std::size_t number, unsigned char code) noexcept
    {
        m_aEvents[m_nCount++] = {static_cast<std::uint32_t>(number), code};
        return true;
    }
    bool writeTo(LevelEvents<kSecondaryTop>& level, std::size_t elements) const noexcept
    {
        bool isWritten = true;
        for (std::size_t i = m_nCount; i-- > 0;) {
            isWritten = isWritten && level.add(elements - 1 - m_aEvents[i].m_nNumber, m_aEvents[i].m_nCode);
        }
        return isWritten;
    }
};

/// Few bytes mostly: sixteen at once where there is room, for neither a loop nor a call is as fast. `bytes` has as
/// many.
unsigned char* copyLevel(unsigned char* out, const unsigned char* limit, const unsigned char* bytes,
                         std::size_t size) noexcept
{
    constexpr std::size_t kAtOnce = 16;
    if (size <= kAtOnce && limit - out >= static_cast<std::ptrdiff_t>(kAtOnce)) {
        std::memcpy(out, bytes, kAtOnce);
    } else {
        std::memcpy(out, bytes, size);
    }
    return out + size;
}

/// The weights of Kana. Nothing is shifted where they are.
struct QuaternaryEvents
{
    unsigned char* m_pEnd = m_aBytes;
    std::size_t m_nNext = 0;
    unsigned char m_aBytes[kLevelRoom];

    QuaternaryEvents() noexcept {}

    void add(std::size_t number, unsigned weight) noexcept
    {
        constexpr std::size_t kSpan = 124;
        std::size_t run = number - m_nNext;
        m_nNext = number + 1;
        for (; run > kSpan; run -= kSpan) {
            *m_pEnd++ = 0x80;
        }
        *m_pEnd = static_cast<unsigned char>(0xFC - run);
        m_pEnd += run != 0;
        *m_pEnd++ = static_cast<unsigned char>(0xFB + weight);
    }
    std::size_t size() const noexcept { return static_cast<std::size_t>(m_pEnd - m_aBytes); }
};

/// One byte for each of eight characters, the first one lowest.
struct AsciiCodes
{
    std::uint64_t m_nPrimary = 0;
    std::uint64_t m_nTertiary = 0;  ///< 0: common
};

/// Looks up eight units of UTF-16BE; false when one is not a simple ASCII character.
bool readEight(const SortData& data, __m128i units, AsciiCodes& codes) noexcept
{
    const __m128i beyond = _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(0x80FF)));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) != 0xFFFF) {
        return false;
    }
    const __m128i packed = _mm_packus_epi16(_mm_srli_epi16(units, 8), _mm_setzero_si128());
    const auto characters = static_cast<std::uint64_t>(_mm_cvtsi128_si64(packed));
    codes = {};
    for (int shift = 0; shift < 64; shift += 8) {
        const std::uint64_t both = data.m_aAscii[(characters >> shift) & 0x7F];
        codes.m_nPrimary |= (both & 0xFF) << shift;
        codes.m_nTertiary |= (both >> 8) << shift;
    }
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    return ((codes.m_nPrimary - kOnes) & ~codes.m_nPrimary & (kOnes << 7)) == 0;
}

template <unsigned kLevels, bool kBackwards>
class ShortKey
{
public:
    ShortKey(const SortData& data, BigEndianText text, unsigned char* out, std::size_t capacity) noexcept
        : m_rData(data), m_tText(text), m_pOut(out), m_pEnd(out), m_pLimit(out + capacity)
    {}

    /// False when a character is not simple.
    bool read() noexcept;
    std::optional<std::size_t> put(bool isIdentical, const unsigned char* utf16be);

private:
    std::optional<std::size_t> putIdentical(std::size_t used, const unsigned char* utf16be);
    static constexpr SortEntry kUncommon = entry::kSpecial | entry::kMark | (kLevels >= 2 ? entry::kSecondary : 0) |
                                           (kLevels >= 3 ? entry::kTertiary : 0) |
                                           (kLevels >= 4 ? entry::kQuaternary : 0);

    void addAscii(AsciiCodes codes, std::size_t count) noexcept;
    std::size_t readAscii(std::size_t begin) noexcept;
    bool readOthers(std::size_t& next, std::size_t stop) noexcept;
    bool readUncommon(std::size_t i, Reading& reading) noexcept;
    bool addEvents(SortEntry e) noexcept;
    bool addSyllable(std::uint32_t number, std::size_t unitsBehind) noexcept;

    const SortData& m_rData;
    BigEndianText m_tText;
    unsigned char* m_pOut;
    unsigned char* m_pEnd;
    unsigned char* m_pLimit;
    std::size_t m_nElements = 0;
    BackwardEvents m_tBackwards;
    LevelEvents<kSecondaryTop> m_tSecondary;
    LevelEvents<kTertiaryTop> m_tTertiary;
    QuaternaryEvents m_tQuaternary;
};

template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::addEvents(SortEntry e) noexcept
{
    if (kLevels >= 2 && entry::secondary(e) != 0) {
        const std::size_t number = m_nElements + entry::elements(e) - 1;
        if (kBackwards ? !m_tBackwards.add(number, entry::secondary(e))
                       : !m_tSecondary.add(number, entry::secondary(e))) {
            return false;
        }
    }
    if (kLevels >= 4 && entry::quaternary(e) != 0) {
        m_tQuaternary.add(m_nElements, entry::quaternary(e));
    }
    return kLevels < 3 || entry::tertiary(e) == 0 || m_tTertiary.add(m_nElements, entry::tertiary(e));
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

/// What is not a letter of common weights: leaves a plain entry to be stored, or an empty one.
template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::readUncommon(std::size_t i, Reading& reading) noexcept
{
    const SortEntry e = reading.m_nEntry;
    if ((e & entry::kMark) != 0) {
        // A mark that its base may take in, or half a character before it.
        if (i > 0 && (m_tText.entryAt(m_rData.m_tPages, i - 1) & (entry::kCare | entry::kSpecial)) != 0) {
            return false;
        }
    }
    if ((e & entry::kSpecial) != 0) {
        if (!readSpecial(m_rData, m_tText, i, reading)) {
            return false;
        }
        if ((reading.m_nEntry & entry::kSpecial) != 0) {
            if (entry::kind(reading.m_nEntry) == kHangulKind) {
                const std::uint32_t number = entry::index(reading.m_nEntry);
                reading.m_nEntry = 0;
                return addSyllable(number, m_tText.size() - i - 1);
            }
            reading.m_nWidth = skipIgnored(m_rData, m_tText, i + reading.m_nWidth) - i;
            reading.m_nEntry = 0;
            return true;
        }
        if (entry::primaryLength(reading.m_nEntry) == 0 && m_rData.m_tRules.isShifted()) {
            return false;  // ignored, if a shifted character stands before it
        }
    }
    return addEvents(reading.m_nEntry);
}

/// Stores the codes of `count` simple ASCII characters.
template <unsigned kLevels, bool kBackwards>
void ShortKey<kLevels, kBackwards>::addAscii(AsciiCodes codes, std::size_t count) noexcept
{
    std::memcpy(m_pEnd, &codes.m_nPrimary, sizeof codes.m_nPrimary);
    m_pEnd += count;
    if (kLevels >= 3) {
        while (codes.m_nTertiary != 0) {
            const int lane = __builtin_ctzll(codes.m_nTertiary) / 8;
            // Runs are short here: a lower weight always finds room.
            static_cast<void>(m_tTertiary.add(m_nElements + static_cast<std::size_t>(lane),
                                              static_cast<unsigned char>(codes.m_nTertiary >> (8 * lane))));
            codes.m_nTertiary &= ~(std::uint64_t{0xFF} << (8 * lane));
        }
    }
    m_nElements += count;
}

/// Reads simple ASCII characters from `i` on, eight at a time, and returns where others begin or too few are left. The
/// last ones of a text are read together with some that were read before, which saves a loop that is hard to foresee.
template <unsigned kLevels, bool kBackwards>
std::size_t ShortKey<kLevels, kBackwards>::readAscii(const std::size_t begin) noexcept
{
    const unsigned char* const bytes = m_tText.bytes();
    const std::size_t size = m_tText.size();
    std::size_t i = begin;
    AsciiCodes codes;
    for (; size - i >= 8; i += 8) {
        if (!readEight(m_rData, _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 2 * i)), codes)) {
            return i;
        }
        addAscii(codes, 8);
    }
    const std::size_t rest = size - i;
    if (rest == 0) {
        return i;
    }
    if (i - begin >= 8) {
        if (!readEight(m_rData, _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 2 * (size - 8))), codes)) {
            return i;
        }
        const std::size_t shift = 8 * (8 - rest);
        addAscii({codes.m_nPrimary >> shift, codes.m_nTertiary >> shift}, rest);
        return size;
    }
    if (rest >= 4) {
        const __m128i first = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes + 2 * i));
        const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes + 2 * (size - 4)));
        if (!readEight(m_rData, _mm_unpacklo_epi64(first, last), codes)) {
            return i;
        }
        const auto fold = [&](std::uint64_t lanes) {
            return (lanes & 0xFFFFFFFFU) | ((lanes >> 32) << (8 * (rest - 4)));
        };
        addAscii({fold(codes.m_nPrimary), fold(codes.m_nTertiary)}, rest);
        return size;
    }
    return i;
}

template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::read() noexcept
{
    constexpr std::size_t kStep = 16;
    const std::size_t size = m_tText.size();
    for (std::size_t i = 0; i < size;) {
        i = readAscii(i);
        if (i < size && !readOthers(i, std::min(size, i + kStep))) {
            return false;
        }
    }
    return !kBackwards || m_tBackwards.writeTo(m_tSecondary, m_nElements);
}

/// Reads up to `stop`, or beyond where a sequence ends there.
template <unsigned kLevels, bool kBackwards>
bool ShortKey<kLevels, kBackwards>::readOthers(std::size_t& next, std::size_t stop) noexcept
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
        if ((e & kUncommon) != 0) {
            Reading reading{e, 1};
            m_pEnd = end;
            m_nElements = elements;
            if (!readUncommon(i, reading)) {
                return false;
            }
            end = m_pEnd;
            elements = m_nElements;
            e = reading.m_nEntry;
            width = reading.m_nWidth;
        }
        const std::uint32_t bytes = entry::primaryBytes(e);
        std::memcpy(end, &bytes, sizeof bytes);
        end += entry::primaryLength(e);
        elements += entry::elements(e);
        i += width;
    }
    m_pEnd = end;
    m_nElements = elements;
    next = i;
    return true;
}

template <unsigned kLevels, bool kBackwards>
std::optional<std::size_t> ShortKey<kLevels, kBackwards>::put(bool isIdentical, const unsigned char* utf16be)
{
    const std::size_t bytes =
        static_cast<std::size_t>(m_pEnd - m_pOut) + m_tSecondary.size() + m_tTertiary.size() + m_tQuaternary.size();
    if (bytes == 0 && isIdentical && m_tText.size() != 0) {
        return std::nullopt;
    }
    if (kLevels == 1 || bytes == 0) {
        return bytes;
    }
    const std::size_t total = bytes + std::min(kLevels, 3U);
    if (total > static_cast<std::size_t>(m_pLimit - m_pOut)) {
        return isIdentical ? std::nullopt : std::optional<std::size_t>(total);
    }
    unsigned char* out = m_pEnd;
    *out++ = kLevelEnd;
    out = copyLevel(out, m_pLimit, m_tSecondary.m_aBytes, m_tSecondary.size());
    *out++ = kLevelEnd;
    if (kLevels >= 3) {
        out = copyLevel(out, m_pLimit, m_tTertiary.m_aBytes, m_tTertiary.size());
        *out++ = kLevelEnd;
        copyLevel(out, m_pLimit, m_tQuaternary.m_aBytes, m_tQuaternary.size());
    }
    return isIdentical ? putIdentical(total, utf16be) : total;
}

/// Behind the other levels.
template <unsigned kLevels, bool kBackwards>
std::optional<std::size_t> ShortKey<kLevels, kBackwards>::putIdentical(std::size_t used, const unsigned char* utf16be)
{
    KeyBytes level(m_pOut + used, static_cast<std::size_t>(m_pLimit - m_pOut) - used);
    if (level.room() == 0) {
        return std::nullopt;
    }
    level.put(kLevelEnd);
    const unsigned char* const begin = level.data();
    m_rData.m_pDecompositions->append(utf16be, 2 * m_tText.size(), level);
    // A level that may not fit has moved.
    if (level.data() != begin && used + level.size() <= static_cast<std::size_t>(m_pLimit - m_pOut)) {
        std::memcpy(m_pOut + used, level.data(), level.size());
    }
    return used + level.size();
}

template <unsigned kLevels, bool kBackwards>
std::optional<std::size_t> make(const SortData& data, const unsigned char* utf16be, std::size_t units,
                                unsigned char* out, std::size_t capacity, bool isIdentical)
{
    ShortKey<kLevels, kBackwards> key(data, BigEndianText(utf16be, units), out, capacity);
    if (!key.read()) {
        return std::nullopt;
    }
    return key.put(isIdentical, utf16be);
}

}  // namespace

std::optional<std::size_t> makeShortKey(const SortData& data, const unsigned char* utf16be, std::size_t units,
                                        SortStrength strength, unsigned char* out, std::size_t capacity)
{
    // Each character stores four bytes, of which up to four stay.
    if (units > kMostUnits || capacity < 4 * units + 4) {
        return std::nullopt;
    }
    const bool isFourth = strength >= SortStrength::kQuaternary;
    const bool isFrench = data.m_tRules.isFrench();
    const bool isIdentical = strength == SortStrength::kIdentical;
    if (isFourth && data.m_tRules.isShifted()) {
        return std::nullopt;
    }
    if (isFourth && data.m_pUnshifted != nullptr) {
        return isFrench ? make<4, true>(data, utf16be, units, out, capacity, isIdentical)
                        : make<4, false>(data, utf16be, units, out, capacity, isIdentical);
    }
    if (strength == SortStrength::kPrimary) {
        return make<1, false>(data, utf16be, units, out, capacity, false);
    }
    if (strength == SortStrength::kSecondary) {
        return isFrench ? make<2, true>(data, utf16be, units, out, capacity, false)
                        : make<2, false>(data, utf16be, units, out, capacity, false);
    }
    return isFrench ? make<3, true>(data, utf16be, units, out, capacity, isIdentical)
                    : make<3, false>(data, utf16be, units, out, capacity, isIdentical);
}

}  // namespace vel::nls
