#pragma once

namespace testsupport {

/// -1, 0 or 1, for results of comparisons whose size says nothing.
constexpr int sign(int value) noexcept
{
    return (value > 0 ? 1 : 0) - (value < 0 ? 1 : 0);
}

}  // namespace testsupport
