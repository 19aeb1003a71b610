#include <optional>

#include "slowparsedatetime.h"
#include "slowvalues.h"

namespace reference {

using vel::ParseDateTime;

namespace {

/// The forms, each written out; a text is of the form whose row it matches to the end, and it matches at most one.
///
///     Y M D h m s   a number, with the white space behind it, within the field's range
///     F             the fraction
///     z             the end of a date: nothing, or Z and white space
///     Z             the end of a time: nothing, or Z
///     _             white space that may stand
///     +             something must follow
///     anything else stands for itself
struct FormRow
{
    ParseDateTime::XmlType m_eForm;
    std::wstring_view m_sPattern;
};

constexpr FormRow kFormRows[] = {
    {ParseDateTime::kXmlDay, L"---Dz"},
    {ParseDateTime::kXmlMonth, L"--M--z"},
    {ParseDateTime::kXmlMonthDay, L"--M-Dz"},
    {ParseDateTime::kXmlYear, L"Yz"},
    {ParseDateTime::kXmlYearMonth, L"Y-Mz"},
    {ParseDateTime::kXmlDate, L"Y-M-Dz"},
    {ParseDateTime::kXmlDateTime, L"Y-M-DT_h:+m:sZ"},
    {ParseDateTime::kXmlDateTime, L"Y-M-DT_h:+m:s.FZ"},
    {ParseDateTime::kXmlTime, L"h:+m:sZ"},
    {ParseDateTime::kXmlTime, L"h:+m:s.FZ"},
};

struct RangeRow
{
    wchar_t m_cLetter;
    std::uint32_t m_nLeast;
    std::uint32_t m_nMost;
};

constexpr RangeRow kRangeRows[] = {
    {L'Y', 1, 0xFFFFFFFF}, {L'M', 1, 12}, {L'D', 1, 31}, {L'h', 0, 23}, {L'm', 0, 59}, {L's', 0, 59},
};

std::wstring_view withoutLeadingSpace(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L"\t \n\r\x2028\x2029");
    return first == std::wstring_view::npos ? std::wstring_view() : text.substr(first);
}

bool isRange(wchar_t letter, std::uint32_t value)
{
    for (const RangeRow& row : kRangeRows) {
        if (row.m_cLetter == letter) {
            return value >= row.m_nLeast && value <= row.m_nMost;
        }
    }
    return false;
}

/// What is left behind the fraction, whose number and white space count as its digits.
std::optional<std::wstring_view> matchFraction(std::wstring_view text, Values& values)
{
    const Number number = leadingNumber(text);
    const std::wstring_view rest = withoutLeadingSpace(text.substr(number.m_nLength));
    const std::size_t taken = text.size() - rest.size();
    if (taken > 9) {
        return std::nullopt;
    }
    values.put(L'f', nanoseconds(number.m_nValue, taken));
    return rest;
}

/// What is left behind the piece of a form, or nothing when the text does not match it.
std::optional<std::wstring_view> matchPiece(wchar_t piece, std::wstring_view text, Values& values)
{
    switch (piece) {
    case L'F':
        return matchFraction(text, values);
    case L'_':
        return withoutLeadingSpace(text);
    case L'+':
        return text.empty() ? std::nullopt : std::optional(text);
    case L'z':
        return beginsWith(text, L"Z") ? withoutLeadingSpace(text.substr(1)) : text;
    case L'Z':
        return beginsWith(text, L"Z") ? text.substr(1) : text;
    case L'-':
    case L':':
    case L'.':
    case L'T':
        return !text.empty() && text[0] == piece ? std::optional(text.substr(1)) : std::nullopt;
    default:
        break;
    }
    const Number number = leadingNumber(text);
    if (!isRange(piece, number.m_nValue)) {
        return std::nullopt;
    }
    values.put(piece, number.m_nValue);
    return withoutLeadingSpace(text.substr(number.m_nLength));
}

std::optional<Values> matchForm(std::wstring_view pattern, std::wstring_view text)
{
    Values values;
    for (const wchar_t piece : pattern) {
        const std::optional<std::wstring_view> rest = matchPiece(piece, text, values);
        if (!rest) {
            return std::nullopt;
        }
        text = *rest;
    }
    return text.empty() ? std::optional(values) : std::nullopt;
}

/// A text behind its sign is read by the same rules from the start; it must have a year, which is turned.
XmlAnswer parseSigned(std::wstring_view text)
{
    XmlAnswer answer = parseXml(text);
    answer.m_bUntouched = false;
    if (answer.m_eForm == ParseDateTime::kInvalid || answer.m_tValue.m_nYear == 0) {
        return {};
    }
    answer.m_tValue.m_nYear = static_cast<std::int16_t>(-answer.m_tValue.m_nYear);
    return answer;
}

}  // namespace

XmlAnswer parseXml(std::wstring_view text)
{
    text = withoutLeadingSpace(text);
    if (text.empty()) {
        return {ParseDateTime::kInvalid, {}, true};
    }
    if (beginsWith(text, L"-") && !beginsWith(text, L"--")) {
        return parseSigned(text.substr(1));
    }
    for (const FormRow& row : kFormRows) {
        if (const std::optional<Values> values = matchForm(row.m_sPattern, text)) {
            return {row.m_eForm, values->dateTime(), false};
        }
    }
    return {};
}

}  // namespace reference
