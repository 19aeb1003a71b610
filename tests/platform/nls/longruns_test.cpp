#include "longruns.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "builtsort.h"
#include "sortpairs.h"
#include "vel/nls/sorttable.h"

// Long runs of marks: their order is ICU's, and their time is not the square of their number as ICU's is.

namespace {

using namespace vel::nls;
using namespace builtsort;

std::u16string repeated(std::u16string_view pattern, std::size_t units)
{
    std::u16string text;
    while (text.size() < units) {
        text += pattern;
    }
    return text;
}

// ----------------------------------------------------------------------------------------------------------------
// order

/// Runs of few different marks, so that much belongs together; some change places, some are made of two.
class RunMaker
{
public:
    explicit RunMaker(std::uint32_t seed) : m_tRandom(seed) {}

    std::u16string text()
    {
        static const std::u16string_view kBefore[] = {u"", u"b", u"c", u"\u0DD9", u"-", u"\uE000", u"\u0E40"};
        static const std::u16string_view kBases[] = {u"a",      u"\u00EA", u"\u1EC7", u"z",      u"\u0E01",
                                                     u"\u304B", u"\u0F40", u"\u0DD9", u"\u1025", u"\u0B92",
                                                     u"\u0BC6", u"",       u"\u06C1"};
        static const std::u16string_view kBehind[] = {u"",       u"a",      u"1",      u"\u00B7",
                                                      u"\u0BBE", u"\u0DCF", u"\u102C", u"-e\u0301"};
        std::u16string result(oneOf(kBefore));
        result += oneOf(kBases);
        result += run();
        result += oneOf(kBehind);
        return below(3) == 0 ? result + run() : result;
    }
    /// The same but for one unit.
    std::u16string changed(std::u16string text)
    {
        const std::u16string_view mark = someMark();
        const std::size_t place = below(text.size() + 1);
        // Not within a character of two units.
        if (place < text.size() && (text[place] & 0xFC00) == 0xDC00) {
            return text + std::u16string(mark);
        }
        return text.insert(place, mark);
    }

private:
    template <typename Texts>
    std::u16string_view oneOf(const Texts& texts)
    {
        return texts[below(std::size(texts))];
    }
    std::size_t below(std::size_t limit) { return m_tRandom() % limit; }
    std::u16string_view someMark()
    {
        static const std::u16string_view kMarks[] = {
            u"\u0300", u"\u0301", u"\u0302", u"\u0306", u"\u0308", u"\u030A", u"\u031B", u"\u0323",
            u"\u0327", u"\u0338", u"\u0340", u"\u0344", u"\u0345", u"\u0F71", u"\u0F72", u"\u0F73",
            u"\u0F74", u"\u0F80", u"\u0F81", u"\u0E38", u"\u0E48", u"\u3099", u"\u309A", u"\u0BD7",
            u"\u0DCA", u"\u102F", u"\u1037", u"\u1039", u"\u0654", u"\u05BC", u"\u1AB0", u"\u20D0"};
        return oneOf(kMarks);
    }
    std::u16string run()
    {
        std::vector<std::u16string_view> marks(2 + below(4));
        for (std::u16string_view& each : marks) {
            each = someMark();
        }
        std::u16string result;
        for (std::size_t count = 17 + below(30); count > 0; --count) {
            result += oneOf(marks);
        }
        return result;
    }

    std::mt19937 m_tRandom;
};

class LongRunsOf : public testing::TestWithParam<const char*>
{};

TEST_P(LongRunsOf, AreInTheOrderOfIcusKeys)
{
    const auto kept = SortTable::open(GetParam());  // else it is built for each family
    RunMaker maker(20'051'114);
    for (int i = 0; i < 60; ++i) {
        std::vector<std::u16string> texts{maker.text()};
        while (texts.size() < 6) {
            texts.push_back(maker.changed(texts[texts.size() / 2]));
        }
        const sortpairs::Report report = sortpairs::compareTexts(GetParam(), texts);
        ASSERT_EQ(report.m_nDifferences, 0U) << report.m_sFirst;
    }
}

INSTANTIATE_TEST_SUITE_P(Sorts, LongRunsOf,
                         testing::Values("und", "sv", "vi", "th", "lo", "hi", "my", "ta", "si", "ja", "ar", "he",
                                         "fr-CA", "en-u-ka-shifted", "en-u-ka-shifted-kk", "da-u-kk", "ja-u-kk",
                                         "en-u-kn-kk"));

// ---------------------------------------------------------------------------------------------------------------- work

TEST(LongRuns, WhatBelongsTogetherIsFoundThoughManyStandBetween)
{
    // "e" takes the circumflex above it past any number of dots below it, as it does past one.
    const auto vietnamese = build("vi");
    const std::u16string dots(5'000, u'\u0323');
    EXPECT_EQ(longKey(*vietnamese, u"e\u0302" + dots, SortStrength::kPrimary),
              longKey(*vietnamese, u"\u00EA", SortStrength::kPrimary));
    EXPECT_EQ(longKey(*vietnamese, u"e\u0302" + dots), longKey(*vietnamese, u"e" + dots + u"\u0302"));
    EXPECT_EQ(longKey(*vietnamese, u"\u00EA" + dots), longKey(*vietnamese, u"e" + dots + u"\u0302"));
    // A tilde is above as well: the circumflex behind it stays where it is.
    EXPECT_EQ(longKey(*vietnamese, u"e" + dots + u"\u0303\u0302", SortStrength::kPrimary),
              longKey(*vietnamese, u"e", SortStrength::kPrimary));
}

TEST(LongRuns, TheWorkGrowsWithTheirLength)
{
    constexpr std::size_t kUnits = 3'000;
    const std::u16string_view patterns[] = {u"\u0F71\u0F72\u0F74", u"\u0F74\u0F72\u0F71", u"\u0F73\u0F71",
                                            u"\u0F71\u0338\u0323", u"\u0302\u0323",       u"\u0323\u0302\u0306",
                                            u"\u0F71\u0301\u0323", u"\u0BC6\u0301",       u"\u3099\u0323",
                                            u"\u0344\u0340\u0F80", u"\u1039\u1037"};
    for (const char* sort : {"und", "vi", "th", "my", "ja", "da-u-kk", "en-u-ka-shifted-kk"}) {
        const auto data = build(sort);
        for (const std::u16string_view pattern : patterns) {
            for (const std::u16string_view base : {u"a", u"\u1EC7", u"\u0F40"}) {
                const auto workAt = [&](std::size_t units) {
                    return workOf(*data,
                                  std::u16string(base) + repeated(pattern, units) + repeated(u"\u0F72", units / 3));
                };
                const KeyWork once = workAt(kUnits);
                const KeyWork fourTimes = workAt(4 * kUnits);
                EXPECT_EQ(fourTimes.m_nSlowUnits, 0U) << sort << " " << testsupport::bytesOf(pattern);
                EXPECT_LE(fourTimes.m_nRunWork, 5 * once.m_nRunWork + 100)
                    << sort << " " << testsupport::bytesOf(pattern);
                EXPECT_LE(fourTimes.m_nRunWork, 40 * 4 * kUnits) << sort << " " << testsupport::bytesOf(pattern);
            }
        }
    }
}

TEST(LongRuns, ThatFollowEachOtherAreReadOnce)
{
    // Never five plain letters in a row, behind which the text could be cut.
    const auto data = build("vi");
    const std::u16string part = u"ab" + repeated(u"\u0F71\u0F74\u0F72", 18);
    const KeyWork once = workOf(*data, repeated(part, 2'000));
    const KeyWork fourTimes = workOf(*data, repeated(part, 8'000));
    EXPECT_GT(once.m_nRunWork, 2'000U);
    EXPECT_LE(fourTimes.m_nRunWork, 5 * once.m_nRunWork);
    EXPECT_EQ(fourTimes.m_nSlowUnits, 0U);
}

}  // namespace
