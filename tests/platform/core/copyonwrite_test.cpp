#include "vel/core/copyonwrite.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "failingallocator.h"

namespace {

using vel::CopyOnWrite;

TEST(CopyOnWrite, DefaultHoldsADefaultValueWithoutAllocating)
{
    const testsupport::AllocationCount allocations;
    const CopyOnWrite<int> number;
    const CopyOnWrite<std::string> text;
    EXPECT_EQ(*number, 0);
    EXPECT_TRUE(text->empty());
    EXPECT_EQ(allocations.value(), 0U);
}

TEST(CopyOnWrite, CopiesShareUntilOneIsChanged)
{
    CopyOnWrite<std::string> a(std::string("one"));
    CopyOnWrite<std::string> b = a;
    EXPECT_EQ(&a.get(), &b.get());
    b.edit() = "two";
    EXPECT_EQ(a.get(), "one");
    EXPECT_EQ(b.get(), "two");
    EXPECT_NE(&a.get(), &b.get());
}

TEST(CopyOnWrite, SoleOwnerEditsInPlace)
{
    CopyOnWrite<std::string> a(std::string("one"));
    const std::string* before = &a.get();
    a.edit() += "!";
    EXPECT_EQ(&a.get(), before);
    {
        const CopyOnWrite<std::string> b = a;
    }
    a.edit() += "!";
    EXPECT_EQ(&a.get(), before);
    EXPECT_EQ(*a, "one!!");
}

TEST(CopyOnWrite, EditingADefaultLeavesOtherDefaultsAlone)
{
    CopyOnWrite<std::string> a;
    const CopyOnWrite<std::string> b = a;
    a.edit().push_back('x');
    EXPECT_EQ(*a, "x");
    EXPECT_EQ(*b, "");
    EXPECT_EQ(*CopyOnWrite<std::string>(), "");
}

TEST(CopyOnWrite, ResetGoesBackToTheDefault)
{
    CopyOnWrite<std::string> a(std::string("one"));
    const CopyOnWrite<std::string> b = a;
    a.reset();
    EXPECT_EQ(*a, "");
    EXPECT_EQ(*b, "one");
}

struct ThrowsWhenCopied
{
    ThrowsWhenCopied() = default;
    explicit ThrowsWhenCopied(int value) : m_nValue(value) {}
    ThrowsWhenCopied(ThrowsWhenCopied&&) = default;
    ThrowsWhenCopied(const ThrowsWhenCopied&) { throw std::runtime_error("copied"); }

    int m_nValue = 0;
};

TEST(CopyOnWrite, ThrowingCopyChangesNothing)
{
    CopyOnWrite<ThrowsWhenCopied> a(ThrowsWhenCopied(5));
    const CopyOnWrite<ThrowsWhenCopied> b = a;
    EXPECT_THROW(a.edit(), std::runtime_error);
    EXPECT_EQ(&a.get(), &b.get());
    EXPECT_EQ(a->m_nValue, 5);
}

TEST(CopyOnWrite, NothingChangesAndNothingLeaksWhenMemoryRunsOut)
{
    const std::string longText(100, 'x');
    CopyOnWrite<std::string> a{longText};
    const CopyOnWrite<std::string> b = a;
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    std::size_t nth = 0;
    for (bool failed = true; failed; ++nth) {
        CopyOnWrite<std::string> copy = a;
        const testsupport::FailingAllocations failing(nth);
        try {
            copy.edit();
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(&copy.get(), &b.get());
        }
        failed = failing.hasFailed();
    }
    EXPECT_EQ(nth, 3U);  // the text's block and the node's, then none fails
    EXPECT_EQ(testsupport::outstandingBlocks(), before);
}

TEST(CopyOnWrite, CopiesOnManyThreadsEditApart)
{
    const CopyOnWrite<std::string> original(std::string("base"));
    std::vector<std::string> results(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < results.size(); ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 1000; ++round) {
                CopyOnWrite<std::string> mine = original;
                mine.edit().push_back(static_cast<char>('0' + i));
                results[i] = *mine;
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(*original, "base");
    for (std::size_t i = 0; i < results.size(); ++i) {
        EXPECT_EQ(results[i], std::string("base").append(std::to_string(i)));
    }
}

}  // namespace
