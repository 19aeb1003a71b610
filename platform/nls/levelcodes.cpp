#include "levelcodes.h"

#include <algorithm>

namespace vel::nls {

namespace {

constexpr unsigned char kLowBase = 0x03;
constexpr unsigned char kLast = 0xFE;

}  // namespace

LevelCodes::LevelCodes(std::uint16_t common, unsigned char top, const std::map<std::uint16_t, std::size_t>& counts)
    : m_nCommon(common)
{
    std::vector<std::pair<std::size_t, std::uint16_t>> low;
    std::vector<std::pair<std::size_t, std::uint16_t>> high;
    for (const auto& [weight, count] : counts) {
        if (weight != 0 && weight != common) {
            (weight < common ? low : high).emplace_back(count, weight);
        }
    }
    assign(std::move(low), kLowBase, top - kLowBase);
    assign(std::move(high), static_cast<unsigned char>(top + 1), kLast - (top + 1U));
    std::sort(m_tWeights.begin(), m_tWeights.end(),
              [](const Weight& left, const Weight& right) { return left.m_nWeight < right.m_nWeight; });
}

/// Codes for the most frequent `room` weights, from the one behind `base` on; `base` itself is for what stands before
/// them all.
void LevelCodes::assign(std::vector<std::pair<std::size_t, std::uint16_t>> weights, unsigned char base,
                        std::size_t room)
{
    std::stable_sort(weights.begin(), weights.end(),
                     [](const auto& left, const auto& right) { return left.first > right.first; });
    weights.resize(std::min(weights.size(), room));
    std::sort(weights.begin(), weights.end(),
              [](const auto& left, const auto& right) { return left.second < right.second; });
    m_tWeights.push_back({static_cast<std::uint16_t>(base == kLowBase ? 0 : m_nCommon), base});
    for (const auto& [count, weight] : weights) {
        m_tWeights.push_back({weight, ++base});
    }
}

LevelCode LevelCodes::codeOf(std::uint16_t weight) const
{
    LevelCode code;
    if (weight == m_nCommon) {
        return code;
    }
    const auto next =
        std::upper_bound(m_tWeights.begin(), m_tWeights.end(), weight,
                         [](std::uint16_t value, const Weight& entry) { return value < entry.m_nWeight; });
    const Weight& before = *std::prev(next);
    code.m_aBytes[0] = before.m_nCode;
    code.m_nLength = 1;
    if (before.m_nWeight != weight) {
        const auto high = static_cast<unsigned char>(weight >> 8);
        const auto low = static_cast<unsigned char>(weight);
        code.m_aBytes = {before.m_nCode, 0xFF, high == 0 ? static_cast<unsigned char>(1) : high,
                         low == 0 ? static_cast<unsigned char>(1) : low};
        code.m_nLength = 4;
    }
    return code;
}

}  // namespace vel::nls
