#include "vel/core/stringbuffer.h"

#include <gtest/gtest.h>

#include <new>

#include "assertioncapture.h"
#include "failingallocator.h"
#include "printers.h"

namespace {

using testsupport::AssertionCapture;
using vel::String;
using vel::StringBuffer;
using vel::StringBufferBase;

const char kTooLong[] = "nSize < (1ULL << 31)";

TEST(StringBuffer, AppendsToItsInlineBlockWithoutAllocating)
{
    const testsupport::AllocationCount allocations;
    StringBuffer<8> buffer;
    EXPECT_TRUE(buffer.isEmpty());
    EXPECT_EQ(buffer.capacity(), 8U);
    buffer.append(L"abc");
    buffer.append(L'd');
    buffer.append(L"");
    buffer.append(L"efgh");
    EXPECT_EQ(buffer.length(), 8U);
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abcdefgh"));
    EXPECT_EQ(std::wstring_view(buffer).data(), buffer.data());
    EXPECT_EQ(allocations.value(), 0U);
    EXPECT_EQ(buffer.toString(), L"abcdefgh");
}

struct Growth
{
    std::size_t m_nLength;
    std::size_t m_nCapacity;
};

// Works out from the rule: the smallest 2^k - 1, k >= 6, that holds the length.
const Growth kGrowth[] = {{9, 63},      {63, 63},     {64, 127},    {127, 127},     {128, 255},
                          {255, 255},   {256, 511},   {511, 511},   {512, 1023},    {1023, 1023},
                          {1024, 2047}, {4095, 4095}, {4096, 8191}, {65535, 65535}, {65536, 131071}};

TEST(StringBuffer, GrowsToPowersOfTwoLessOne)
{
    for (const Growth& row : kGrowth) {
        StringBuffer<8> atOnce;
        atOnce.append(std::wstring(row.m_nLength, L'x'));
        EXPECT_EQ(atOnce.capacity(), row.m_nCapacity) << row.m_nLength;
        EXPECT_EQ(atOnce.length(), row.m_nLength);

        StringBuffer<8> reserved;
        reserved.reserve(row.m_nLength);
        EXPECT_EQ(reserved.capacity(), row.m_nCapacity) << row.m_nLength;
        EXPECT_TRUE(reserved.isEmpty());
    }
}

TEST(StringBuffer, GrowsOneCharacterAtATime)
{
    StringBuffer<1> buffer;
    std::wstring expected;
    for (std::size_t i = 0; i < 5000; ++i) {
        const wchar_t character = static_cast<wchar_t>(L'a' + i % 26);
        buffer.append(character);
        expected.push_back(character);
        std::size_t capacity = 1;
        if (i >= 1) {
            for (capacity = 63; capacity < i + 1; capacity = capacity * 2 + 1) {}
        }
        ASSERT_EQ(buffer.capacity(), capacity) << i;
    }
    EXPECT_TRUE(buffer.view() == expected);
}

TEST(StringBuffer, InlineCapacityIsKeptUntilItIsExceeded)
{
    StringBuffer<511> buffer;
    for (int i = 0; i < 511; ++i) {
        buffer.append(L'x');
        ASSERT_EQ(buffer.capacity(), 511U);
    }
    const wchar_t* inlineBlock = buffer.data();
    buffer.reserve(511);
    EXPECT_EQ(buffer.data(), inlineBlock);
    buffer.append(L'y');
    EXPECT_EQ(buffer.capacity(), 1023U);
    EXPECT_NE(buffer.data(), inlineBlock);
    EXPECT_EQ(buffer.toString(), String(std::wstring(511, L'x') + L"y"));
}

TEST(StringBuffer, ClearingKeepsTheCapacity)
{
    StringBuffer<4> buffer;
    buffer.append(L"more than four");
    buffer.clear();
    EXPECT_TRUE(buffer.isEmpty());
    EXPECT_EQ(buffer.capacity(), 63U);
    EXPECT_EQ(buffer.view(), std::wstring_view());
    buffer.append(L"again");
    EXPECT_EQ(buffer.view(), std::wstring_view(L"again"));
}

TEST(StringBuffer, AppendsAPartOfItself)
{
    StringBuffer<8> buffer;
    buffer.append(L"abcd");
    buffer.append(buffer.view().substr(1, 2));  // fits
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abcdbc"));
    buffer.append(buffer.view());  // moves to the heap
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abcdbcabcdbc"));
    for (int i = 0; i < 4; ++i) {
        buffer.append(buffer.view());  // moves from one heap block to the next
    }
    EXPECT_EQ(buffer.length(), 12U * 16U);
    EXPECT_EQ(buffer.view().substr(180), std::wstring_view(L"abcdbcabcdbc"));
}

TEST(StringBuffer, ReservingLessDoesNothing)
{
    StringBuffer<8> buffer;
    buffer.append(L"abc");
    buffer.reserve(0);
    buffer.reserve(8);
    EXPECT_EQ(buffer.capacity(), 8U);
    buffer.reserve(9);
    EXPECT_EQ(buffer.capacity(), 63U);
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abc"));
}

/// A view of a length that the compiler cannot know: it would warn of reading past the end, which never happens because
/// the length is refused first.
std::wstring_view pretendedView(const wchar_t* data, std::size_t length)
{
    volatile std::size_t hidden = length;
    return {data, hidden};
}

TEST(StringBuffer, TooLongIsReportedThenThrownAndTheContentsStay)
{
    const AssertionCapture capture;
    StringBuffer<8> buffer;
    buffer.append(L"abc");
    EXPECT_THROW(buffer.reserve(1ULL << 31), vel::Exception);
    EXPECT_THROW(buffer.reserve(~std::size_t{0}), vel::Exception);
    EXPECT_THROW(buffer.append(pretendedView(buffer.data(), 1ULL << 31)), vel::Exception);
    EXPECT_THROW(buffer.append(pretendedView(buffer.data(), (1ULL << 31) - 3)), vel::Exception);
    EXPECT_THROW(buffer.append(pretendedView(buffer.data(), ~std::size_t{0} >> 2)), vel::Exception);
    EXPECT_EQ(capture.texts(), std::vector<std::string>(5, kTooLong));
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abc"));
    EXPECT_EQ(buffer.capacity(), 8U);
}

TEST(StringBuffer, TooLongWithAThrowingHandler)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    StringBuffer<8> buffer;
    buffer.append(L"abc");
    EXPECT_THROW(buffer.reserve(1ULL << 31), testsupport::ThrownByAssertion);
    EXPECT_EQ(capture.texts(), std::vector<std::string>{kTooLong});
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abc"));
}

TEST(StringBuffer, NothingChangesWhenMemoryRunsOut)
{
    StringBuffer<4> buffer;
    buffer.append(L"abc");
    {
        const testsupport::FailingAllocations failing(0);
        EXPECT_THROW(buffer.append(L"de"), std::bad_alloc);
        EXPECT_THROW(buffer.reserve(5), std::bad_alloc);
    }
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abc"));
    EXPECT_EQ(buffer.capacity(), 4U);
    buffer.append(L"de");
    EXPECT_EQ(buffer.view(), std::wstring_view(L"abcde"));
}

void appendGreeting(StringBufferBase& out)
{
    out.append(L"hello");
}

TEST(StringBuffer, OperationsTakeAnyCapacity)
{
    StringBuffer<2> small;
    StringBuffer<511> large;
    appendGreeting(small);
    appendGreeting(large);
    EXPECT_EQ(small.toString(), large.toString());
}

TEST(StringBuffer, HoldsBytesToo)
{
    vel::StringBufferTemplate<char, 2> buffer;
    buffer.append("abc");
    EXPECT_EQ(buffer.view(), std::string_view("abc"));
    EXPECT_EQ(buffer.capacity(), 63U);
}

}  // namespace
