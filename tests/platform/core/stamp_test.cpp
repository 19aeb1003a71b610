#include "vel/core/stamp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "eightthreads.h"

namespace {

TEST(Stamp, NoTwoAreEqualOnWhateverThreadTheyAreTakenAndNoneIsZero)
{
    std::array<std::vector<std::uint64_t>, testsupport::kThreads> taken;
    testsupport::faultsOf([&](int thread) {
        for (int i = 0; i < 1000; ++i) {
            taken[static_cast<std::size_t>(thread)].push_back(vel::newStamp());
        }
        return 0;
    });
    std::vector<std::uint64_t> all;
    for (const std::vector<std::uint64_t>& each : taken) {
        all.insert(all.end(), each.begin(), each.end());
    }
    std::sort(all.begin(), all.end());
    EXPECT_EQ(8000U, all.size());
    EXPECT_EQ(all.end(), std::adjacent_find(all.begin(), all.end()));
    EXPECT_NE(0U, all.front());
}

}  // namespace
