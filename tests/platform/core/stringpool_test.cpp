#include "vel/core/stringpool.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "assertioncapture.h"
#include "failingallocator.h"

namespace {

using Pool = vel::StringPoolTemplate<char>;
using Ref = vel::RefStringTemplate<char>;

Ref keep(Pool& pool, std::string_view text)
{
    char* room = pool.getAppendBuffer(text.size());
    std::copy(text.begin(), text.end(), room);
    pool.commitAppendBuffer(text.size());
    return pool.lastString();
}

TEST(RefString, StartsEmpty)
{
    const Ref none;
    EXPECT_EQ(none.data(), nullptr);
    EXPECT_EQ(none.length(), 0U);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(none.view(), "");
}

TEST(RefString, ComparesByContents)
{
    const std::string a = "key";
    const std::string b = "keys";
    EXPECT_TRUE(Ref(a.data(), 3) == Ref(b.data(), 3));
    EXPECT_FALSE(Ref(a.data(), 3) == Ref(b.data(), 4));
    EXPECT_EQ(std::string_view(Ref(b.data(), 4)), "keys");
}

TEST(StringPool, KeepsWhatIsCommitted)
{
    Pool pool;
    EXPECT_TRUE(pool.lastString().isEmpty());
    const Ref first = keep(pool, "abc");
    const Ref second = keep(pool, "de");
    EXPECT_EQ(first.view(), "abc");
    EXPECT_EQ(second.view(), "de");
    EXPECT_EQ(second.data(), first.data() + 3);
    EXPECT_EQ(pool.lastString(), second);
}

TEST(StringPool, GrantsTheRestOfItsBlock)
{
    Pool pool(100);
    pool.getAppendBuffer(10);
    EXPECT_EQ(pool.appendBufferCapacity(), 100U);
    pool.commitAppendBuffer(7);
    pool.getAppendBuffer(93);
    EXPECT_EQ(pool.appendBufferCapacity(), 93U);
    pool.getAppendBuffer(94);
    EXPECT_EQ(pool.appendBufferCapacity(), 100U);
    pool.getAppendBuffer(101);
    EXPECT_EQ(pool.appendBufferCapacity(), 101U);
}

TEST(StringPool, WithoutABlockSizeItGrantsExactlyWhatIsRequested)
{
    Pool pool(0);
    EXPECT_NE(pool.getAppendBuffer(11), nullptr);
    EXPECT_EQ(pool.appendBufferCapacity(), 11U);
    pool.getAppendBuffer(242);
    EXPECT_EQ(pool.appendBufferCapacity(), 242U);
    pool.commitAppendBuffer(242);
    EXPECT_EQ(pool.appendBufferCapacity(), 0U);
}

TEST(StringPool, TextsStayWhereTheyAre)
{
    Pool pool(64);
    std::vector<Ref> kept;
    for (int i = 0; i < 1000; ++i) {
        kept.push_back(keep(pool, std::to_string(i * 7919)));
    }
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(kept[static_cast<std::size_t>(i)].view(), std::to_string(i * 7919));
    }
}

TEST(StringPool, AnAppendBufferThatIsNotCommittedIsGivenUp)
{
    Pool pool(8);
    const char* first = pool.getAppendBuffer(4);
    EXPECT_EQ(pool.getAppendBuffer(8), first);
    const testsupport::AllocationCount allocations;
    for (int i = 0; i < 100; ++i) {
        pool.getAppendBuffer(8);
    }
    EXPECT_EQ(allocations.value(), 0U);
}

TEST(StringPool, AnEmptyTextCanBeCommitted)
{
    Pool pool;
    pool.commitAppendBuffer(0);
    EXPECT_TRUE(pool.lastString().isEmpty());
    EXPECT_TRUE(keep(pool, "").isEmpty());
    EXPECT_EQ(keep(pool, "x").view(), "x");
}

TEST(StringPool, CommittingTooMuchIsReportedAndCut)
{
    Pool pool(4);
    char* room = pool.getAppendBuffer(4);
    std::fill_n(room, 4, 'z');
    const testsupport::AssertionCapture capture;
    pool.commitAppendBuffer(5);
    EXPECT_EQ(capture.texts(), std::vector<std::string>{"nLength <= appendBufferCapacity()"});
    EXPECT_EQ(pool.lastString().view(), "zzzz");
    EXPECT_EQ(pool.appendBufferCapacity(), 0U);
}

TEST(StringPool, NothingIsLostWhenMemoryRunsOut)
{
    Pool pool(4);
    const Ref kept = keep(pool, "abc");
    {
        const testsupport::FailingAllocations failing(0);
        EXPECT_THROW(pool.getAppendBuffer(5), std::bad_alloc);
    }
    EXPECT_EQ(kept.view(), "abc");
    EXPECT_EQ(keep(pool, "d").data(), kept.data() + 3);
}

TEST(StringPool, ClearedItStartsAgain)
{
    Pool pool(4);
    keep(pool, "abcd");
    const Ref last = keep(pool, "ef");
    pool.clear();
    EXPECT_TRUE(pool.lastString().isEmpty());
    const testsupport::AllocationCount allocations;
    EXPECT_EQ(keep(pool, "gh").data(), last.data());
    EXPECT_EQ(allocations.value(), 0U);
}

TEST(StringPool, TakesWideText)
{
    vel::StringPoolTemplate<wchar_t> pool(2);
    *pool.getAppendBuffer(1) = L'\u00E9';
    pool.commitAppendBuffer(1);
    EXPECT_EQ(pool.lastString().view(), L"\u00E9");
}

}  // namespace
