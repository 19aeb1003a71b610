#include <clocale>
#include <random>

#include "moments.h"
#include "packlocales.h"
#include "printers.h"
#include "rendering.h"
#include "slowdatepicture.h"
#include "webi18n/parsedatetime.h"

// Laws that hold for every locale of the data pack: what is rendered is read back.

namespace {

using rendering::pack;
using testsupport::nameOf;
using testsupport::only;
using vel::DateTime;
using vel::Decimal;
using vel::Locale;
using vel::ParseDateTime;

constexpr std::size_t kFewestLocales = 400;

/// Moments that turn something over, every month and hour, and random ones.
std::vector<DateTime> moments()
{
    std::vector<DateTime> result = {
        {2024, 2, 29, 0, 0, 0, 0},    {2000, 2, 29, 12, 0, 0, 0},  {2005, 12, 31, 23, 59, 59, 0},
        {2000, 1, 1, 1, 0, 0, 0},     {1999, 12, 31, 13, 0, 0, 0}, {1963, 10, 10, 11, 59, 59, 0},
        {2062, 11, 30, 12, 59, 1, 0}, {1, 1, 1, 0, 0, 1, 0},       {9999, 12, 31, 0, 59, 0, 0}};
    for (std::uint16_t month = 1; month <= 12; ++month) {
        result.push_back({2023, month, 28, static_cast<std::uint16_t>(2 * month - 1), month, 0, 0});
        result.push_back({1970, month, 1, static_cast<std::uint16_t>(2 * month - 2), 0, month, 0});
    }
    std::mt19937 random(29);
    const auto below = [&](unsigned end) { return static_cast<std::uint16_t>(random() % end); };
    while (result.size() < 100) {
        result.push_back({static_cast<std::int16_t>(1 + below(9999)), static_cast<std::uint16_t>(1 + below(12)),
                          static_cast<std::uint16_t>(1 + below(31)), below(24), below(60), below(60), 0});
    }
    return result;
}

/// The text that is not read back as these fields of the moment, empty when it is.
std::string notReadBack(const std::wstring& picture, const DateTime& moment, const Locale& locale, unsigned fields)
{
    vel::StringBuffer<127> text;
    vel::DatePicture(picture).append(moment, locale, text);
    DateTime value;
    const unsigned found = ParseDateTime::parse(text.view(), locale, static_cast<ParseDateTime::Fields>(fields), value);
    return found == fields && value == only(fields, moment) ? "" : vel::toUtf8Lossy(text.view());
}

/// The locales of the pack, and each with a user's other clock and order.
std::vector<Locale> locales()
{
    std::vector<Locale> result = pack();
    for (Locale locale : pack()) {
        locale.setOverridingTimeInputFormat(L"", locale.is24Hours() ? Locale::kIs12HR : Locale::kIs24HR);
        locale.setOverridingDateInputFormat(L"/", locale.getDateOrder() == Locale::kDMY ? Locale::kYMD : Locale::kDMY);
        result.push_back(locale);
    }
    return result;
}

TEST(PackLaw, InputFormatsAreReadBack)
{
    const std::vector<DateTime> all = moments();
    ASSERT_GE(pack().size(), kFewestLocales);
    for (const Locale& locale : locales()) {
        const std::wstring date(locale.getInfoView(Locale::kDateInputFormat));
        const std::wstring time(locale.getInfoView(Locale::kTimeInputFormat));
        for (const DateTime& moment : all) {
            ASSERT_EQ(notReadBack(date, moment, locale, ParseDateTime::kDate), "") << nameOf(locale);
            ASSERT_EQ(notReadBack(time, moment, locale, ParseDateTime::kTime), "") << nameOf(locale);
            ASSERT_EQ(notReadBack(date + L" " + time, moment, locale, ParseDateTime::kDateTime), "") << nameOf(locale);
        }
    }
}

/// Whether all moments are read back from the locale's own time format; a time that is read must be the one written.
bool readsItsOwnTimes(const Locale& locale, const std::vector<DateTime>& all)
{
    bool reads = true;
    for (const DateTime& moment : all) {
        vel::StringBuffer<127> text;
        vel::DatePicture(locale.getInfoView(Locale::kTimeFormat)).append(moment, locale, text);
        DateTime value;
        const unsigned found = ParseDateTime::parse(text.view(), locale, ParseDateTime::kTime, value);
        reads = reads && found == ParseDateTime::kTime;
        EXPECT_TRUE(found != ParseDateTime::kTime || value == only(ParseDateTime::kTime, moment))
            << nameOf(locale) << ": " << vel::toUtf8Lossy(text.view());
    }
    return reads;
}

/// No test of this program chooses a locale for the process: markers of every script are found all the same. A few
/// locales show times with a full stop, which they need for dates: those are not read as times, but never as others.
TEST(PackLaw, NoLocaleMisreadsItsOwnTimesInAHostThatNeverChoseALocale)
{
    ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    const std::vector<DateTime> all = moments();
    for (const Locale& locale : pack()) {
        const bool hasStops = locale.getInfoView(Locale::kTimeFormat).find(L'.') != std::wstring_view::npos;
        EXPECT_TRUE(readsItsOwnTimes(locale, all) || hasStops) << nameOf(locale);
    }
}

/// Two digits stand for the years from 1963 to 2062.
TEST(PackLaw, YearsOfTwoDigitsAreReadBack)
{
    for (const Locale& locale : pack()) {
        std::wstring picture(locale.getInfoView(Locale::kDateInputFormat));
        picture.erase(picture.find(L"yyyy"), 2);
        for (std::int16_t year = 1963; year <= 2062; ++year) {
            ASSERT_EQ(notReadBack(picture, {year, 12, 11, 0, 0, 0, 0}, locale, ParseDateTime::kDate), "")
                << nameOf(locale);
        }
    }
}

/// Every format that the pack's locales offer gives what the plain twin gives.
TEST(PackLaw, EveryFormatIsAsThePlainTwinHasIt)
{
    std::vector<DateTime> all = moments();
    all.resize(12);
    std::size_t formats = 0;
    for (const Locale& locale : pack()) {
        std::vector<vel::String> pictures = locale.storedNames(Locale::kDateFormats);
        for (const Locale::NameType type : {Locale::kTimeFormats, Locale::kDateTimeFormats}) {
            const std::vector<vel::String> more = locale.storedNames(type);
            pictures.insert(pictures.end(), more.begin(), more.end());
        }
        for (const Locale::StringInfo info : {Locale::kDateShortFormat, Locale::kDateLongFormat, Locale::kTimeFormat}) {
            pictures.push_back(locale.getInfoAsString(info));
        }
        formats += pictures.size();
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            const DateTime& moment = all[i % all.size()];
            const vel::String expected(reference::renderDate(pictures[i].view(), moment, locale));
            EXPECT_EQ(rendering::date(pictures[i].view(), moment, locale), vel::toUtf8Lossy(expected.view()))
                << nameOf(locale);
        }
    }
    EXPECT_LT(5000U, formats);
}

/// The number that a text stands for by a locale's separators and its negative template; empty when groups are not of
/// three digits or something else stands in the text.
std::string readNumber(std::wstring text, const Locale& locale)
{
    const std::wstring thousands(locale.getInfoView(Locale::kThousandsSeparator));
    const std::wstring decimal(locale.getInfoView(Locale::kDecimalSeparator));
    const std::wstring negative(locale.getInfoView(Locale::kNegativeNumberTemplate));
    const std::wstring before = negative.substr(0, negative.find(L'#'));
    const std::wstring after = negative.substr(negative.find(L'#') + 1);
    std::string result;
    if (text.size() > before.size() + after.size() && text.compare(0, before.size(), before) == 0) {
        text = text.substr(before.size(), text.size() - before.size() - after.size());
        result = "-";
    }
    std::size_t behindGroup = 0;
    const std::size_t point = std::min(text.find(decimal), text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (i == point) {
            result += '.';
            i += decimal.size();
        } else if (i < point && i > 0 && text.compare(i, thousands.size(), thousands) == 0) {
            const std::size_t rest = point - i - thousands.size();
            if (rest % (3 + thousands.size()) != 3) {
                return "";
            }
            i += thousands.size();
            ++behindGroup;
        } else if (text[i] >= L'0' && text[i] <= L'9') {
            result += static_cast<char>(text[i++]);
        } else {
            return "";
        }
    }
    const std::size_t integers = point - behindGroup * thousands.size();
    return behindGroup == (integers - 1) / 3 ? result : "";
}

TEST(PackLaw, NumbersAreReadBack)
{
    std::mt19937_64 random(31);
    std::vector<Decimal> numbers;
    for (int i = 0; i < 100; ++i) {
        numbers.push_back(Decimal::ofInteger(static_cast<std::int64_t>(random() >> random() % 60), i % 8U));
        numbers.push_back(Decimal::ofInteger(-1 - static_cast<std::int64_t>(random() >> (1 + random() % 60)), i % 8U));
    }
    ASSERT_GE(pack().size(), kFewestLocales);
    for (const Locale& locale : pack()) {
        for (const Decimal& number : numbers) {
            vel::StringBuffer<63> out;
            vel::RenderNumber::append(number, locale, {}, out);
            ASSERT_EQ(readNumber(std::wstring(out.view()), locale), rendering::show(number))
                << nameOf(locale) << ": " << vel::toUtf8Lossy(out.view());
        }
    }
}

/// A percent shows its number, and the sign on the side that the locale names.
TEST(PackLaw, PercentsHoldTheNumber)
{
    const Decimal ratio = rendering::decimal("1234.5678");
    for (const Locale& locale : pack()) {
        const std::string number = rendering::number(rendering::decimal("123456.78"), locale);
        const std::string percent = rendering::percent(ratio, locale);
        const std::size_t place = percent.find(number);
        ASSERT_NE(place, std::string::npos) << nameOf(locale) << ": " << percent;
        const bool isBefore = locale.getInfoAsString(Locale::kPercentSymbolLocation) == L"before";
        EXPECT_EQ(place > 0, isBefore) << nameOf(locale) << ": " << percent;
    }
}

}  // namespace
