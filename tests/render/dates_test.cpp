#include <sstream>

#include "printers.h"
#include "rendering.h"
#include "textrows.h"

// Rows: pictures and moments with their texts.

namespace {

using rendering::date;
using rendering::packLocale;
using vel::DateTime;
using vel::Locale;

DateTime momentOf(const std::string& text)
{
    std::istringstream fields(text);
    DateTime moment;
    fields >> moment.m_nYear >> moment.m_nMonth >> moment.m_nDay >> moment.m_nHour >> moment.m_nMinute >>
        moment.m_nSecond;
    if (!fields || fields.peek() != std::char_traits<char>::eof()) {
        throw std::runtime_error("no moment: " + text);
    }
    return moment;
}

Locale localeOf(const std::string& name)
{
    return name == "usa" ? Locale::kUSA : packLocale(name);
}

TEST(DatePicture, Rows)
{
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/dates.rows", 5)) {
        SCOPED_TRACE(row.trace());
        EXPECT_EQ(date(row.wide(1).view(), momentOf(row.field(2)), localeOf(row.field(0))), row.field(3));
    }
}

TEST(DatePicture, FormatsOfThePack)
{
    const DateTime moment{2005, 12, 31, 15, 7, 1, 0};
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/formats.rows", 5)) {
        SCOPED_TRACE(row.trace());
        const Locale locale = packLocale(row.field(0));
        EXPECT_EQ(date(locale.getInfoView(Locale::kDateShortFormat), moment, locale), row.field(1));
        EXPECT_EQ(date(locale.getInfoView(Locale::kDateLongFormat), moment, locale), row.field(2));
        EXPECT_EQ(date(locale.getInfoView(Locale::kTimeFormat), moment, locale), row.field(3));
    }
}

/// A user's formats on a copy: the formats of the locale change, the pictures of others do not.
TEST(DatePicture, OverridesOfAUser)
{
    const DateTime moment{2005, 12, 31, 15, 7, 1, 0};
    const Locale german = packLocale("de-de");
    Locale mine = german;
    mine.setOverridingDateFormat(L"d. MMM yy");
    mine.setOverridingTimeFormat(L"h:mm tt");
    mine.setOverridingDateInputFormat(L"-", Locale::kYMD);
    mine.setOverridingTimeInputFormat(L".", Locale::kIs12HR);
    EXPECT_EQ(date(mine.getInfoView(Locale::kDateShortFormat), moment, mine), "31. Dez. 05");
    EXPECT_EQ(date(mine.getInfoView(Locale::kTimeFormat), moment, mine), "3:07 PM");
    EXPECT_EQ(date(mine.getInfoView(Locale::kDateInputFormat), moment, mine), "2005-12-31");
    EXPECT_EQ(date(mine.getInfoView(Locale::kTimeInputFormat), moment, mine), "03.07.01 PM");
    EXPECT_EQ(date(german.getInfoView(Locale::kDateInputFormat), moment, german), "31.12.2005");
    EXPECT_EQ(date(german.getInfoView(Locale::kTimeInputFormat), moment, german), "15:07:01");

    mine.setOverridingDateInputFormat(L"d", Locale::kMDY);
    EXPECT_EQ(date(mine.getInfoView(Locale::kDateInputFormat), moment, mine), "12Samstag2005") << "MMddddyyyy";
    mine.setOverridingTimeInputFormat(L"", Locale::kIs24HR);
    EXPECT_EQ(date(mine.getInfoView(Locale::kTimeInputFormat), moment, mine), "15:07:01");
}

}  // namespace
