#include <gtest/gtest.h>

#include <random>

#include "datestesting.h"
#include "failingallocator.h"
#include "moments.h"
#include "packlocales.h"

// Laws that hold for every locale of the data pack: what is written in its input formats is read back.

namespace {

using datestesting::describe;
using datestesting::show;
using testsupport::nameOf;
using testsupport::only;
using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;
using vel::String;

constexpr std::size_t kMoments = datestesting::isSanitized() ? 100 : 2000;
constexpr std::size_t kFewestLocales = 400;

const std::vector<Locale>& pack()
{
    static const std::vector<Locale> kLocales = testsupport::packLocales(WEBI18N_PACK);
    return kLocales;
}

/// Moments that turn something over, and random ones. Years have three digits at least: shorter ones are given a
/// century when they are not padded.
std::vector<DateTime> moments()
{
    std::vector<DateTime> result = {{2005, 12, 31, 23, 59, 59, 0},  {2000, 1, 1, 0, 0, 0, 0},
                                    {1963, 12, 12, 12, 12, 12, 0},  {100, 1, 31, 1, 1, 1, 0},
                                    {9999, 12, 31, 11, 59, 59, 0},  {2062, 2, 29, 12, 0, 0, 0},
                                    {32767, 10, 10, 10, 10, 10, 0}, {2024, 2, 31, 0, 59, 0, 0}};
    std::mt19937 random(63);
    const auto below = [&](unsigned end) { return static_cast<std::uint16_t>(random() % end); };
    while (result.size() < kMoments) {
        DateTime moment;
        moment.m_nYear = static_cast<std::int16_t>(100 + below(9900));
        moment.m_nMonth = static_cast<std::uint16_t>(1 + below(12));
        moment.m_nDay = static_cast<std::uint16_t>(1 + below(31));
        moment.m_nHour = below(24);
        moment.m_nMinute = below(60);
        moment.m_nSecond = below(60);
        result.push_back(moment);
    }
    return result;
}

void appendNumber(std::wstring& text, unsigned value, std::size_t digits)
{
    const std::wstring number = std::to_wstring(value);
    text.append(digits > number.size() ? digits - number.size() : 0, L'0').append(number);
}

/// Appends the value of a field of an input format; false for what is no field.
bool appendField(std::wstring& text, std::wstring_view field, const DateTime& moment, const Locale& locale, bool padded)
{
    const auto digits = [padded](std::size_t wanted) { return padded ? wanted : std::size_t{1}; };
    const unsigned hour12 = moment.m_nHour % 12U == 0 ? 12U : moment.m_nHour % 12U;
    if (field == L"yyyy") {
        appendNumber(text, static_cast<unsigned>(moment.m_nYear), digits(4));
    } else if (field == L"MM") {
        appendNumber(text, moment.m_nMonth, digits(2));
    } else if (field == L"dd") {
        appendNumber(text, moment.m_nDay, digits(2));
    } else if (field == L"HH") {
        appendNumber(text, moment.m_nHour, digits(2));
    } else if (field == L"hh") {
        appendNumber(text, hour12, digits(2));
    } else if (field == L"mm") {
        appendNumber(text, moment.m_nMinute, digits(2));
    } else if (field == L"ss") {
        appendNumber(text, moment.m_nSecond, digits(2));
    } else if (field == L"tt") {
        text += locale.getInfoView(moment.m_nHour < 12 ? Locale::kAM : Locale::kPM);
    } else {
        return false;
    }
    return true;
}

/// What stands in front: a field, or one character of a separator.
std::size_t pieceLength(std::wstring_view format)
{
    for (const std::wstring_view field : {L"yyyy", L"MM", L"dd", L"HH", L"hh", L"mm", L"ss", L"tt"}) {
        if (format.substr(0, field.size()) == field) {
            return field.size();
        }
    }
    return 1;
}

/// The moment in an input format of the locale.
std::wstring write(std::wstring_view format, const DateTime& moment, const Locale& locale, bool padded)
{
    std::wstring text;
    while (!format.empty()) {
        const std::wstring_view piece = format.substr(0, pieceLength(format));
        if (!appendField(text, piece, moment, locale, padded)) {
            text += piece;
        }
        format.remove_prefix(piece.size());
    }
    return text;
}

/// What the text gives instead of exactly the fields of the moment; empty when it gives those.
std::string difference(const std::wstring& text, const Locale& locale, unsigned fields, const DateTime& moment)
{
    DateTime value;
    const unsigned found = ParseDateTime::parse(text, locale, static_cast<ParseDateTime::Fields>(fields), value);
    if (found == fields && value == only(fields, moment)) {
        return datestesting::brokenLaw(found, value, false);
    }
    return show(text) + " gives " + describe(found, value);
}

/// The first of the moments that a locale does not read back; empty when there is none.
std::string firstNotReadBack(const Locale& locale, const std::vector<DateTime>& all)
{
    const std::wstring date(locale.getInfoView(Locale::kDateInputFormat));
    const std::wstring time(locale.getInfoView(Locale::kTimeInputFormat));
    for (const DateTime& moment : all) {
        for (const bool padded : {true, false}) {
            const std::wstring dateText = write(date, moment, locale, padded);
            const std::wstring timeText = write(time, moment, locale, padded);
            for (const std::string& problem :
                 {difference(dateText, locale, ParseDateTime::kDate, moment),
                  difference(timeText, locale, ParseDateTime::kTime, moment),
                  difference(dateText + L" " + timeText, locale, ParseDateTime::kDateTime, moment)}) {
                if (!problem.empty()) {
                    return problem;
                }
            }
        }
    }
    return "";
}

TEST(PackLaw, InputFormatsAreReadBack)
{
    const std::vector<DateTime> all = moments();
    ASSERT_GE(pack().size(), kFewestLocales);
    for (const Locale& locale : pack()) {
        EXPECT_EQ(firstNotReadBack(locale, all), "") << nameOf(locale);
    }
}

/// The same with a user who prefers the other clock: the markers of 24-hour locales are read back too.
TEST(PackLaw, InputFormatsOfTheOtherClockAreReadBack)
{
    std::vector<DateTime> all = moments();
    all.resize(all.size() / 10);
    for (Locale locale : pack()) {
        locale.setOverridingTimeInputFormat(String(), locale.is24Hours() ? Locale::kIs12HR : Locale::kIs24HR);
        EXPECT_EQ(firstNotReadBack(locale, all), "") << nameOf(locale);
    }
}

/// Padded years of one and two digits have four and are kept.
TEST(PackLaw, PaddedYearsOfTheFirstCenturyAreReadBack)
{
    for (const Locale& locale : pack()) {
        const std::wstring format(locale.getInfoView(Locale::kDateInputFormat));
        for (std::int16_t year = 1; year < 100; ++year) {
            const DateTime moment{year, 12, 11, 0, 0, 0, 0};
            EXPECT_EQ(difference(write(format, moment, locale, true), locale, ParseDateTime::kDate, moment), "")
                << nameOf(locale);
        }
    }
}

TEST(PackLaw, NothingIsAllocated)
{
    std::vector<std::wstring> texts;
    for (const Locale& locale : pack()) {
        const DateTime moment{2005, 12, 31, 23, 59, 59, 0};
        texts.push_back(write(locale.getInfoView(Locale::kDateInputFormat), moment, locale, true) + L" " +
                        write(locale.getInfoView(Locale::kTimeInputFormat), moment, locale, true));
    }
    const std::wstring xml = L"-2005-12-31T23:59:59.123Z";
    std::size_t found = 0;
    const testsupport::AllocationCount before;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        DateTime value;
        found += ParseDateTime::parse(texts[i], pack()[i], ParseDateTime::kTimeStamp, value) != 0 ? 1U : 0U;
        ParseDateTime::parse(L"a word of letters: αβγ 오후 \x1E900", pack()[i], ParseDateTime::kTimeStamp, value);
        ParseDateTime::parseXmlDateTime(xml.data(), xml.data() + xml.size(), value);
    }
    const std::size_t allocations = before.value();
    EXPECT_EQ(allocations, 0U);
    EXPECT_EQ(found, texts.size());
}

}  // namespace
