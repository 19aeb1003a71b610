#include "vel/core/flatindex.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>

#include "faileverywhere.h"

namespace {

using Index = vel::FlatIndex<int>;

/// What the index finds for a key that is the value itself; -1 for nothing.
int found(const Index& index, std::uint32_t hash, int wanted)
{
    const int* const value = index.find(hash, [wanted](int each) { return each == wanted; });
    return value == nullptr ? -1 : *value;
}

TEST(FlatIndex, AnEmptyOneFindsNothingAndNeedsNoMemory)
{
    const testsupport::AllocationCount allocations;
    const Index index;
    EXPECT_EQ(0U, index.size());
    EXPECT_EQ(-1, found(index, 0, 7));
    EXPECT_EQ(-1, found(index, 12345, 7));
    EXPECT_EQ(0U, allocations.value());
}

TEST(FlatIndex, ValuesAreFoundByTheHashTheyWereAddedWithOnly)
{
    Index index;
    index.add(10, 1);
    index.add(26, 2);  // the same place in a table of 16
    EXPECT_EQ(2U, index.size());
    EXPECT_EQ(1, found(index, 10, 1));
    EXPECT_EQ(2, found(index, 26, 2));
    EXPECT_EQ(-1, found(index, 10, 2));
    EXPECT_EQ(-1, found(index, 42, 1));
}

TEST(FlatIndex, ManyValuesMayHaveOneHash)
{
    for (const std::uint32_t hash : {0U, 1U, 15U, 0xFFFFFFFFU}) {
        Index index;
        for (int value = 0; value < 100; ++value) {
            index.add(hash, value);
        }
        for (int value = 0; value < 100; ++value) {
            EXPECT_EQ(value, found(index, hash, value)) << hash;
        }
        EXPECT_EQ(-1, found(index, hash, 100)) << hash;
        EXPECT_EQ(-1, found(index, hash ^ 0x8000, 5)) << hash;
    }
}

TEST(FlatIndex, AFoundValueCanBeReplaced)
{
    Index index;
    index.add(3, 5);
    *index.find(3, [](int each) { return each == 5; }) = 6;
    EXPECT_EQ(-1, found(index, 3, 5));
    EXPECT_EQ(6, found(index, 3, 6));
    EXPECT_EQ(1U, index.size());
}

TEST(FlatIndex, FindsWhatAMapFinds)
{
    std::mt19937 random(1);
    for (const std::uint32_t mask : {0xFFFFFFFFU, 0xFFFFU, 0x7U, 0xFFFF0000U}) {
        Index index;
        std::map<std::uint32_t, int> expected;
        for (int i = 0; i < 3000; ++i) {
            const std::uint32_t hash = static_cast<std::uint32_t>(random()) & mask;
            const auto known = expected.find(hash);
            ASSERT_EQ(known == expected.end() ? -1 : known->second,
                      found(index, hash, known == expected.end() ? i : known->second));
            if (known == expected.end()) {
                expected.emplace(hash, i);
                index.add(hash, i);
            }
        }
        EXPECT_EQ(expected.size(), index.size());
        for (const auto& [hash, value] : expected) {
            ASSERT_EQ(value, found(index, hash, value));
        }
    }
}

TEST(FlatIndex, CopiesAreIndependentAndSwappingExchangesThem)
{
    Index one;
    one.add(1, 1);
    Index two = one;
    two.add(2, 2);
    EXPECT_EQ(-1, found(one, 2, 2));
    one.swap(two);
    EXPECT_EQ(2U, one.size());
    EXPECT_EQ(2, found(one, 2, 2));
    EXPECT_EQ(1U, two.size());
    EXPECT_EQ(1, found(two, 1, 1));
}

TEST(FlatIndex, ClearingGivesTheMemoryBack)
{
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    Index index;
    index.add(1, 1);
    index.clear();
    EXPECT_EQ(before, testsupport::outstandingBlocks());
    EXPECT_EQ(0U, index.size());
    EXPECT_EQ(-1, found(index, 1, 1));
    index.add(1, 2);
    EXPECT_EQ(2, found(index, 1, 2));
}

TEST(FlatIndex, WithRoomMadeAddingAllocatesNothing)
{
    Index index;
    index.reserve(1000);
    const testsupport::AllocationCount allocations;
    for (int value = 0; value < 1000; ++value) {
        index.add(static_cast<std::uint32_t>(value) * 7919, value);
    }
    EXPECT_EQ(0U, allocations.value());
    EXPECT_EQ(999, found(index, 999U * 7919, 999));
}

TEST(FlatIndex, WhenMemoryRunsOutNothingHasChanged)
{
    Index full;
    for (int value = 0; value < 8; ++value) {
        full.add(static_cast<std::uint32_t>(value), value);
    }
    testsupport::failEverywhere([&] { full.add(8, 8); },
                                [&] {
                                    EXPECT_EQ(8U, full.size());
                                    EXPECT_EQ(7, found(full, 7, 7));
                                    EXPECT_EQ(-1, found(full, 8, 8));
                                });
    EXPECT_EQ(8, found(full, 8, 8));
}

}  // namespace
