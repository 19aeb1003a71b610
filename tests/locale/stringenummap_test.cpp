#include "webi18n/stringenummap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assertioncapture.h"
#include "printers.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::AssertionCapture;
using vel::String;

enum Fruit : unsigned
{
    kApple = 0,
    kPear = 1,
    kPlum = 2,
    kFruitEnd_ = 3
};
using FruitMap = vel::StringEnumMap<Fruit>;

TEST(StringEnumMap, FindsBothWaysWhateverTheOrderOfTheEntries)
{
    const AssertionCapture capture;
    const FruitMap::Entry entries[] = {{kPlum, L"plum"}, {kApple, L"apple"}, {kPear, L"Pear"}};
    const FruitMap map(entries, kFruitEnd_);
    EXPECT_EQ(3U, map.size());
    EXPECT_EQ(kApple, map.find(L"apple"));
    EXPECT_EQ(kPear, map.find(L"Pear"));
    EXPECT_EQ(kPlum, map.find(L"plum"));
    EXPECT_EQ(String(L"apple"), map.find(kApple));
    EXPECT_EQ(String(L"Pear"), map.find(kPear));
    EXPECT_EQ(String(L"plum"), map.find(kPlum));
    EXPECT_THAT(capture.texts(), IsEmpty());
}

TEST(StringEnumMap, AnUnknownNameIsTheSentinel)
{
    const FruitMap::Entry entries[] = {{kApple, L"apple"}, {kPlum, L"plum"}};
    const FruitMap map(entries, kFruitEnd_);
    // Before, between, after, a prefix, an extension, and another case of what is there.
    for (const wchar_t* name : {L"", L"aaa", L"kiwi", L"zebra", L"appl", L"apples", L"Apple"}) {
        EXPECT_EQ(kFruitEnd_, map.find(name)) << testing::PrintToString(String(name));
    }
    EXPECT_TRUE(map.find(kPear).isEmpty());
    EXPECT_TRUE(map.find(kFruitEnd_).isEmpty());
}

TEST(StringEnumMap, AnEntryThatIsRepeatedWholeIsReportedForItsEnumeratorAndForItsName)
{
    const AssertionCapture capture;
    const FruitMap::Entry entries[] = {{kApple, L"apple"}, {kPear, L"pear"}, {kApple, L"apple"}};
    const FruitMap map(entries, kFruitEnd_);
    EXPECT_THAT(capture.texts(), ElementsAre("m_mEnumKeyedMap.find(eEnumValue) == m_mEnumKeyedMap.end()",
                                             "m_mStringKeyedMap.size() == nNewSize"));
    EXPECT_EQ(2U, map.size());
    EXPECT_EQ(kApple, map.find(L"apple"));
    EXPECT_EQ(String(L"apple"), map.find(kApple));
    EXPECT_EQ(kPear, map.find(L"pear"));
}

TEST(StringEnumMap, AnEnumeratorThatStandsTwiceIsReportedAndItsFirstNameStays)
{
    const AssertionCapture capture;
    const FruitMap::Entry entries[] = {{kApple, L"apple"}, {kPear, L"pear"}, {kApple, L"pomme"}};
    const FruitMap map(entries, kFruitEnd_);
    EXPECT_THAT(capture.texts(), ElementsAre("m_mEnumKeyedMap.find(eEnumValue) == m_mEnumKeyedMap.end()"));
    EXPECT_THAT(capture.reports().front().m_sFile, testing::EndsWith("stringenummap.h"));
    EXPECT_LT(0, capture.reports().front().m_nLine);
    EXPECT_EQ(String(L"apple"), map.find(kApple));
    EXPECT_EQ(kApple, map.find(L"pomme")) << "each name leads to its enumerator";
}

TEST(StringEnumMap, ANameThatStandsTwiceIsReportedAndTheFirstEnumeratorStays)
{
    const AssertionCapture capture;
    const FruitMap::Entry entries[] = {{kPear, L"apple"}, {kApple, L"apple"}, {kPlum, L"plum"}};
    const FruitMap map(entries, kFruitEnd_);
    EXPECT_THAT(capture.texts(), ElementsAre("m_mStringKeyedMap.size() == nNewSize"));
    EXPECT_EQ(kPear, map.find(L"apple"));
    EXPECT_EQ(kPlum, map.find(L"plum"));
}

}  // namespace
