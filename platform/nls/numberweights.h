#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "icuhandles.h"

namespace vel::nls {

/// The value of a decimal digit of any script, -1 for other characters.
int digitValue(char32_t c) noexcept;

/// The primary weights of numbers in a sort that orders digits by the value that they have together. They are computed
/// as ICU computes them: a number of any length is one or more weights with the lead byte of numbers, whose other bytes
/// are, with leading zeros left out,
///
///     below 74               02 + value
///     the next 40 * 254      4C + high, 02 + low                        in base 254
///     the next 16 * 254^2    74 + high, 02 + middle, 02 + low           the same
///     seven digits and more  80 + pairs of digits, 0B + 2 * each pair   without pairs of zeros at the end, the last
///                                                                       one less by one
///
/// Digits beyond 254 begin another number.
class NumberWeights
{
public:
    /// The most weights that a number of `digits` digits has.
    static constexpr std::size_t mostWeights(std::size_t digits) noexcept
    {
        return digits / 6 + 2 * (digits / 254) + 2;
    }

    /// Looks at some numbers of `collator`: where their weights are others, or it does not read numbers, none are
    /// computed. Throws std::bad_alloc.
    explicit NumberWeights(const UCollator* collator);

    bool areComputed() const noexcept { return m_bComputed; }
    /// Writes the weights of a number, `count` digits from 0 to 9, to `out`; returns how many. `count` not 0.
    std::size_t weightsOf(const std::uint8_t* digits, std::size_t count, std::uint32_t* out) const noexcept;

private:
    bool isRight(const UCollator* collator, const char16_t* number) const;

    std::uint32_t m_nLead = 0;
    bool m_bComputed = false;
};

}  // namespace vel::nls
