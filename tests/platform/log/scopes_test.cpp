#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "failingallocator.h"
#include "logcapture.h"
#include "vel/log/logger.h"

namespace {

using testsupport::LogCapture;
using testsupport::StoredRecord;
using vel::LogSource;
using vel::Message;
using vel::ScopedLogProperty;
using vel::ScopedLogSource;

constexpr LogSource klsOuter(L"vel.test.outer");
constexpr LogSource klsInner(L"vel.test.inner");

using Properties = std::vector<std::pair<std::wstring, std::wstring>>;

TEST(ScopedLogSource, TheInnermostIsCurrent)
{
    EXPECT_EQ(ScopedLogSource::current(), nullptr);
    {
        const ScopedLogSource outer(klsOuter);
        EXPECT_EQ(ScopedLogSource::current(), &klsOuter);
        {
            const ScopedLogSource inner(klsInner);
            EXPECT_EQ(ScopedLogSource::current(), &klsInner);
        }
        EXPECT_EQ(ScopedLogSource::current(), &klsOuter);
    }
    EXPECT_EQ(ScopedLogSource::current(), nullptr);
}

TEST(ScopedLogSource, AnExceptionEndsTheScope)
{
    try {
        const ScopedLogSource source(klsOuter);
        const ScopedLogProperty property(L"a", L"b");
        throw 1;
    } catch (int) {}
    EXPECT_EQ(ScopedLogSource::current(), nullptr);
    EXPECT_EQ(ScopedLogProperty::current(), nullptr);
}

TEST(ScopedLogSource, SourcesAreKnownByName)
{
    EXPECT_STREQ(klsInner.name(), L"vel.test.inner");
}

TEST(ScopedLogProperty, RecordsListThemOutermostFirst)
{
    const LogCapture capture;
    const ScopedLogProperty first(L"one", L"1");
    {
        const ScopedLogProperty second(L"two", L"2");
        const ScopedLogProperty again(L"one", L"3");
        VEL_LOG(vel::kLogWarning, Message::text(L"inside"));
    }
    VEL_LOG(vel::kLogWarning, Message::text(L"outside"));
    const std::vector<StoredRecord> records = capture.records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_TRUE(records[0].m_tProperties == (Properties{{L"one", L"1"}, {L"two", L"2"}, {L"one", L"3"}}));
    EXPECT_TRUE(records[1].m_tProperties == (Properties{{L"one", L"1"}}));
}

TEST(ScopedLogProperty, TheInnermostKnowsTheOnesAround)
{
    EXPECT_EQ(ScopedLogProperty::current(), nullptr);
    const ScopedLogProperty outer(L"o", L"1");
    const ScopedLogProperty inner(L"i", L"2");
    EXPECT_EQ(ScopedLogProperty::current(), &inner);
    EXPECT_EQ(inner.outer(), &outer);
    EXPECT_EQ(outer.outer(), nullptr);
    EXPECT_TRUE(inner.property().m_sName == L"i");
    EXPECT_TRUE(inner.property().m_sValue == L"2");
}

TEST(Scopes, CostNoAllocation)
{
    const testsupport::AllocationCount allocations;
    {
        const ScopedLogSource source(klsOuter);
        const ScopedLogProperty property(L"name", L"a value that is too long to be kept within any string object");
        VEL_LOG(vel::kLogWarning, Message::text(L"a text that is too long to be kept within any string object"));
    }
    EXPECT_EQ(allocations.value(), 0U);
}

void workOnThread(std::size_t number, std::size_t rounds)
{
    const std::wstring name = L"thread" + std::to_wstring(number);
    const LogSource source(name.c_str());
    const ScopedLogSource scope(source);
    const ScopedLogProperty outer(L"number", name);
    for (std::size_t round = 0; round < rounds; ++round) {
        const std::wstring value = std::to_wstring(round);
        const ScopedLogProperty inner(L"round", value);
        VEL_LOG(vel::kLogInformation, Message::text(name));
    }
}

TEST(Scopes, EveryThreadHasItsOwn)
{
    constexpr std::size_t kThreads = 8;
    constexpr std::size_t kRounds = 200;
    const LogCapture capture;
    const ScopedLogProperty unseen(L"main", L"only");
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([i] { workOnThread(i, kRounds); });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    const std::vector<StoredRecord> records = capture.records();
    ASSERT_EQ(records.size(), kThreads * kRounds);
    std::vector<std::size_t> rounds(kThreads, 0);
    for (const StoredRecord& record : records) {
        const std::size_t number = static_cast<std::size_t>(record.m_sSource.back() - L'0');
        const std::wstring round = std::to_wstring(rounds.at(number)++);
        ASSERT_TRUE(record.m_tMessage.keyOrText() == vel::String(record.m_sSource));
        ASSERT_TRUE(record.m_tProperties == (Properties{{L"number", record.m_sSource}, {L"round", round}}));
    }
}

}  // namespace
