#include <gtest/gtest.h>

#include <vector>

#include "eightthreads.h"
#include "locales.h"
#include "webi18n-render/datepicture.h"
#include "webi18n-render/rendernumber.h"

// One picture serves every thread, for several locales at the same time.

namespace {

using vel::Locale;

TEST(RenderThreads, OnePictureServesAll)
{
    const vel::DateTime moment{2005, 2, 5, 15, 7, 1, 0};
    const std::vector<Locale> locales = {
        Locale::kUSA, testsupport::localeOf(testsupport::listProperty("genetiveMonthNames", {"of one", "of two"}) +
                                                testsupport::property("negativeNumberTemplate", "(#)"),
                                            Locale::kUSA)};
    const std::wstring expected[] = {L"Saturday, 5 February 2005 at 3:07:01 PM, -1,234.5",
                                     L"Saturday, 5 of two 2005 at 3:07:01 PM, (1,234.5)"};
    const vel::DatePicture picture(L"dddd, d MMMM yyyy 'at' h:mm:ss tt, ");
    const vel::Decimal number = vel::Decimal::ofText(L"-1234.5").value();
    const int faults = testsupport::faultsOf([&](int thread) {
        int wrong = 0;
        for (int i = 0; i < 2000; ++i) {
            const std::size_t which = static_cast<std::size_t>(thread + i) % locales.size();
            const vel::DatePicture copy(picture);
            vel::StringBuffer<63> out;
            copy.append(moment, locales[which], out);
            vel::RenderNumber::append(number, locales[which], {}, out);
            wrong += out.view() == expected[which] ? 0 : 1;
        }
        return wrong;
    });
    EXPECT_EQ(faults, 0);
}

}  // namespace
