#pragma once

#include <cstddef>
#include <string_view>

namespace toy {

/// Whether a number of guests finds a table: from 1 to 4.
constexpr bool isSeated(unsigned guests) noexcept
{
    return guests >= 1 && guests <= 4;
}

/// How many letters `letter` there are in a text.
std::size_t countOf(std::string_view text, char letter) noexcept;

/// The price in cents: 250 each, a tenth less for ten and more.
unsigned priceOf(unsigned pieces) noexcept;

/// Never asked by a test.
int signOf(int value) noexcept;

}  // namespace toy
