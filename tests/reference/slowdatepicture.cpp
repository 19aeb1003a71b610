#include "slowdatepicture.h"

#include <map>
#include <vector>

namespace reference {

namespace {

using vel::DateTime;
using vel::Locale;

const std::vector<std::wstring> kDays = {L"Monday", L"Tuesday",  L"Wednesday", L"Thursday",
                                         L"Friday", L"Saturday", L"Sunday"};
const std::vector<std::wstring> kMonths = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                           L"July",    L"August",   L"September", L"October", L"November", L"December"};

bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysOfMonth(int year, int month)
{
    const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : days[month - 1];
}

/// 0 is Monday; -1 for no day of the calendar, which ends with the years that both of its ends have.
int weekday(const DateTime& moment)
{
    if (moment.m_nMonth < 1 || moment.m_nMonth > 12 || moment.m_nYear == -32768) {
        return -1;
    }
    if (moment.m_nDay < 1 || moment.m_nDay > daysOfMonth(moment.m_nYear, moment.m_nMonth)) {
        return -1;
    }
    // 2000-01-01 was a Saturday, and the calendar repeats every 400 years.
    const int year = 2000 + (moment.m_nYear % 400 + 400) % 400;
    int day = 5;
    for (int y = 2000; y < year; ++y) {
        day += isLeapYear(y) ? 366 : 365;
    }
    for (int m = 1; m < moment.m_nMonth; ++m) {
        day += daysOfMonth(year, m);
    }
    return (day + moment.m_nDay - 1) % 7;
}

std::wstring nameOf(const Locale& locale, Locale::NameType type, const std::vector<std::wstring>& english, int index)
{
    const std::vector<vel::String> own = locale.storedNames(type);
    const std::size_t place = static_cast<std::size_t>(index);
    return place < own.size() ? std::wstring(own[place].view()) : english[place];
}

std::wstring digitsOf(int value, std::size_t atLeast)
{
    const std::wstring digits = std::to_wstring(value < 0 ? -value : value);
    return std::wstring(digits.size() < atLeast ? atLeast - digits.size() : 0, L'0') + digits;
}

/// The pieces of a picture: tokens as they are, text behind an apostrophe.
std::vector<std::wstring> piecesOf(std::wstring_view picture)
{
    std::vector<std::wstring> pieces;
    bool quoted = false;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const wchar_t character = picture[i];
        if (character == L'\'' && i + 1 < picture.size() && picture[i + 1] == L'\'') {
            pieces.push_back(L"''");
            ++i;
        } else if (character == L'\'') {
            quoted = !quoted;
            pieces.push_back(L"'");
        } else if (quoted) {
            pieces.push_back(std::wstring(L"'") + character);
        } else if (!pieces.empty() && !pieces.back().empty() && pieces.back()[0] == character) {
            pieces.back() += character;
        } else {
            pieces.push_back(std::wstring(1, character));
        }
    }
    return pieces;
}

bool isDay(const std::wstring& piece)
{
    return piece == L"d" || piece == L"dd";
}

std::map<std::wstring, std::wstring> textsOf(const DateTime& moment, const Locale& locale, bool hasDay)
{
    const int hour12 = (moment.m_nHour + 11) % 12 + 1;
    const bool hasMonth = moment.m_nMonth >= 1 && moment.m_nMonth <= 12;
    const bool isGenitive = hasDay && !locale.storedNames(Locale::kGenetiveMonth).empty();
    const Locale::NameType months = isGenitive ? Locale::kGenetiveMonth : Locale::kNominitiveMonth;
    const int day = weekday(moment);
    const vel::String marker = locale.getInfoAsString(moment.m_nHour % 24 < 12 ? Locale::kAM : Locale::kPM);
    std::map<std::wstring, std::wstring> texts;
    const auto number = [&](const wchar_t* letter, int value) {
        texts[letter] = digitsOf(value, 1);
        texts[std::wstring(letter) + letter] = digitsOf(value, 2);
    };
    number(L"d", moment.m_nDay);
    number(L"M", moment.m_nMonth);
    number(L"H", moment.m_nHour);
    number(L"h", hour12);
    number(L"m", moment.m_nMinute);
    number(L"s", moment.m_nSecond);
    texts[L"yy"] = digitsOf(moment.m_nYear % 100, 2);
    texts[L"yyyy"] = (moment.m_nYear < 0 ? L"-" : L"") + digitsOf(moment.m_nYear, 4);
    texts[L"ddd"] = day < 0 ? L"" : nameOf(locale, Locale::kAbbreviatedDay, kDays, day);
    texts[L"dddd"] = day < 0 ? L"" : nameOf(locale, Locale::kDay, kDays, day);
    texts[L"MMM"] = hasMonth ? nameOf(locale, Locale::kAbbreviatedMonth, kMonths, moment.m_nMonth - 1) : L"";
    texts[L"MMMM"] = hasMonth ? nameOf(locale, months, kMonths, moment.m_nMonth - 1) : L"";
    texts[L"t"] = std::wstring(marker.view().substr(0, 1));
    texts[L"tt"] = std::wstring(marker.view());
    return texts;
}

}  // namespace

std::wstring renderDate(std::wstring_view picture, const DateTime& moment, const Locale& locale)
{
    const std::vector<std::wstring> pieces = piecesOf(picture);
    bool hasDay = false;
    for (const std::wstring& piece : pieces) {
        hasDay = hasDay || isDay(piece);
    }
    const std::map<std::wstring, std::wstring> texts = textsOf(moment, locale, hasDay);
    std::wstring result;
    for (const std::wstring& piece : pieces) {
        const auto text = texts.find(piece);
        if (piece[0] == L'\'') {
            result += piece.substr(1);
        } else {
            result += text == texts.end() ? piece : text->second;
        }
    }
    return result;
}

}  // namespace reference
