#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

#include "failingallocator.h"

namespace testsupport {

/// Whether the work ran out of memory at its allocation of that number.
template <typename Work>
bool failsAt(std::size_t nth, const Work& work)
{
    try {
        const FailingAllocations failing(nth);
        work();
        return false;
    } catch (const std::bad_alloc&) {
        return true;
    }
}

/// Runs the work with its n-th allocation failing for every n until it succeeds. `check` runs after every failure.
template <typename Work, typename Check>
void failEverywhere(const Work& work, const Check& check)
{
    std::size_t nth = 0;
    while (failsAt(nth, work)) {
        check();
        ASSERT_FALSE(testing::Test::HasFailure()) << "at allocation " << nth;
        ASSERT_LT(++nth, 100000U);
    }
    EXPECT_LT(0U, nth) << "nothing was allocated: the test tests nothing";
}

}  // namespace testsupport
