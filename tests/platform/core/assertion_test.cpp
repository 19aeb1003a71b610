#include "vel/core/assertion.h"

#include <gtest/gtest.h>

#include <thread>

#include "assertioncapture.h"

namespace {

using testsupport::AssertionCapture;

TEST(Assertion, TrueConditionReportsNothing)
{
    const AssertionCapture capture;
    VEL_ASSERT(1 + 1 == 2);
    VEL_ASSERT_TEXT(true, "never seen");
    EXPECT_TRUE(capture.reports().empty());
}

TEST(Assertion, FalseConditionReportsItsTextAndPlaceAndGoesOn)
{
    const AssertionCapture capture;
    const int two = 2;
    VEL_ASSERT(two == 3);
    const int line = __LINE__ - 1;
    ASSERT_EQ(capture.reports().size(), 1U);
    EXPECT_EQ(capture.reports()[0].m_sText, "two == 3");
    EXPECT_EQ(capture.reports()[0].m_sFile, __FILE__);
    EXPECT_EQ(capture.reports()[0].m_nLine, line);
}

TEST(Assertion, TextReplacesTheConditionAndFailNeedsNone)
{
    const AssertionCapture capture;
    VEL_ASSERT_TEXT(false, "m_p != 0");
    VEL_FAIL("unknown kind");
    EXPECT_EQ(capture.texts(), (std::vector<std::string>{"m_p != 0", "unknown kind"}));
}

TEST(Assertion, IsOneStatement)
{
    const AssertionCapture capture;
    bool elseTaken = false;
    if (capture.reports().empty())
        VEL_ASSERT(false);
    else
        elseTaken = true;
    EXPECT_FALSE(elseTaken);
    EXPECT_EQ(capture.texts().size(), 1U);
}

TEST(Assertion, HandlerMayThrow)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    bool wentOn = false;
    EXPECT_THROW(
        {
            VEL_FAIL("broken");
            wentOn = true;
        },
        testsupport::ThrownByAssertion);
    EXPECT_FALSE(wentOn);
    EXPECT_EQ(capture.texts(), (std::vector<std::string>{"broken"}));
}

int g_nFirst = 0;
int g_nSecond = 0;

TEST(Assertion, SettingAHandlerReturnsTheOneBeforeAndNullRestoresTheInitialOne)
{
    const vel::AssertionHandler first = [](const vel::AssertionReport&) { ++g_nFirst; };
    const vel::AssertionHandler second = [](const vel::AssertionReport&) { ++g_nSecond; };
    EXPECT_EQ(vel::setAssertionHandler(first), nullptr);
    EXPECT_EQ(vel::setAssertionHandler(second), first);
    VEL_FAIL("to the second");
    EXPECT_EQ(vel::setAssertionHandler(nullptr), second);
    VEL_FAIL("to nobody: this program is linked without the log library");
    EXPECT_EQ(g_nFirst, 0);
    EXPECT_EQ(g_nSecond, 1);
}

TEST(Assertion, InitialHandlerTakesOverWhenNoneIsSet)
{
    g_nFirst = 0;
    vel::setInitialAssertionHandler([](const vel::AssertionReport&) { ++g_nFirst; });
    VEL_FAIL("to the initial one");
    {
        const AssertionCapture capture;
        VEL_FAIL("to the capture");
        EXPECT_EQ(capture.texts().size(), 1U);
    }
    vel::setInitialAssertionHandler(nullptr);
    VEL_FAIL("to nobody");
    EXPECT_EQ(g_nFirst, 1);
}

TEST(Assertion, ReportsComeOnTheThreadThatBrokeTheInvariant)
{
    static std::thread::id reporter;
    vel::setAssertionHandler([](const vel::AssertionReport&) { reporter = std::this_thread::get_id(); });
    std::thread::id worker;
    std::thread thread([&] {
        worker = std::this_thread::get_id();
        VEL_FAIL("elsewhere");
    });
    thread.join();
    vel::setAssertionHandler(nullptr);
    EXPECT_EQ(reporter, worker);
}

}  // namespace
