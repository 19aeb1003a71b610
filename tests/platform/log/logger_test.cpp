#include "vel/log/logger.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include "logcapture.h"
#include "printers.h"

namespace {

using testsupport::LogCapture;
using testsupport::StoredRecord;
using testsupport::StoringSink;
using vel::Handle;
using vel::Logger;
using vel::makeHandle;
using vel::Message;

constexpr vel::LogSeverity kAllSeverities[] = {vel::kLogInformation, vel::kLogMinorWarning, vel::kLogWarning};

int g_nBuilt = 0;

Message countedMessage()
{
    ++g_nBuilt;
    return Message::text(L"counted");
}

TEST(Logger, IsSilentWithoutASink)
{
    Logger::setSink({});
    g_nBuilt = 0;
    for (const vel::LogSeverity severity : kAllSeverities) {
        EXPECT_FALSE(Logger::isEnabled(severity));
        VEL_LOG(severity, countedMessage());
        Logger::write(severity, Message::text(L"nobody listens"), __FILE__, __LINE__);
    }
    EXPECT_EQ(g_nBuilt, 0);
}

TEST(Logger, RecordsCarryAllThatIsKnown)
{
    constexpr vel::LogSource klsSource(L"vel.test.source");
    const LogCapture capture;
    const vel::ScopedLogSource source(klsSource);
    const vel::ScopedLogProperty property(L"file", L"a.xml");
    VEL_LOG(vel::kLogMinorWarning, Message::text(L"Loading '%1'.").insert(1, L"a.xml"));
    const int line = __LINE__ - 1;
    ASSERT_EQ(capture.records().size(), 1U);
    const StoredRecord record = capture.records()[0];
    EXPECT_EQ(record.m_eSeverity, vel::kLogMinorWarning);
    EXPECT_TRUE(record.m_sSource == L"vel.test.source");
    EXPECT_EQ(record.text(), L"Loading 'a.xml'.");
    ASSERT_EQ(record.m_tProperties.size(), 1U);
    EXPECT_TRUE(record.m_tProperties[0].first == L"file");
    EXPECT_TRUE(record.m_tProperties[0].second == L"a.xml");
    EXPECT_EQ(record.m_sFile, __FILE__);
    EXPECT_EQ(record.m_nLine, line);
}

TEST(Logger, WhatIsInsertedIsCutAtItsLongestLength)
{
    const std::wstring longest(Logger::kLongestInsert, L'x');
    const LogCapture capture;
    VEL_LOG(vel::kLogWarning, Message::text(L"'%1' '%2'").insert(1, longest).insert(2, longest + L"y"));
    ASSERT_EQ(capture.records().size(), 1U);
    EXPECT_EQ(capture.records()[0].text().standard(), L"'" + longest + L"' '" + longest + L"...'");
    EXPECT_EQ(Logger::kLongestInsert, 1000U);
}

TEST(Logger, InsertsOfInsertsAreCutToo)
{
    const std::wstring longest(Logger::kLongestInsert, L'x');
    const Message inner = Message::external(L"kmsgKey").insert(1, longest + longest).insert(2, L"short");
    const LogCapture capture;
    VEL_LOG(vel::kLogWarning, Message::text(L"[%1]").insert(1, Message::text(L"<%1>").insert(1, inner)));
    ASSERT_EQ(capture.records().size(), 1U);
    EXPECT_EQ(capture.records()[0].text().standard(), L"[<kmsgKey(" + longest + L"..., short)>]");
}

TEST(Logger, TheValueOfAPropertyIsCutToo)
{
    const std::wstring longest(Logger::kLongestInsert, L'x');
    const std::wstring longer = longest + L"y";
    const LogCapture capture;
    const vel::ScopedLogProperty property(L"file", longer);
    VEL_LOG(vel::kLogWarning, Message::text(L"bare"));
    ASSERT_EQ(capture.records().size(), 1U);
    ASSERT_EQ(capture.records()[0].m_tProperties.size(), 1U);
    EXPECT_EQ(capture.records()[0].m_tProperties[0].second, longest);
}

TEST(Logger, WithoutScopesSourceAndPropertiesAreEmpty)
{
    const LogCapture capture;
    VEL_LOG(vel::kLogInformation, Message::text(L"bare"));
    ASSERT_EQ(capture.records().size(), 1U);
    EXPECT_TRUE(capture.records()[0].m_sSource.empty());
    EXPECT_TRUE(capture.records()[0].m_tProperties.empty());
}

TEST(Logger, BelowTheLeastSeverityNothingIsBuilt)
{
    for (const vel::LogSeverity least : kAllSeverities) {
        const LogCapture capture(least);
        std::size_t expected = 0;
        for (const vel::LogSeverity severity : kAllSeverities) {
            g_nBuilt = 0;
            EXPECT_EQ(Logger::isEnabled(severity), severity >= least);
            VEL_LOG(severity, countedMessage());
            EXPECT_EQ(g_nBuilt, severity >= least ? 1 : 0);
            expected += severity >= least ? 1U : 0U;
        }
        EXPECT_EQ(capture.records().size(), expected);
    }
}

TEST(Logger, ADirectWriteBelowTheLeastSeverityIsDroppedToo)
{
    const LogCapture capture(vel::kLogWarning);
    Logger::write(vel::kLogMinorWarning, Message::text(L"minor"), "f", 1);
    EXPECT_TRUE(capture.records().empty());
}

TEST(Logger, TheSinkIsReplacedAndReleased)
{
    const Handle<StoringSink> first = makeHandle<StoringSink>(vel::kLogInformation);
    const Handle<StoringSink> second = makeHandle<StoringSink>(vel::kLogWarning);
    Logger::setSink(first);
    EXPECT_EQ(first->referenceCount(), 2U);
    VEL_LOG(vel::kLogWarning, Message::text(L"1"));
    Logger::setSink(second);
    EXPECT_EQ(first->referenceCount(), 1U);
    EXPECT_FALSE(Logger::isEnabled(vel::kLogInformation));
    VEL_LOG(vel::kLogWarning, Message::text(L"2"));
    Logger::setSink({});
    EXPECT_EQ(second->referenceCount(), 1U);
    VEL_LOG(vel::kLogWarning, Message::text(L"3"));
    ASSERT_EQ(first->records().size(), 1U);
    EXPECT_EQ(first->records()[0].text(), L"1");
    ASSERT_EQ(second->records().size(), 1U);
    EXPECT_EQ(second->records()[0].text(), L"2");
}

class ThrowingSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogInformation; }
    void write(const vel::LogRecord&) override { throw std::runtime_error("disk full"); }
};

TEST(Logger, ExceptionsOfTheSinkPassAndLeaveItUsable)
{
    const Handle<ThrowingSink> sink = makeHandle<ThrowingSink>();
    Logger::setSink(sink);
    EXPECT_THROW(VEL_LOG(vel::kLogWarning, Message::text(L"x")), std::runtime_error);
    EXPECT_EQ(sink->referenceCount(), 2U);
    EXPECT_THROW(VEL_LOG(vel::kLogWarning, Message::text(L"y")), std::runtime_error);
    Logger::setSink({});
}

/// Replaces the logger's sink while it writes, and logs when it goes.
class SelfReplacingSink final : public vel::LogSink
{
public:
    explicit SelfReplacingSink(Handle<StoringSink> next) : m_hNext(std::move(next)) {}
    ~SelfReplacingSink() override { VEL_LOG(vel::kLogWarning, Message::text(L"gone")); }

    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogInformation; }
    void write(const vel::LogRecord& record) override
    {
        Logger::setSink(m_hNext);
        m_hNext->write(record);
    }

private:
    Handle<StoringSink> m_hNext;
};

TEST(Logger, ASinkMayReplaceItselfAndLogWhenItGoes)
{
    const Handle<StoringSink> next = makeHandle<StoringSink>(vel::kLogInformation);
    Logger::setSink(makeHandle<SelfReplacingSink>(next));
    VEL_LOG(vel::kLogWarning, Message::text(L"here"));
    Logger::setSink({});
    ASSERT_EQ(next->records().size(), 2U);
    EXPECT_EQ(next->records()[0].text(), L"here");
    EXPECT_EQ(next->records()[1].text(), L"gone");
}

TEST(Logger, SinksAreReplacedWhileOthersWrite)
{
    std::atomic<bool> stop{false};
    std::atomic<int> written{0};
    std::vector<std::thread> writers;
    for (int i = 0; i < 8; ++i) {
        writers.emplace_back([&] {
            while (!stop.load()) {
                VEL_LOG(vel::kLogWarning, Message::text(L"busy"));
                written.fetch_add(1);
            }
        });
    }
    std::vector<Handle<StoringSink>> sinks;
    for (int round = 0; round < 200 || written.load() < 1000; ++round) {
        sinks.push_back(makeHandle<StoringSink>(vel::kLogInformation));
        Logger::setSink(sinks.back());
        std::this_thread::yield();
    }
    stop.store(true);
    for (std::thread& each : writers) {
        each.join();
    }
    Logger::setSink({});
    std::size_t records = 0;
    for (const Handle<StoringSink>& each : sinks) {
        EXPECT_EQ(each->referenceCount(), 1U);
        records += each->records().size();
    }
    // What was written before the first sink was set went nowhere, all else once.
    EXPECT_GT(records, 0U);
    EXPECT_LE(records, static_cast<std::size_t>(written.load()));
}

// Before main: the logger works from any static initialiser.
bool logsFromStaticInitialiser()
{
    const LogCapture capture;
    VEL_LOG(vel::kLogInformation, Message::text(L"early"));
    return capture.records().size() == 1 && capture.records()[0].text() == L"early";
}

const bool g_loggedEarly = logsFromStaticInitialiser();

TEST(Logger, WorksInStaticInitialisers)
{
    EXPECT_TRUE(g_loggedEarly);
}

}  // namespace
