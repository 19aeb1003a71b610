#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "sortdata.h"

// The levels of a short key behind the first, while its text is read. docs/sort-keys.md states the format.

namespace vel::nls {

/// The most code units of a short text.
inline constexpr std::size_t kMostShortUnits = 256;

/// Bytes of one level. Most levels are a few bytes, or none: the latest eight are kept in a register, for bytes that
/// are stored one by one cannot be copied at once before all of them have arrived.
class ShortBytes
{
public:
    /// The latest bytes, the first one lowest.
    struct Latest
    {
        std::uint64_t m_nBytes = 0;
        std::size_t m_nSize = 0;

        bool hasRoom(std::size_t count) const noexcept { return m_nSize + count <= sizeof m_nBytes; }
        /// Up to eight bytes, 0 above them; needs room.
        void put(std::uint64_t bytes, std::size_t count) noexcept
        {
            m_nBytes |= bytes << (8 * m_nSize);
            m_nSize += count;
        }
    };

    ShortBytes() noexcept {}  // the block stays as it is

    void put(std::uint64_t bytes, std::size_t count) noexcept
    {
        if (!m_tLatest.hasRoom(count)) [[unlikely]] {
            m_tLatest = spill(m_tLatest);
        }
        m_tLatest.put(bytes, count);
    }
    std::size_t size() const noexcept { return m_nSpilled + m_tLatest.m_nSize; }
    /// Copies them to `out`, which has room for them up to `limit`; what lies behind them may be written over.
    unsigned char* copyTo(unsigned char* out, const unsigned char* limit) const noexcept
    {
        if (m_nSpilled != 0) [[unlikely]] {
            std::memcpy(out, m_aSpilled, m_nSpilled);
            out += m_nSpilled;
        }
        if (limit - out >= static_cast<std::ptrdiff_t>(sizeof m_tLatest.m_nBytes)) [[likely]] {
            std::memcpy(out, &m_tLatest.m_nBytes, sizeof m_tLatest.m_nBytes);
        } else {
            std::memcpy(out, &m_tLatest.m_nBytes, m_tLatest.m_nSize);
        }
        return out + m_tLatest.m_nSize;
    }

    // Who puts many at once keeps the latest bytes himself meanwhile.
    Latest latest() const noexcept { return m_tLatest; }
    void setLatest(Latest latest) noexcept { m_tLatest = latest; }
    /// Takes them over; returns none.
    Latest spill(Latest latest) noexcept
    {
        std::memcpy(m_aSpilled + m_nSpilled, &latest.m_nBytes, sizeof latest.m_nBytes);
        m_nSpilled += latest.m_nSize;
        return {};
    }

private:
    Latest m_tLatest;
    std::size_t m_nSpilled = 0;
    /// Up to three bytes for each event, those of long runs, and what the last store writes beyond.
    unsigned char m_aSpilled[4 * kMostShortUnits];
};

/// The weights of a level that are not the common one, each with the number of its element.
template <unsigned char kTop>
class LevelEvents
{
public:
    /// False where the run before a lower weight is too long for a short key.
    bool add(std::size_t number, unsigned char code) noexcept
    {
        const std::size_t run = number - m_nNext;
        m_nNext = number + 1;
        if (isUsual(run, code)) [[likely]] {
            m_tBytes.put(usualBytes(run, code), usualSize(run));
            return true;
        }
        return addRare(run, code);
    }
    /// The same for characters of one element each, the first of which has that number: those that have a bit in
    /// `uncommon`, with their code in `codes`.
    bool addAll(std::size_t number, std::uint32_t uncommon, const unsigned char* codes) noexcept
    {
        ShortBytes::Latest latest = m_tBytes.latest();
        std::size_t next = m_nNext;
        for (; uncommon != 0; uncommon &= uncommon - 1) {
            const auto lane = static_cast<std::size_t>(__builtin_ctz(uncommon));
            const std::size_t run = number + lane - next;
            if (!isUsual(run, codes[lane])) [[unlikely]] {
                break;
            }
            next = number + lane + 1;
            if (!latest.hasRoom(usualSize(run))) [[unlikely]] {
                latest = m_tBytes.spill(latest);
            }
            latest.put(usualBytes(run, codes[lane]), usualSize(run));
        }
        m_tBytes.setLatest(latest);
        m_nNext = next;
        return uncommon == 0 || addOneByOne(number, uncommon, codes);
    }
    const ShortBytes& bytes() const noexcept { return m_tBytes; }

private:
    static constexpr std::size_t kLongestRun = kTop - 2;
    static constexpr std::size_t kLongestLowRun = 251;

    /// A higher weight behind a run of one byte, or none.
    static bool isUsual(std::size_t run, unsigned char code) noexcept { return code > kTop && run <= kLongestRun; }
    static std::size_t usualSize(std::size_t run) noexcept { return run != 0 ? 2 : 1; }
    /// Those of the run and the code; the first one falls away where there is no run.
    static std::uint64_t usualBytes(std::size_t run, unsigned char code) noexcept
    {
        const std::uint64_t both = (kTop + 1 - run) | (std::uint64_t{code} << 8);
        return both >> (run != 0 ? 0 : 8);
    }

    [[gnu::noinline]] bool addOneByOne(std::size_t number, std::uint32_t uncommon, const unsigned char* codes) noexcept
    {
        bool isAdded = true;
        for (; uncommon != 0; uncommon &= uncommon - 1) {
            const auto lane = static_cast<std::size_t>(__builtin_ctz(uncommon));
            isAdded = add(number + lane, codes[lane]) && isAdded;
        }
        return isAdded;
    }
    [[gnu::noinline]] bool addRare(std::size_t run, unsigned char code) noexcept
    {
        if (code <= kTop) {
            m_tBytes.put(0x01 | ((0x03 + run) << 8) | (std::uint64_t{code} << 16), 3);
            return run <= kLongestLowRun;
        }
        for (; run > kLongestRun; run -= kLongestRun) {
            m_tBytes.put(0x03, 1);
        }
        if (run != 0) {
            m_tBytes.put(kTop + 1 - run, 1);
        }
        m_tBytes.put(code, 1);
        return true;
    }

    std::size_t m_nNext = 0;
    ShortBytes m_tBytes;
};

/// Accents that count from the end: kept with their numbers until all are known.
class BackwardEvents
{
public:
    BackwardEvents() noexcept {}  // the array stays as it is

    void add(std::size_t number, unsigned char code) noexcept
    {
        m_aEvents[m_nCount++] = {static_cast<std::uint32_t>(number), code};
    }
    /// False where the level is too hard for a short key.
    bool writeTo(LevelEvents<kSecondaryTop>& level, std::size_t elements) const noexcept
    {
        bool isWritten = true;
        for (std::size_t i = m_nCount; i-- > 0;) {
            isWritten = level.add(elements - 1 - m_aEvents[i].m_nNumber, m_aEvents[i].m_nCode) && isWritten;
        }
        return isWritten;
    }

private:
    struct Event
    {
        std::uint32_t m_nNumber;
        unsigned char m_nCode;
    };
    std::size_t m_nCount = 0;
    Event m_aEvents[kMostShortUnits];
};

/// The fourth level: what is shifted aside, and the weights of Kana.
class QuaternaryEvents
{
public:
    void addWeight(std::size_t number, unsigned weight) noexcept
    {
        addRun(number - m_nNext, true);
        m_nNext = number + 1;
        m_tBytes.put(0xFB + weight, 1);
    }
    /// `primary` is the code of what stands before the element of that number. False where it is too long for a short
    /// key.
    bool addShifted(std::size_t number, const PrimaryCode& primary) noexcept
    {
        addRun(number - m_nNext, false);
        m_nNext = number;
        const std::uint64_t bytes = std::uint64_t{primary.m_aBytes[0]} | (std::uint64_t{primary.m_aBytes[1]} << 8);
        m_tBytes.put(0x03 | (bytes << 8), 1 + std::size_t{primary.m_nLength});
        return primary.m_nLength <= 2;
    }
    /// `elements` were counted in all. Where nothing is shifted the run at the end says nothing.
    void finish(std::size_t elements, bool isShifted) noexcept
    {
        if (isShifted) {
            addRun(elements - m_nNext, false);
        }
    }
    const ShortBytes& bytes() const noexcept { return m_tBytes; }

private:
    void addRun(std::size_t run, bool isHigher) noexcept
    {
        constexpr std::size_t kSpan = 124;
        for (; run > kSpan; run -= kSpan) {
            m_tBytes.put(isHigher ? 0x80 : 0x7F, 1);
        }
        if (run != 0) {
            m_tBytes.put(isHigher ? 0xFC - run : 0x03 + run, 1);
        }
    }

    std::size_t m_nNext = 0;
    ShortBytes m_tBytes;
};

}  // namespace vel::nls
