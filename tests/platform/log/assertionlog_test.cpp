#include <gtest/gtest.h>

#include "assertioncapture.h"
#include "logcapture.h"
#include "printers.h"
#include "vel/core/assertion.h"
#include "vel/core/nonowningptr.h"

namespace {

using testsupport::LogCapture;

TEST(AssertionLog, ReportsAreLoggedAsWarningsFromTheirOwnPlace)
{
    const LogCapture capture;
    VEL_ASSERT_TEXT(false, "caf\xC3\xA9 != 0");
    const int line = __LINE__ - 1;
    ASSERT_EQ(capture.records().size(), 1U);
    EXPECT_EQ(capture.records()[0].m_eSeverity, vel::kLogWarning);
    EXPECT_EQ(capture.records()[0].text(), L"Assertion failed: caf\u00E9 != 0");
    EXPECT_EQ(capture.records()[0].m_tMessage.keyOrText(), L"Assertion failed: %1");
    EXPECT_EQ(capture.records()[0].m_sFile, __FILE__);
    EXPECT_EQ(capture.records()[0].m_nLine, line);
}

TEST(AssertionLog, WithoutASinkReportsAreIgnored)
{
    vel::Logger::setSink({});
    bool wentOn = false;
    VEL_FAIL("nobody listens");
    wentOn = true;
    EXPECT_TRUE(wentOn);
}

TEST(AssertionLog, ASetHandlerTakesThemAndNullGivesThemBack)
{
    const LogCapture log;
    {
        const testsupport::AssertionCapture capture;
        VEL_FAIL("to the capture");
    }
    EXPECT_TRUE(log.records().empty());
    VEL_FAIL("to the log");
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].text(), L"Assertion failed: to the log");
}

TEST(AssertionLog, NullPointersAreLoggedAndThrown)
{
    const LogCapture log;
    EXPECT_THROW(*vel::NonOwningPtr<const int>(), vel::InvalidHandleException);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].text(), L"Assertion failed: m_p != 0");
}

}  // namespace
