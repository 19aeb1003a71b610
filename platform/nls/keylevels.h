#pragma once

#include <cstddef>

#include "keybytes.h"
#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// The secondary, tertiary and quaternary bytes of a key in the making; docs/sort-keys.md states the format. Elements
/// are counted by the writer; a weight other than the common one is an event at the number of its element.
class KeyLevels
{
public:
    /// Levels above `strength` are not written.
    KeyLevels(const SortData& data, SortStrength strength);

    bool hasSecondary() const noexcept { return m_nLevels >= 2; }
    bool hasTertiary() const noexcept { return m_nLevels >= 3; }
    /// Whether elements have quaternary weights that count.
    bool hasQuaternary() const noexcept { return m_bQuaternary; }
    bool isShifted() const noexcept { return m_bShifted; }

    /// Makes room for the events of `characters` plain characters.
    void reserve(std::size_t characters)
    {
        m_tSecondary.reserve(characters * (m_bFrench ? sizeof(FrenchEvent) : kEventBytes) + kEventBytes);
        m_tTertiary.reserve(characters * kEventBytes + kEventBytes);
        m_nReserved = characters * kEventBytes + kEventBytes;
    }

    // Need room. `number` counts the elements before this one.
    void secondary(std::size_t number, unsigned char code)
    {
        if (m_bFrench) [[unlikely]] {
            pushFrench({number - m_nSkipped, {{code}, 1}});
            return;
        }
        const std::size_t run = number - m_nSecondaryNext;
        m_nSecondaryNext = number + 1;
        putEvent<kSecondaryTop>(m_tSecondary, run, code);
    }
    void tertiary(std::size_t number, unsigned char code)
    {
        const std::size_t run = number - m_nTertiaryNext;
        m_nTertiaryNext = number + 1;
        putEvent<kTertiaryTop>(m_tTertiary, run, code);
    }

    // These make room.
    void secondary(std::size_t number, const LevelCode& code);
    void tertiary(std::size_t number, const LevelCode& code);
    void quaternary(std::size_t number, unsigned weight);
    void variable(std::size_t number, const PrimaryCode& primary);
    /// U+FFFE parts the text, where accents count from the end.
    void mergeSeparator(std::size_t number);
    /// An element that counts on one of the levels 2 and 3 only.
    void skipSecondary() noexcept
    {
        ++m_nSecondaryNext;
        ++m_nSkipped;
    }
    void skipTertiary() noexcept { ++m_nTertiaryNext; }

    /// Ends the levels; `elements` were counted in all.
    void finish(std::size_t elements);

    struct Checkpoint
    {
        std::size_t m_aSizes[3];
        std::size_t m_aNext[3];
        std::size_t m_nSkipped;
    };
    Checkpoint save() const noexcept
    {
        return {{m_tSecondary.size(), m_tTertiary.size(), m_tQuaternary.size()},
                {m_nSecondaryNext, m_nTertiaryNext, m_nQuaternaryNext},
                m_nSkipped};
    }
    void restore(const Checkpoint& checkpoint) noexcept
    {
        m_tSecondary.shrink(checkpoint.m_aSizes[0]);
        m_tTertiary.shrink(checkpoint.m_aSizes[1]);
        m_tQuaternary.shrink(checkpoint.m_aSizes[2]);
        m_nSecondaryNext = checkpoint.m_aNext[0];
        m_nTertiaryNext = checkpoint.m_aNext[1];
        m_nQuaternaryNext = checkpoint.m_aNext[2];
        m_nSkipped = checkpoint.m_nSkipped;
    }

    const KeyBytes& secondaryBytes() const noexcept { return m_bFrench ? m_tBackwards : m_tSecondary; }
    const KeyBytes& tertiaryBytes() const noexcept { return m_tTertiary; }
    const KeyBytes& quaternaryBytes() const noexcept { return m_tQuaternary; }

private:
    struct FrenchEvent
    {
        std::size_t m_nNumber;
        LevelCode m_tCode;  ///< empty: a separator
    };
    static constexpr std::size_t kEventBytes = 3;
    static constexpr std::size_t kInline = 1024;

    /// A run of common weights, then a code, one byte each but for long runs.
    template <unsigned char kTop>
    void putEvent(KeyBytes& bytes, std::size_t run, unsigned char code)
    {
        constexpr std::size_t kSpan = kTop - 2;
        if (code > kTop && run <= kSpan) [[likely]] {
            unsigned char* end = bytes.end();
            *end = static_cast<unsigned char>(kTop + 1 - run);
            end += run != 0;
            *end++ = code;
            bytes.setEnd(end);
            return;
        }
        putLongRun(bytes, run, kTop, code > kTop);
        bytes.put(code);
    }
    void putLongRun(KeyBytes& bytes, std::size_t run, unsigned top, bool isHigher);
    void pushFrench(const FrenchEvent& event);
    void finishFrench(std::size_t elements);
    void putQuaternaryRun(std::size_t run, bool isHigher);

    unsigned m_nLevels;
    bool m_bFrench;
    bool m_bShifted;
    bool m_bQuaternary;
    std::size_t m_nReserved = 0;
    /// Elements that do not count on level 2.
    std::size_t m_nSkipped = 0;
    std::size_t m_nSecondaryNext = 0;
    std::size_t m_nTertiaryNext = 0;
    std::size_t m_nQuaternaryNext = 0;
    unsigned char m_aSecondary[kInline];
    unsigned char m_aTertiary[kInline];
    KeyBytes m_tSecondary{m_aSecondary, sizeof m_aSecondary};
    KeyBytes m_tTertiary{m_aTertiary, sizeof m_aTertiary};
    KeyBytes m_tBackwards{nullptr, 0};
    KeyBytes m_tQuaternary{nullptr, 0};
};

}  // namespace vel::nls
