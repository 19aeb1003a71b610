#include <gtest/gtest.h>
#include <unicode/gregocal.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>
#include <random>
#include <stdexcept>

#include "rendering.h"

// Beside ICU's formatters: days of the week, clocks, rounding and grouping are the same.

namespace {

using vel::DateTime;
using vel::Decimal;
using vel::Locale;

void check(UErrorCode status)
{
    if (U_FAILURE(status)) {
        throw std::runtime_error(u_errorName(status));
    }
}

std::string utf8(const icu::UnicodeString& text)
{
    std::string result;
    return text.toUTF8String(result);
}

/// A Gregorian calendar that has never been another one, as the library's.
class PeerDates
{
public:
    explicit PeerDates(const char* pattern)
        : m_tCalendar(*icu::TimeZone::getGMT(), m_eStatus),
          m_tFormat(icu::UnicodeString::fromUTF8(pattern), icu::Locale::getUS(), m_eStatus)
    {
        m_tCalendar.setGregorianChange(-8.64e18, m_eStatus);
        m_tFormat.setCalendar(m_tCalendar);
        check(m_eStatus);
    }

    std::string operator()(const DateTime& moment)
    {
        icu::UnicodeString text;
        m_tCalendar.clear();
        m_tCalendar.set(moment.m_nYear, moment.m_nMonth - 1, moment.m_nDay, moment.m_nHour, moment.m_nMinute,
                        moment.m_nSecond);
        m_tFormat.format(m_tCalendar.getTime(m_eStatus), text);
        check(m_eStatus);
        return utf8(text);
    }

private:
    UErrorCode m_eStatus = U_ZERO_ERROR;
    icu::GregorianCalendar m_tCalendar;
    icu::SimpleDateFormat m_tFormat;
};

TEST(BesideIcu, DatesOfEveryYear)
{
    const Locale locale = rendering::packLocale("en-us");
    PeerDates peer("EEEE EEE d dd M MM MMM MMMM yy yyyy h hh H HH m mm s ss a");
    const wchar_t* const picture = L"dddd ddd d dd M MM MMM MMMM yy yyyy h hh H HH m mm s ss tt";
    std::mt19937 random(17);
    const auto below = [&](unsigned end) { return static_cast<std::uint16_t>(random() % end); };
    for (std::int16_t year = 1; year < 9999; ++year) {
        const DateTime moment{year,
                              static_cast<std::uint16_t>(1 + below(12)),
                              static_cast<std::uint16_t>(1 + below(28)),
                              below(24),
                              below(60),
                              below(60),
                              0};
        ASSERT_EQ(rendering::date(picture, moment, locale), peer(moment));
    }
}

TEST(BesideIcu, EveryDayOfACentury)
{
    const Locale locale = rendering::packLocale("en-us");
    PeerDates peer("EEEE, MMMM d, yyyy");
    const unsigned days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (std::int16_t year = 1990; year < 2091; ++year) {
        for (std::uint16_t month = 1; month <= 12; ++month) {
            const unsigned last = days[month - 1] + (month == 2 && year % 4 == 0 ? 1U : 0U);
            for (std::uint16_t day = 1; day <= last; ++day) {
                const DateTime moment{year, month, day, 0, 0, 0, 0};
                ASSERT_EQ(rendering::date(L"dddd, MMMM d, yyyy", moment, locale), peer(moment));
            }
        }
    }
}

std::string peerNumber(const std::string& digits, int places, const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::string text = utf8(icu::number::NumberFormatter::withLocale(icu::Locale(locale))
                                      .precision(icu::number::Precision::fixedFraction(places))
                                      .formatDecimal(digits, status)
                                      .toString(status));
    check(status);
    return text;
}

TEST(BesideIcu, DecimalsInAnyNumberOfDigits)
{
    const Locale usa = rendering::packLocale("en-us");
    const Locale german = rendering::packLocale("de-de");
    std::mt19937_64 random(19);
    for (int i = 0; i < 3000; ++i) {
        const Decimal number = Decimal::ofInteger(1 + static_cast<std::int64_t>(random() >> (1 + random() % 60)),
                                                  static_cast<unsigned>(random() % 12));
        const int places = static_cast<int>(random() % 8);
        const std::string digits = rendering::show(number);
        ASSERT_EQ(rendering::number(number, usa, places), peerNumber(digits, places, "en_US")) << digits;
        ASSERT_EQ(rendering::number(number, german, places), peerNumber(digits, places, "de_DE")) << digits;
        const Decimal negative = rendering::decimal("-" + digits);
        if (!negative.rounded(static_cast<unsigned>(places)).isZero()) {
            ASSERT_EQ(rendering::number(negative, usa, places), peerNumber("-" + digits, places, "en_US"));
        }
    }
}

}  // namespace
