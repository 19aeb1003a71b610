#include "locales.h"
#include "printers.h"
#include "rendering.h"

// Names that a locale lacks, pictures as values, and what is appended where.

namespace {

using rendering::date;
using testsupport::listProperty;
using testsupport::localeOf;
using testsupport::property;
using vel::DateTime;
using vel::Locale;

const DateTime kSaturday{2005, 2, 5, 15, 7, 1, 0};
const DateTime kMonday{2005, 2, 7, 15, 7, 1, 0};

/// 2005-02-07 is a Monday; the days after it in order.
DateTime dayOfWeek(int fromMonday)
{
    DateTime moment = kMonday;
    moment.m_nDay = static_cast<std::uint16_t>(7 + fromMonday);
    return moment;
}

/// The English names that stand in for a list begin with Sunday, the lists with Monday: the day is right all the same.
TEST(DateNames, WithoutListsAreEnglishAndOfTheRightDay)
{
    const Locale bare = localeOf("");
    const char* const days[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
    for (int day = 0; day < 7; ++day) {
        EXPECT_EQ(date(L"dddd", dayOfWeek(day), bare), days[day]);
        EXPECT_EQ(date(L"ddd", dayOfWeek(day), bare), days[day]) << "whole names for short ones too";
    }
    EXPECT_EQ(date(L"MMMM MMM", kSaturday, bare), "February February");
    EXPECT_EQ(date(L"d MMMM", kSaturday, bare), "5 February");
}

TEST(DateNames, OfAShortListAreItsOwnThenEnglish)
{
    const Locale locale =
        localeOf(listProperty("dayNames", {"lundi", "mardi", "mercredi"}) + listProperty("monthNames", {"janvier"}) +
                 listProperty("genetiveMonthNames", {"de janvier"}));
    EXPECT_EQ(date(L"dddd", dayOfWeek(2), locale), "mercredi");
    EXPECT_EQ(date(L"dddd", dayOfWeek(3), locale), "Thursday");
    EXPECT_EQ(date(L"dddd", dayOfWeek(6), locale), "Sunday");
    EXPECT_EQ(date(L"MMMM", {2005, 1, 5, 0, 0, 0, 0}, locale), "janvier");
    EXPECT_EQ(date(L"d MMMM", {2005, 1, 5, 0, 0, 0, 0}, locale), "5 de janvier");
    EXPECT_EQ(date(L"d MMMM", {2005, 2, 5, 0, 0, 0, 0}, locale), "5 February");
}

TEST(DateNames, MayBeLongerThanAnyBlock)
{
    const std::string longName(1000, 'x');
    const Locale locale = localeOf(listProperty("dayNames", {"a", "b", "c", "d", "e", longName}) +
                                   listProperty("monthNames", {"a", longName}) + property("pm", longName));
    EXPECT_EQ(date(L"dddd MMMM t tt.", kSaturday, locale), longName + " " + longName + " x " + longName + ".");
}

TEST(DateMarkers, MayBeEmptyOrOneCharacter)
{
    const Locale locale = localeOf(property("am", "") + property("pm", "下"));
    EXPECT_EQ(date(L"[t][tt]", {2005, 2, 5, 3, 0, 0, 0}, locale), "[][]");
    EXPECT_EQ(date(L"[t][tt]", kSaturday, locale), "[下][下]");
}

TEST(DatePicture, AppendsBehindWhatIsThere)
{
    vel::StringBuffer<8> out;
    out.append(L"on ");
    const vel::DatePicture picture(L"yyyy-MM-dd");
    picture.append(kSaturday, Locale::kUSA, out);
    out.append(L", ");
    vel::DatePicture::append(L"H:mm", kSaturday, Locale::kUSA, out);
    EXPECT_EQ(out.toString(), L"on 2005-02-05, 15:07");
}

TEST(DatePicture, IsAValue)
{
    vel::DatePicture copy;
    vel::StringBuffer<63> out;
    copy.append(kSaturday, Locale::kUSA, out);
    EXPECT_TRUE(out.isEmpty());
    {
        std::wstring text = L"d'x'";
        const vel::DatePicture picture(text);
        text = L"????";
        copy = picture;
    }
    const vel::DatePicture second(copy);
    second.append(kSaturday, Locale::kUSA, out);
    const vel::DatePicture& same = copy;
    copy = same;
    copy.append(kMonday, Locale::kUSA, out);
    EXPECT_EQ(out.toString(), L"5x7x");
}

/// One picture shows each locale's own names.
TEST(DatePicture, IsNotBoundToALocale)
{
    const vel::DatePicture picture(L"d MMMM");
    vel::StringBuffer<63> out;
    picture.append(kSaturday, Locale::kUSA, out);
    out.append(L'|');
    picture.append(kSaturday, rendering::packLocale("ru-ru"), out);
    EXPECT_EQ(out.toString(), L"5 February|5 февраля");
}

}  // namespace
