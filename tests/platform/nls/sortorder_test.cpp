#include <gtest/gtest.h>

#include "sortpairs.h"

namespace {

// Each pair at five strengths. Sanitizers take long for the same code.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kPairs = 300;
#else
constexpr std::size_t kPairs = 8'000;
#endif

class SortOrder : public testing::TestWithParam<const char*>
{};

TEST_P(SortOrder, IsThatOfIcusKeys)
{
    const sortpairs::Report report = sortpairs::comparePairs(GetParam(), kPairs, 20'050'101);
    EXPECT_GE(report.m_nPairs, kPairs);
    EXPECT_EQ(report.m_nDifferences, 0U) << report.m_sFirst;
}

INSTANTIATE_TEST_SUITE_P(Sorts, SortOrder,
                         testing::Values("und", "sv", "de-u-co-phonebk", "fr-CA", "ru", "ar", "th", "ja", "ko", "zh",
                                         "zh-u-co-stroke", "cs", "hu", "da", "vi", "lo", "hi", "ta", "km",
                                         "es-u-co-trad", "lt", "tr", "ig", "my", "en-u-ka-shifted", "da-u-kf-upper",
                                         "en-u-kf-lower", "en-u-kn", "ja-u-ka-shifted", "ar-u-kb", "fr-CA-u-kf-upper",
                                         "da-u-kk", "en-u-kc", "en-u-kr-grek-latn-digit"));

}  // namespace
