#include "vel/core/textnumbers.h"

#include <gtest/gtest.h>

#include <string>

#include "faileverywhere.h"

namespace {

using vel::TextNumbers;

TEST(TextNumbers, TextsAreNumberedInTheOrderInWhichTheyAreAdded)
{
    TextNumbers numbers;
    EXPECT_EQ(0U, numbers.add(L"a"));
    EXPECT_EQ(1U, numbers.add(L""));
    EXPECT_EQ(2U, numbers.add(L"ab"));
    EXPECT_EQ(0U, numbers.add(L"a"));
    EXPECT_EQ(1U, numbers.add(L""));
    EXPECT_EQ(3U, numbers.size());
    EXPECT_EQ(0U, numbers.find(L"a"));
    EXPECT_EQ(1U, numbers.find(L""));
    EXPECT_EQ(2U, numbers.find(L"ab"));
    EXPECT_EQ(2U, numbers.find(L"ab", vel::hashText(L"ab")));
}

TEST(TextNumbers, TextsCompareExactly)
{
    TextNumbers numbers;
    numbers.add(L"ab");
    numbers.add(std::wstring_view(L"x\0y", 3));
    for (const wchar_t* other : {L"", L"a", L"b", L"AB", L"abc", L"ab ", L"x"}) {
        EXPECT_EQ(TextNumbers::kNone, numbers.find(other));
    }
    EXPECT_EQ(1U, numbers.find(std::wstring_view(L"x\0y", 3)));
}

TEST(TextNumbers, AnEmptyOneFindsNothing)
{
    const TextNumbers numbers;
    EXPECT_EQ(0U, numbers.size());
    EXPECT_EQ(TextNumbers::kNone, numbers.find(L""));
    EXPECT_EQ(TextNumbers::kNone, numbers.find(L"a"));
}

TEST(TextNumbers, OfThousandsEachIsFoundAndNoneBesides)
{
    constexpr std::uint32_t kMany = 5000;
    TextNumbers numbers;
    for (std::uint32_t i = 0; i < kMany; ++i) {
        ASSERT_EQ(i, numbers.add(std::to_wstring(i)));
    }
    for (std::uint32_t i = 0; i < kMany; ++i) {
        ASSERT_EQ(i, numbers.find(std::to_wstring(i)));
        ASSERT_EQ(TextNumbers::kNone, numbers.find(std::to_wstring(i + kMany)));
    }
}

TEST(TextNumbers, ClearingStartsAgainAtZero)
{
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    TextNumbers numbers;
    numbers.add(L"a");
    numbers.clear();
    EXPECT_EQ(before, testsupport::outstandingBlocks());
    EXPECT_EQ(TextNumbers::kNone, numbers.find(L"a"));
    EXPECT_EQ(0U, numbers.add(L"b"));
}

TEST(TextNumbers, WithRoomMadeAddingAllocatesNothing)
{
    TextNumbers numbers;
    numbers.add(L"first");
    numbers.reserve(100, 200);
    const std::wstring text(200, L'x');
    const testsupport::AllocationCount allocations;
    for (std::size_t length = 2; length <= 200; length += length) {
        numbers.add(std::wstring_view(text).substr(0, length / 2));
    }
    EXPECT_EQ(0U, allocations.value());
}

TEST(TextNumbers, WhenMemoryRunsOutNothingHasChanged)
{
    const std::wstring text(100, L'x');
    TextNumbers numbers;
    for (std::size_t length = 0; length < 8; ++length) {
        numbers.add(std::wstring_view(text).substr(0, length));
    }
    testsupport::failEverywhere([&] { numbers.add(text); },
                                [&] {
                                    EXPECT_EQ(8U, numbers.size());
                                    EXPECT_EQ(TextNumbers::kNone, numbers.find(text));
                                    EXPECT_EQ(7U, numbers.find(L"xxxxxxx"));
                                });
    EXPECT_EQ(8U, numbers.find(text));
}

}  // namespace
