#pragma once

#include <optional>
#include <string_view>

namespace cli {

/// The digits behind the decimal separator that ISO 4217 gives a code; nothing for a text that is none of its codes of
/// today, and for one without a minor unit.
///
///     EUR -> 2    JPY -> 0    KWD -> 3    XAU -> (nothing)    eur -> (nothing)    XBT -> (nothing)
std::optional<int> isoDigits(std::wstring_view code) noexcept;

/// Whether it is a code without a minor unit, such as XAU.
bool isWithoutIsoDigits(std::wstring_view code) noexcept;

}  // namespace cli
