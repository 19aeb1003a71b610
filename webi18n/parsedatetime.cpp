#include "webi18n/parsedatetime.h"

#include "fractions.h"
#include "letters.h"
#include "vel/core/nocasecompare.h"
#include "xmllocale.h"

// Typed dates and times, in stages: read a run of digits, classify what follows it, decide by the slot that is next,
// store the field; at the end put the fields right that depend on each other.

namespace vel {

namespace {

using namespace std::string_view_literals;
using i18n_details::isLetter;
using i18n_details::kMaxFractionDigits;
using i18n_details::scaleToNanoseconds;
using i18n_details::XmlLocaleImpl;

// A field order has a letter a slot: Y, M, D, h, m, s; the f of the fraction is read with its second and never reached.
constexpr const wchar_t* kpOrders[] = {L"MDYhmsf", L"DMYhmsf", L"YMDhmsf", L""};
// Month first unless the locale is year-first.
constexpr const wchar_t* kpOrdersYearMonth[] = {L"MYDhmsf", L"MYDhmsf", L"YMDhmsf", L""};
// Month first in a year-first locale too.
constexpr const wchar_t* kpOrdersMonthDay[] = {L"MDYhmsf", L"DMYhmsf", L"MDYhmsf", L""};

constexpr unsigned kFirstDateSlot = 0;
constexpr unsigned kLastDateSlot = 2;
constexpr unsigned kFirstTimeSlot = 3;
constexpr unsigned kSecondSlot = 5;

/// What follows a run of digits.
enum FieldSeparator
{
    kNone = 0,
    kTimeSeparator = 1,
    kDateSeparator = 2,
    kDecimalSeparator = 4  // never produced: the seconds look for their fraction themselves
};

/// What became of a run.
enum Decision
{
    kTaken,
    kReadAgain,  // the slot was wrong for it and has been changed
    kFailed
};

/// A run of digits as it is written.
struct DigitRun
{
    std::size_t m_nDigits;
    std::uint32_t m_nValue;  // wraps
};

bool isDigit(wchar_t character) noexcept
{
    return static_cast<std::uint32_t>(character) - L'0' < 10;
}

std::uint32_t digitValue(wchar_t character) noexcept
{
    return static_cast<std::uint32_t>(character) - static_cast<std::uint32_t>(L'0');
}

/// A separator has one or two characters: a loop is done before a library's comparison has begun.
bool startsWith(std::wstring_view text, std::wstring_view start) noexcept
{
    if (text.size() < start.size()) {
        return false;
    }
    for (std::size_t i = 0; i < start.size(); ++i) {
        if (text[i] != start[i]) {
            return false;
        }
    }
    return true;
}

/// Whether a letter and a character of a marker differ in any case; only ASCII is told at once.
bool surelyDiffer(wchar_t letter, wchar_t other) noexcept
{
    return (static_cast<std::uint32_t>(letter) | static_cast<std::uint32_t>(other)) < 0x80 &&
           (letter | 0x20) != (other | 0x20);
}

/// `text` begins with a letter.
bool startsWithMarker(std::wstring_view text, std::wstring_view marker) noexcept
{
    return !marker.empty() && text.size() >= marker.size() && !surelyDiffer(text[0], marker[0]) &&
           (startsWith(text, marker) || compareNoCase(text.substr(0, marker.size()), marker) == 0);
}

const wchar_t* chooseOrder(Locale::DateOrder order, unsigned expected) noexcept
{
    const unsigned dateFields = expected & ParseDateTime::kDate;
    if (dateFields == ParseDateTime::kYearMonth) {
        return kpOrdersYearMonth[order];
    }
    return dateFields == ParseDateTime::kMonthDay ? kpOrdersMonthDay[order] : kpOrders[order];
}

/// The name of one of the orders above.
std::wstring_view nameOf(const wchar_t* order) noexcept
{
    switch (order[0]) {
    case L'Y':
        return L"ymd"sv;
    case L'D':
        return L"dmy"sv;
    default:
        return order[1] == L'D' ? L"mdy"sv : L"myd"sv;
    }
}

class TypedParse
{
public:
    TypedParse(std::wstring_view text, const XmlLocaleImpl& locale, unsigned expected, DateTime& out)
        : m_pNext(text.data()),
          m_pEnd(text.data() + text.size()),
          m_tGuts(locale),
          m_sTimeSeparator(locale.timeSeparator()),
          m_pOrder(chooseOrder(locale.getDateOrder(), expected)),
          m_pFirstOrder(m_pOrder),
          m_nSlot((expected & ParseDateTime::kDate) != 0 ? kFirstDateSlot : kFirstTimeSlot),
          m_tOut(out)
    {}

    unsigned run()
    {
        while (m_pNext != m_pEnd) {
            if (!isDigit(*m_pNext)) {
                skipNonDigit();
            } else if (!takeRun()) {
                return ParseDateTime::kParseError;
            }
        }
        finishHour();
        finishDayWithoutMonth();
        finishYear();
        return m_nFound;
    }

    /// By which the first number of the date was read.
    std::wstring_view dateOrder() const noexcept { return nameOf(m_pFirstOrder); }

private:
    /// The character at the position, the terminating zero at the end.
    wchar_t nextCharacter() const noexcept { return m_pNext != m_pEnd ? *m_pNext : L'\0'; }
    std::wstring_view rest() const noexcept { return {m_pNext, static_cast<std::size_t>(m_pEnd - m_pNext)}; }
    bool isFound(unsigned field) const noexcept { return (m_nFound & field) != 0; }
    void advance() noexcept { m_nSlot = m_nSlot == kSecondSlot ? kFirstDateSlot : m_nSlot + 1; }

    /// A word is skipped letter by letter; one that begins with a marker sets its flag, deliberately ("amber").
    void skipNonDigit() noexcept
    {
        if (!isLetter(*m_pNext) || !takeAnyMarker()) {
            ++m_pNext;
        }
    }

    bool takeAnyMarker() noexcept
    {
        return takeMarker(m_tGuts.pm(), m_bPMSeen) || takeMarker(m_tGuts.am(), m_bAMSeen) ||
               takeMarker(L"PM"sv, m_bPMSeen) || takeMarker(L"AM"sv, m_bAMSeen) || takeMarker(L"P.M."sv, m_bPMSeen) ||
               takeMarker(L"A.M."sv, m_bAMSeen);
    }

    /// Sets `seen` and steps over the marker when it stands at the position.
    bool takeMarker(std::wstring_view marker, bool& seen) noexcept
    {
        if (!startsWithMarker(rest(), marker)) {
            return false;
        }
        seen = true;
        m_pNext += marker.size();
        return true;
    }

    DigitRun readRun() noexcept
    {
        const wchar_t* next = m_pNext;
        std::uint32_t value = 0;
        for (; next != m_pEnd && isDigit(*next); ++next) {
            value = value * 10 + digitValue(*next);
        }
        const DigitRun run{static_cast<std::size_t>(next - m_pNext), value};
        m_pNext = next;
        return run;
    }

    /// What stands at the position, behind a run. An empty separator of the locale matches everywhere.
    FieldSeparator classify() const noexcept
    {
        if (isTimeNext()) {
            return kTimeSeparator;
        }
        const wchar_t next = nextCharacter();
        if (next == L'/' || next == L'-' || next == L'.' || startsWith(rest(), m_tGuts.dateSeparator())) {
            return kDateSeparator;
        }
        return kNone;
    }

    bool isTimeNext() const noexcept
    {
        return m_nSlot == kSecondSlot || nextCharacter() == L':' || startsWith(rest(), m_sTimeSeparator);
    }

    bool takeRun() noexcept
    {
        const DigitRun run = readRun();
        if (run.m_nDigits > 2) {
            return !isTimeNext() && applyYearRule(run) == kTaken;
        }
        Decision decision = decide(run, classify());
        while (decision == kReadAgain) {
            decision = decide(run, classify());
        }
        return decision == kTaken;
    }

    /// Of a run of one or two digits.
    Decision decide(const DigitRun& run, FieldSeparator separator) noexcept
    {
        if (separator == kDateSeparator && run.m_nValue >= 32) {
            return applyYearRule(run);
        }
        if (run.m_nValue > 60) {
            return separator == kTimeSeparator ? kFailed : applyYearRule(run);
        }
        return m_nSlot < kFirstTimeSlot ? decideDate(run, separator) : decideTime(run, separator);
    }

    /// A run that can only be a year. As the first value it makes the date year-first.
    Decision applyYearRule(const DigitRun& run) noexcept
    {
        if (m_nSlot == kFirstDateSlot) {
            m_pOrder = kpOrders[Locale::kYMD];
            m_pFirstOrder = isFound(ParseDateTime::kDate) ? m_pFirstOrder : m_pOrder;
        }
        return takeYear(run);
    }

    Decision decideDate(const DigitRun& run, FieldSeparator separator) noexcept
    {
        if (separator == kTimeSeparator) {
            m_nSlot = kFirstTimeSlot;
            return kReadAgain;
        }
        if (separator == kDateSeparator && m_nSlot == kLastDateSlot) {
            return kFailed;
        }
        switch (m_pOrder[m_nSlot]) {
        case L'D':
            return run.m_nValue == 0 || run.m_nValue >= 32 ? kFailed : take(run, ParseDateTime::kDay, m_tOut.m_nDay);
        case L'M':
            return run.m_nValue == 0 || run.m_nValue > 12 ? kFailed : take(run, ParseDateTime::kMonth, m_tOut.m_nMonth);
        default:
            return takeYear(run);
        }
    }

    Decision decideTime(const DigitRun& run, FieldSeparator separator) noexcept
    {
        // Behind the seconds the separator is never a date's.
        if (separator == kDateSeparator) {
            m_nSlot = kFirstDateSlot;
            return kReadAgain;
        }
        switch (m_pOrder[m_nSlot]) {
        case L'h':  // 24 is an hour, on purpose
            return run.m_nValue > 24 ? kFailed : take(run, ParseDateTime::kHour, m_tOut.m_nHour);
        case L'm':
            return run.m_nValue > 59 ? kFailed : take(run, ParseDateTime::kMinute, m_tOut.m_nMinute);
        default:
            return takeSecond(run);
        }
    }

    /// Stores a field of 16 bits that was not found yet.
    Decision take(const DigitRun& run, unsigned field, std::uint16_t& target) noexcept
    {
        if (isFound(field)) {
            return kFailed;
        }
        target = static_cast<std::uint16_t>(run.m_nValue);
        m_nFound |= field;
        advance();
        return kTaken;
    }

    Decision takeYear(const DigitRun& run) noexcept
    {
        if (isFound(ParseDateTime::kYear)) {
            return kFailed;
        }
        m_tOut.m_nYear = static_cast<std::int16_t>(run.m_nValue);
        m_nYearDigits = run.m_nDigits;
        m_nFound |= ParseDateTime::kYear;
        advance();
        return kTaken;
    }

    Decision takeSecond(const DigitRun& run) noexcept
    {
        if (run.m_nValue > 59 || take(run, ParseDateTime::kSecond, m_tOut.m_nSecond) == kFailed) {
            return kFailed;
        }
        m_tOut.m_nFraction = 0;
        const wchar_t next = nextCharacter();
        if (next != L'.' && next != L',') {
            return kTaken;
        }
        ++m_pNext;
        return m_pNext == m_pEnd ? kTaken : takeFraction();
    }

    /// The character behind the separator counts as a digit whatever it is: this is required, its value just wraps.
    Decision takeFraction() noexcept
    {
        std::uint32_t value = digitValue(*m_pNext++);
        std::size_t digits = 1;
        for (; m_pNext != m_pEnd && isDigit(*m_pNext); ++m_pNext) {
            value = value * 10 + digitValue(*m_pNext);
            ++digits;
        }
        if (digits > kMaxFractionDigits) {
            return kFailed;
        }
        m_tOut.m_nFraction = scaleToNanoseconds(value, digits);
        m_nFound |= ParseDateTime::kNanoseconds;
        return kTaken;
    }

    /// 12 PM stays 12, 12 AM is 0, 0 PM is 12, 13 PM stays 13. With both markers 12 becomes 0.
    void finishHour() noexcept
    {
        if (!isFound(ParseDateTime::kHour)) {
            return;
        }
        if (m_bPMSeen && m_tOut.m_nHour < 12) {
            m_tOut.m_nHour = static_cast<std::uint16_t>(m_tOut.m_nHour + 12);
        } else if (m_bAMSeen && m_tOut.m_nHour == 12) {
            m_tOut.m_nHour = 0;
        }
    }

    /// "12 2005" in a day-first locale is December 2005.
    void finishDayWithoutMonth() noexcept
    {
        const unsigned dateFields = m_nFound & ParseDateTime::kDate;
        if (dateFields != (ParseDateTime::kYear | ParseDateTime::kDay) || m_tOut.m_nDay > 12) {
            return;
        }
        m_tOut.m_nMonth = m_tOut.m_nDay;
        m_tOut.m_nDay = 0;
        m_nFound ^= ParseDateTime::kDay | ParseDateTime::kMonth;
    }

    /// A year of one or two digits: up to 62 in the 2000s, else in the 1900s.
    void finishYear() noexcept
    {
        if (isFound(ParseDateTime::kYear) && m_nYearDigits <= 2) {
            m_tOut.m_nYear = static_cast<std::int16_t>(m_tOut.m_nYear + (m_tOut.m_nYear <= 62 ? 2000 : 1900));
        }
    }

    const wchar_t* m_pNext;
    const wchar_t* const m_pEnd;
    const XmlLocaleImpl& m_tGuts;
    std::wstring_view m_sTimeSeparator;
    const wchar_t* m_pOrder;
    const wchar_t* m_pFirstOrder;
    unsigned m_nSlot;
    DateTime& m_tOut;
    unsigned m_nFound = ParseDateTime::kParseError;
    std::size_t m_nYearDigits = 0;
    bool m_bPMSeen = false;
    bool m_bAMSeen = false;
};

}  // namespace

ParseDateTime::Fields ParseDateTime::parse(std::wstring_view text, const Locale& locale, Fields expected, DateTime& out)
{
    out.clear();
    return static_cast<Fields>(TypedParse(text, i18n_details::LocaleGuts::of(locale), expected, out).run());
}

ParseDateTime::Fields ParseDateTime::parse(const wchar_t* text, const Locale& locale, Fields expected, DateTime& out)
{
    return parse(text == nullptr ? std::wstring_view() : std::wstring_view(text), locale, expected, out);
}

ParseDateTime::Explanation ParseDateTime::explain(const String& text, const Locale& locale, Fields expected)
{
    Explanation explanation;
    TypedParse parse(text.view(), i18n_details::LocaleGuts::of(locale), expected, explanation.m_tValue);
    explanation.m_eFound = static_cast<Fields>(parse.run());
    explanation.m_sDateOrder = parse.dateOrder();
    return explanation;
}

}  // namespace vel
