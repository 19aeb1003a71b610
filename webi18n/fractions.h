#pragma once

#include <cstddef>
#include <cstdint>

namespace vel::i18n_details {

constexpr std::size_t kMaxFractionDigits = 9;

/// The value of `digits` fraction digits in nanoseconds; `digits` at most kMaxFractionDigits. Wraps in 32 bits.
///
///     5, 1 -> 500000000    123, 3 -> 123000000    0, 0 -> 0
constexpr std::uint32_t scaleToNanoseconds(std::uint32_t value, std::size_t digits) noexcept
{
    for (; digits < kMaxFractionDigits; ++digits) {
        value *= 10;
    }
    return value;
}

}  // namespace vel::i18n_details
