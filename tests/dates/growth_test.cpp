#include <gtest/gtest.h>

#include <string>

#include "datestesting.h"
#include "instructions.h"

// What the time of reading a typed date depends on: the length of the text, and that of the locale's markers, with
// which the text is compared at each of its letters. Work is counted, not timed.

namespace {

using vel::Locale;
using vel::ParseDateTime;

/// Both markers agree with any text of this letter up to their last character: the worst that they can be.
Locale localeOfMarkers(std::size_t length)
{
    const std::wstring most(length - 1, L'q');
    return datestesting::makeLocale({Locale::kDMY, most + L"x", most + L"y", L":", L"/"});
}

std::size_t workOf(const std::wstring& text, const Locale& locale)
{
    vel::DateTime value;
    const auto read = [&] { ParseDateTime::parse(text, locale, ParseDateTime::kTimeStamp, value); };
    read();  // what is bound at the first call is bound
    return testsupport::instructionsOf(read);
}

class TypedGrowth : public testing::Test
{
protected:
    void SetUp() override
    {
        if (datestesting::isSanitized() || testsupport::instructionsOf([] {}) == 0) {
            GTEST_SKIP() << "instructions cannot be counted here";
        }
    }
};

/// Four times as much, and a tenth for branches that go another way.
std::size_t fourTimes(std::size_t work)
{
    return work * 44 / 10;
}

TEST_F(TypedGrowth, IsLinearInTheText)
{
    const Locale locale = datestesting::makeLocale({Locale::kDMY, L"ص", L"م", L":", L"/"});
    for (const wchar_t each : {L'0', L'q', L' ', L'ش'}) {
        const std::size_t work = workOf(std::wstring(8, each), locale);
        EXPECT_LE(workOf(std::wstring(32, each), locale), fourTimes(work)) << static_cast<unsigned>(each);
    }
}

TEST_F(TypedGrowth, IsLinearInTheTextAndInTheMarkers)
{
    const std::size_t work = workOf(std::wstring(24, L'q'), localeOfMarkers(5));
    EXPECT_LE(workOf(std::wstring(96, L'q'), localeOfMarkers(5)), fourTimes(work));
    EXPECT_LE(workOf(std::wstring(24, L'q'), localeOfMarkers(20)), fourTimes(work));
}

TEST_F(TypedGrowth, OfMarkersThatTheTextDoesNotBeginIsNone)
{
    const std::wstring text(40, L'a');
    EXPECT_LE(workOf(text, localeOfMarkers(32)), workOf(text, localeOfMarkers(8)) * 11 / 10);
}

}  // namespace
