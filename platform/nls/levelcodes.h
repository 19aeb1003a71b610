#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace vel::nls {

/// The bytes of one secondary or tertiary weight in a key: none for the common weight.
struct LevelCode
{
    std::array<unsigned char, 4> m_aBytes{};
    std::uint8_t m_nLength = 0;
};

/// Gives the weights of one level their bytes, see docs/sort-keys.md. Codes up to `kTop` of the level belong to weights
/// below the common one. Weights that are too many, or not known, take the code of the one before, FF, and their own
/// two bytes, 01 for 00.
class LevelCodes
{
public:
    /// `counts` has the weights, and how many characters have each. `top` is the byte of a run of one common weight
    /// before a higher weight.
    LevelCodes(std::uint16_t common, unsigned char top, const std::map<std::uint16_t, std::size_t>& counts);

    /// `weight` not 0.
    LevelCode codeOf(std::uint16_t weight) const;
    std::size_t memory() const noexcept { return m_tWeights.capacity() * sizeof(Weight); }

private:
    struct Weight
    {
        std::uint16_t m_nWeight;
        unsigned char m_nCode;
    };

    void assign(std::vector<std::pair<std::size_t, std::uint16_t>> weights, unsigned char base, std::size_t room);

    std::uint16_t m_nCommon;
    std::vector<Weight> m_tWeights;
};

}  // namespace vel::nls
