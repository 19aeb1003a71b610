#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vel::nls {

/// How much a primary weight matters for short keys.
enum PrimaryRank : std::uint8_t
{
    kHot = 0,     ///< one byte
    kCommon = 1,  ///< two bytes
    kHan = 2,     ///< two bytes where there is room
    kRare = 3     ///< more bytes
};

struct RankedPrimary
{
    std::uint32_t m_nWeight;
    PrimaryRank m_eRank;
};

/// The bytes of one primary weight in a key.
struct PrimaryCode
{
    std::array<unsigned char, 12> m_aBytes{};
    std::uint8_t m_nLength = 0;
};

/// Gives primary weights their bytes: shorter ones than ICU's, in the same order.
///
/// No code is the beginning of another, but for the byte FF, which never begins a code: what follows a weight in the
/// order without a code of its own is that weight's code, FF, and more. Lead bytes are 03..FE.
///
///     hot                        lead
///     between two hot ones       lead + byte, or lead + byte + byte
///     where leads are too many   code of the hot one before + FF + 03..FE [+ byte]
///     not known to the table     code of the known one before + FF 02 + the four bytes of the weight, 01 for 00
class PrimaryCodes
{
public:
    /// `primaries` in order, without 0 and without repetition, the first being lower than all that can come.
    explicit PrimaryCodes(std::vector<RankedPrimary> primaries);

    PrimaryCode codeOf(std::uint32_t weight) const;
    std::size_t size() const noexcept { return m_tWeights.size(); }
    std::size_t memory() const noexcept
    {
        return m_tWeights.capacity() * 4 + m_tCodes.capacity() * 4 + m_tStarts.capacity() * 4;
    }

private:
    struct Gap
    {
        std::size_t m_nBegin;
        std::size_t m_nEnd;
        std::size_t m_nLeads;  ///< what it needs; 0 once it is to do without
    };

    std::vector<Gap> findGaps(PrimaryRank lastCommon) const;
    std::size_t leadsOf(std::size_t begin, std::size_t end, PrimaryRank lastCommon) const;
    bool allot(PrimaryRank lastCommon);
    void assign(const std::vector<Gap>& gaps, PrimaryRank lastCommon);
    void assignLeads(const Gap& gap, std::size_t lead, PrimaryRank lastCommon);
    void assignBehind(const Gap& gap);

    std::vector<RankedPrimary> m_tRanked;  ///< while building
    std::vector<std::uint32_t> m_tWeights;
    /// For the upper 16 bits of a weight, how many weights are lower than all with these; one more at the end.
    std::vector<std::uint32_t> m_tStarts;
    /// The bytes from the lowest on; no byte of a code is 0.
    std::vector<std::uint32_t> m_tCodes;
};

}  // namespace vel::nls
