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

struct Case
{
    const char* m_szReason;
    const char* m_szSort;
    std::vector<std::u16string> m_tTexts;
};

// What made texts once found, cut down to what matters.
TEST(SortOrderCases, AreInTheOrderOfIcusKeys)
{
    const Case cases[] = {
        // ICU's keys are the same: the first letter of U+AC41 has no primary weight behind another U+1100.
        {"letters of a syllable are read with what stands before the syllable",
         "ko-u-co-searchjl",
         {u"\uAC41\uFE86", u"\u1100\u1100\uAC41\uFE86", u"\u1101\uAC41", u"\u1103\u1103\u1175", u"\uB514\uB514"}},
        // ICU's keys of the first two are the same: U+0653 (class 230) belongs behind U+0E39 (class 103), which is a
        // letter, so what is behind it is not ignored any more.
        {"a mark that is ignored changes places with one that is a letter",
         "th",
         {u"\u2055\u0653\u0E39", u"\u2055\u0E39\u0653", u"\u2055\u0E39", u"\u2055\u0653\u0653\u0E39"}},
        {"so it does without a table's own language",
         "und-u-ka-shifted-kk",
         {u"-\u0653\u0E39a", u"-\u0E39\u0653a", u"-\u0E39a", u"-\u0653a", u"-\u0653\u0308a", u"-\u0653\u0EB8a"}},
        {"a mark ends a sequence of three",
         "az",
         {u"\u0DD9\u0DCF\u0305\u0DCA", u"\u0DD9\u0DCF\u0DCA\u0305", u"\u0DD9\u0DCF\u0DCA", u"\u0DD9\u0DCFa",
          u"\u0DD9\u0DCF\u0334\u0DCA", u"\u0DD9\u0DCF\u03341"}},
        // ICU's keys of the first two are the same: U+0336 (class 1) belongs before the marks of U+1EE2.
        {"a letter that ends in marks and begins a sequence stands within one",
         "zh-u-kk",
         {u"\uFDD0\u1EE2\u0336", u"\uFDD0O\u0336\u031B\u0323", u"\uFDD0\u1EE2", u"\uFDD0O\u0336",
          u"\uFDD0\u1ED8\u031B\u0336", u"\u1EE2\u0336"}},
    };
    for (const Case& test : cases) {
        const sortpairs::Report report = sortpairs::compareTexts(test.m_szSort, test.m_tTexts);
        EXPECT_EQ(report.m_nDifferences, 0U) << test.m_szReason << ": " << report.m_sFirst;
    }
}

}  // namespace
