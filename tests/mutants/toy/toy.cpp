#include "toy.h"

#include <algorithm>

namespace toy {

namespace {

constexpr unsigned kCents = 250;

}  // namespace

std::size_t countOf(std::string_view text, char letter) noexcept
{
    std::size_t count = 0;
    std::for_each(text.begin(), text.end(), [&](char each) {
        if (each == letter) {
            ++count;
        }
    });
    return count;
}

unsigned priceOf(unsigned pieces) noexcept
{
    const unsigned price = pieces * kCents;
    if (pieces >= 10) {
        return price - price / 10;
    }
    return price;
}

int signOf(int value) noexcept
{
    return value < 0 ? -1 : 1;
}

}  // namespace toy
