#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vel::nls {

/// The codes of the simple ASCII characters: those of one element, one primary byte and no accent.
class AsciiCodes
{
public:
    /// The codes of up to 16 characters.
    struct Block
    {
        std::size_t m_nCount;  ///< of simple characters, up to the first other one
        std::uint32_t
            m_nUncommon;  ///< a bit for each of them whose tertiary weight is not the common one, first lowest
        alignas(16) unsigned char m_aTertiary[16];
    };
    /// A block's characters, and the room that its primary bytes need.
    static constexpr std::size_t kBlock = 16;

    /// Reads with AVX2 where the processor has it, unless `mayVectorise` is false.
    explicit AsciiCodes(bool mayVectorise = true) noexcept;

    /// `primary` not 0; `tertiary` 0: common. Once for each character.
    void set(unsigned char c, unsigned char primary, unsigned char tertiary) noexcept;

    /// Reads UTF-16BE, `units` of them or 16 when they are more; `units` not 0. Writes the primary bytes to `out`, and
    /// what it likes behind them, up to 16 bytes in all.
    void read(const unsigned char* utf16be, std::size_t units, unsigned char* out, Block& block) const noexcept
    {
        m_bVectorised ? readAvx2(utf16be, units, out, block) : readSingly(utf16be, units, out, block);
    }

private:
    /// Sixteen characters. The codes are xor those of the row before: a character's code is the xor of all rows up to
    /// its own, so no row has to be chosen.
    struct Row
    {
        alignas(32) unsigned char m_aFirst[32];  ///< the first character, everywhere
        alignas(32) unsigned char m_aPrimary[16];
        unsigned char m_aTertiary[16];
    };
    static constexpr std::size_t kRow = 16;
    static constexpr std::size_t kFirstRow = 2;  ///< the characters before are control characters, which are not simple
    static constexpr std::size_t kRows = 6;

    void readSingly(const unsigned char* utf16be, std::size_t units, unsigned char* out, Block& block) const noexcept;
    void readAvx2(const unsigned char* utf16be, std::size_t units, unsigned char* out, Block& block) const noexcept;

    bool m_bVectorised;
    std::array<Row, kRows> m_aRows{};
    std::array<unsigned char, 128> m_aPrimary{};  ///< 0: not simple
    std::array<unsigned char, 128> m_aTertiary{};
};

}  // namespace vel::nls
