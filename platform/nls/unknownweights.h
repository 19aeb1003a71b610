#pragma once

#include <cstdint>

#include "icuhandles.h"

namespace vel::nls {

/// The weights of characters that ICU has no data for: those for private use, and those that nobody has assigned. They
/// sort behind all others by their code points, so that ICU computes their weights, and so does this.
class UnknownWeights
{
public:
    /// Looks at some characters of `collator`: where their weights are others, no character is unknown. Throws
    /// std::bad_alloc.
    explicit UnknownWeights(const UCollator* collator);

    /// Whether a character that the table does not hold is one of them.
    bool isUnknown(char32_t c) const noexcept;
    /// The number of the character in three digits: of 251, 254 and 18 values, the last ones 14 apart.
    static std::uint32_t primaryOf(char32_t c) noexcept
    {
        constexpr std::uint32_t kLead = 0xFE000000;
        constexpr std::uint32_t kLow = 18;
        constexpr std::uint32_t kMiddle = 254;
        const std::uint32_t number = c + 1;
        const std::uint32_t low = 2 + number % kLow * 14;
        const std::uint32_t middle = 2 + number / kLow % kMiddle;
        const std::uint32_t high = 4 + number / kLow / kMiddle;
        return kLead | (high << 16) | (middle << 8) | low;
    }

private:
    bool m_bComputed;
};

}  // namespace vel::nls
