#include "slowparsedatetime.h"

#include <locale.h>

#include <cwctype>

#include "slowvalues.h"
#include "vel/core/nocasecompare.h"

namespace reference {

namespace {

using namespace std::string_view_literals;
using vel::Locale;
using vel::ParseDateTime;

enum Follower
{
    kNothing,
    kTime,
    kDate
};

/// A row for each letter: the follower that shows the run to belong to the other half and the slot where that half
/// begins, and the values that the field takes.
struct LetterRow
{
    wchar_t m_cLetter;
    Follower m_eOtherHalf;
    std::size_t m_nOtherSlot;
    std::uint32_t m_nLeast;
    std::uint32_t m_nMost;
};

constexpr LetterRow kLetterRows[] = {
    {L'Y', kTime, 3, 0, 60}, {L'M', kTime, 3, 1, 12}, {L'D', kTime, 3, 1, 31},
    {L'h', kDate, 0, 0, 24}, {L'm', kDate, 0, 0, 59}, {L's', kDate, 0, 0, 59},  // a second is followed by a time
};

const LetterRow& rowOf(wchar_t letter)
{
    for (const LetterRow& row : kLetterRows) {
        if (row.m_cLetter == letter) {
            return row;
        }
    }
    return kLetterRows[0];
}

/// Which letters come in which order: by what is expected and the locale's order.
struct OrderRow
{
    unsigned m_nExpectedDate;
    Locale::DateOrder m_eOrder;
    std::wstring_view m_sLetters;
};

constexpr OrderRow kOrderRows[] = {
    {ParseDateTime::kYearMonth, Locale::kMDY, L"MYDhms"}, {ParseDateTime::kYearMonth, Locale::kDMY, L"MYDhms"},
    {ParseDateTime::kYearMonth, Locale::kYMD, L"YMDhms"}, {ParseDateTime::kMonthDay, Locale::kMDY, L"MDYhms"},
    {ParseDateTime::kMonthDay, Locale::kDMY, L"DMYhms"},  {ParseDateTime::kMonthDay, Locale::kYMD, L"MDYhms"},
};
constexpr std::wstring_view kGeneralOrders[] = {L"MDYhms", L"DMYhms", L"YMDhms"};

std::wstring_view orderFor(unsigned expectedDate, Locale::DateOrder order)
{
    for (const OrderRow& row : kOrderRows) {
        if (row.m_nExpectedDate == expectedDate && row.m_eOrder == order) {
            return row.m_sLetters;
        }
    }
    return kGeneralOrders[order];
}

/// How far the reading has come; passed and returned by value.
struct Reading
{
    std::wstring_view m_sRest;
    std::wstring_view m_sOrder;
    std::size_t m_nSlot;
    Values m_tValues{};
    std::size_t m_nYearLength = 0;
    bool m_bAM = false;
    bool m_bPM = false;
    bool m_bFailed = false;
    bool m_bOddFraction = false;
};

Reading failed(Reading reading)
{
    reading.m_bFailed = true;
    return reading;
}

Reading behind(Reading reading, std::size_t length)
{
    reading.m_sRest = reading.m_sRest.substr(length);
    return reading;
}

bool beginsWithAnyCase(std::wstring_view text, std::wstring_view start)
{
    if (text.size() < start.size()) {
        return false;
    }
    for (std::size_t i = 0; i < start.size(); ++i) {
        if (vel::foldCase(text[i]) != vel::foldCase(start[i])) {
            return false;
        }
    }
    return true;
}

/// Of any script, whatever the process's locale.
bool isLetter(wchar_t character)
{
    static const locale_t kEveryScript = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return iswalpha_l(static_cast<wint_t>(character), kEveryScript) != 0;
}

/// A character that is no digit: a marker is taken whole, anything else alone.
void readWord(Reading& reading, const Conventions& conventions)
{
    if (!isLetter(reading.m_sRest[0])) {
        reading.m_sRest.remove_prefix(1);
        return;
    }
    struct
    {
        std::wstring_view m_sMarker;
        bool m_bIsPM;
    } const rows[] = {{conventions.m_sPM, true}, {conventions.m_sAM, false}, {L"pm"sv, true},
                      {L"am"sv, false},          {L"p.m."sv, true},          {L"a.m."sv, false}};
    for (const auto& row : rows) {
        if (!row.m_sMarker.empty() && beginsWithAnyCase(reading.m_sRest, row.m_sMarker)) {
            reading.m_bPM = reading.m_bPM || row.m_bIsPM;
            reading.m_bAM = reading.m_bAM || !row.m_bIsPM;
            reading.m_sRest.remove_prefix(row.m_sMarker.size());
            return;
        }
    }
    reading.m_sRest.remove_prefix(1);
}

Follower followerOf(std::wstring_view rest, wchar_t letter, const Conventions& conventions)
{
    if (letter == L's' || beginsWith(rest, L":"sv) || beginsWith(rest, conventions.m_sTimeSeparator)) {
        return kTime;
    }
    for (const std::wstring_view separator : {L"/"sv, L"-"sv, L"."sv}) {
        if (beginsWith(rest, separator)) {
            return kDate;
        }
    }
    return beginsWith(rest, conventions.m_sDateSeparator) ? kDate : kNothing;
}

/// The number becomes the value of the letter, unless there is one.
Reading store(Reading reading, wchar_t letter, Number number)
{
    if (reading.m_tValues.stands(letter)) {
        return failed(reading);
    }
    reading.m_tValues.put(letter, number.m_nValue);
    if (letter == L'Y') {
        reading.m_nYearLength = number.m_nLength;
    }
    reading.m_nSlot = (reading.m_nSlot + 1) % 6;
    return behind(reading, number.m_nLength);
}

Reading storeAsYear(Reading reading, Number number)
{
    if (reading.m_nSlot == 0) {
        reading.m_sOrder = L"YMDhms";
    }
    return store(reading, L'Y', number);
}

/// Behind the seconds. The first character of a fraction is taken for a digit unseen.
Reading readFraction(Reading reading)
{
    if (!beginsWith(reading.m_sRest, L"."sv) && !beginsWith(reading.m_sRest, L","sv)) {
        return reading;
    }
    reading = behind(reading, 1);
    if (reading.m_sRest.empty()) {
        return reading;
    }
    const wchar_t first = reading.m_sRest[0];
    const Number others = leadingNumber(reading.m_sRest.substr(1));
    const std::size_t length = 1 + others.m_nLength;
    if (length > 9) {
        return failed(reading);
    }
    std::uint32_t value = static_cast<std::uint32_t>(first) - 48U;
    for (std::size_t i = 0; i < others.m_nLength; ++i) {
        value *= 10U;
    }
    reading.m_tValues.put(L'f', nanoseconds(value + others.m_nValue, length));
    reading.m_bOddFraction = !isDigit(first);
    return behind(reading, length);
}

Reading readNumber(Reading reading, const Conventions& conventions)
{
    const Number number = leadingNumber(reading.m_sRest);
    const wchar_t letter = reading.m_sOrder[reading.m_nSlot];
    const Follower follower = followerOf(reading.m_sRest.substr(number.m_nLength), letter, conventions);
    const LetterRow& row = rowOf(letter);

    if (number.m_nLength > 2) {
        return follower == kTime ? failed(reading) : storeAsYear(reading, number);
    }
    if (follower == kDate && number.m_nValue > 31) {
        return storeAsYear(reading, number);
    }
    if (number.m_nValue > 60) {
        return follower == kTime ? failed(reading) : storeAsYear(reading, number);
    }
    if (follower == row.m_eOtherHalf) {
        reading.m_nSlot = row.m_nOtherSlot;
        return readNumber(reading, conventions);
    }
    if (follower == kDate && reading.m_nSlot == 2) {
        return failed(reading);
    }
    if (number.m_nValue < row.m_nLeast || number.m_nValue > row.m_nMost) {
        return failed(reading);
    }
    reading = store(reading, letter, number);
    return letter == L's' && !reading.m_bFailed ? readFraction(reading) : reading;
}

Values finishHour(Values values, bool hasPM, bool hasAM)
{
    if (!values.stands(L'h')) {
        return values;
    }
    const std::uint32_t hour = values.value(L'h');
    if (hasPM && hour < 12) {
        values.put(L'h', hour + 12);
    } else if (hasAM && hour == 12) {
        values.put(L'h', 0);
    }
    return values;
}

Values finishDay(Values values)
{
    const std::uint32_t day = values.value(L'D');
    if (values.stands(L'D') && !values.stands(L'M') && values.stands(L'Y') && day >= 1 && day <= 12) {
        values.remove(L'D');
        values.put(L'M', day);
    }
    return values;
}

Values finishYear(Values values, std::size_t length)
{
    if (values.stands(L'Y') && length <= 2) {
        const std::uint32_t year = values.value(L'Y');
        values.put(L'Y', year <= 62 ? 2000 + year : 1900 + year);
    }
    return values;
}

}  // namespace

Conventions Conventions::of(const Locale& locale)
{
    const auto text = [&](Locale::StringInfo info) { return std::wstring(locale.getInfoAsString(info).view()); };
    return {locale.getDateOrder(), text(Locale::kAM), text(Locale::kPM), text(Locale::kTimeSeparator),
            text(Locale::kDateSeparator)};
}

TypedAnswer parseTyped(std::wstring_view text, const Conventions& conventions, unsigned expected)
{
    const unsigned expectedDate = expected & (ParseDateTime::kYear | ParseDateTime::kMonth | ParseDateTime::kDay);
    Reading reading{text, orderFor(expectedDate, conventions.m_eOrder), expectedDate == 0 ? 3U : 0U};
    while (!reading.m_sRest.empty() && !reading.m_bFailed) {
        if (isDigit(reading.m_sRest[0])) {
            reading = readNumber(reading, conventions);
        } else {
            readWord(reading, conventions);
        }
    }
    if (reading.m_bFailed) {
        return {0, reading.m_tValues.dateTime(), false};
    }
    Values values = finishHour(reading.m_tValues, reading.m_bPM, reading.m_bAM);
    values = finishDay(values);
    values = finishYear(values, reading.m_nYearLength);
    return {values.mask(), values.dateTime(), reading.m_bOddFraction};
}

}  // namespace reference
