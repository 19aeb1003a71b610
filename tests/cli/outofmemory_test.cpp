// Memory runs out at every allocation of a run of the command, from its first instruction on.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "command.h"

namespace clitest {

namespace {

constexpr int kLoaderFailed = 127;

Outcome runFailingFrom(std::size_t allocation, const Arguments& arguments)
{
    // For what this process starts; it is none of its own any more.
    setenv("LD_PRELOAD", WEBI18N_FAILING_MEMORY, 1);
    setenv("FAILING_ALLOCATION", std::to_string(allocation).c_str(), 1);
    Outcome outcome = run(arguments);
    unsetenv("LD_PRELOAD");
    return outcome;
}

/// Tries allocations from `first` on, all to begin with and then fewer and fewer, until a run does not need so many.
/// How many runs said that memory ran out.
std::size_t failEverywhere(std::size_t first, const Arguments& arguments)
{
    constexpr std::size_t kAll = 400;
    std::size_t told = 0;
    for (std::size_t each = first;; each += each < kAll ? 1 : each / 8) {
        const Outcome outcome = runFailingFrom(each, arguments);
        if (outcome.m_nExit == 0) {
            return told;
        }
        if (outcome.m_nExit == kLoaderFailed) {
            continue;  // the system's loader needs memory too
        }
        EXPECT_EQ(outcome.m_nExit, 3) << "at allocation " << each << ": " << outcome.m_sError;
        EXPECT_EQ(outcome.m_sError, "webi18n: error: out of memory\n") << "at allocation " << each;
        if (testing::Test::HasFailure()) {
            return told;
        }
        ++told;
    }
}

}  // namespace

TEST(OutOfMemory, isToldFromTheFirstInstructionOn)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer has allocations of its own";
#endif
    // The first is the reserve of the C++ library, without which nothing can be thrown.
    EXPECT_LT(300U, failEverywhere(1, {"--version"}));
    EXPECT_LT(10U, failEverywhere(400, {"locale", "en-us"}));
    EXPECT_LT(10U, failEverywhere(400, {"explain", "de-CH"}));
}

}  // namespace clitest
