#include "fractions.h"
#include "webi18n/parsedatetime.h"

// The values of XML Schema's date and time types.

namespace vel {

namespace {

using i18n_details::kMaxFractionDigits;
using i18n_details::scaleToNanoseconds;
using XmlType = ParseDateTime::XmlType;

/// Told by one comparison of nearly every character that stands in a value; the rest may be white space or not.
bool isSurelyNoSpace(wchar_t character) noexcept
{
    return static_cast<std::uint32_t>(character) - 0x21 < 0x2028 - 0x21;
}

bool isXmlSpace(wchar_t character) noexcept
{
    return !isSurelyNoSpace(character) && (character == 0x20 || character == 0x09 || character == 0x0A ||
                                           character == 0x0D || character == 0x2028 || character == 0x2029);
}

bool isDigit(wchar_t character) noexcept
{
    return static_cast<std::uint32_t>(character) - L'0' < 10;
}

std::uint32_t digitValue(wchar_t character) noexcept
{
    return static_cast<std::uint32_t>(character) - L'0';
}

bool inRange(std::uint32_t value, std::uint32_t least, std::uint32_t most) noexcept
{
    return value - least <= most - least;  // what is below wraps to above
}

/// Walks over the text; every operation leaves the position at or before the end.
/// Two pointers: a form that goes on to the end of the text takes it by value, in registers.
class XmlScanner
{
public:
    XmlScanner(const wchar_t* begin, const wchar_t* end) noexcept : m_pNext(begin), m_pEnd(end) {}

    bool atEnd() const noexcept { return m_pNext == m_pEnd; }
    const wchar_t* position() const noexcept { return m_pNext; }
    bool stands(wchar_t character) const noexcept { return m_pNext != m_pEnd && *m_pNext == character; }

    /// Steps over the character when it stands here.
    bool skip(wchar_t character) noexcept
    {
        if (!stands(character)) {
            return false;
        }
        ++m_pNext;
        return true;
    }

    void skipWhiteSpace() noexcept
    {
        while (m_pNext != m_pEnd && isXmlSpace(*m_pNext)) {
            ++m_pNext;
        }
    }

    /// Reads digits (the value wraps) and skips the white space behind them, also where no digit stood: then 0.
    std::uint32_t readNumber() noexcept
    {
        std::uint32_t value = 0;
        const wchar_t* next = m_pNext;
        for (; next != m_pEnd && isDigit(*next); ++next) {
            value = value * 10 + digitValue(*next);
        }
        m_pNext = next;
        skipWhiteSpace();
        return value;
    }

    /// The same for a month, a day, an hour: nearly all have two digits and punctuation behind, a look at each.
    std::uint32_t readShortNumber() noexcept
    {
        if (m_pEnd - m_pNext > 2 && isDigit(m_pNext[0]) && isDigit(m_pNext[1]) && !isDigit(m_pNext[2]) &&
            isSurelyNoSpace(m_pNext[2])) {
            const std::uint32_t value = digitValue(m_pNext[0]) * 10 + digitValue(m_pNext[1]);
            m_pNext += 2;
            return value;
        }
        return readNumber();
    }

    /// Reads a number into a field when it lies in the range.
    bool readField(std::uint32_t least, std::uint32_t most, std::uint16_t& field) noexcept
    {
        const std::uint32_t value = readShortNumber();
        if (!inRange(value, least, most)) {
            return false;
        }
        field = static_cast<std::uint16_t>(value);
        return true;
    }

    /// The end of a date form: nothing, or "Z" and then only white space.
    bool endsDate() noexcept
    {
        if (skip(L'Z')) {
            skipWhiteSpace();
        }
        return atEnd();
    }

    /// The end of a time form: nothing, or "Z" as the very last character. The asymmetry with dates is deliberate.
    bool endsTime() noexcept
    {
        skip(L'Z');
        return atEnd();
    }

private:
    const wchar_t* m_pNext;
    const wchar_t* m_pEnd;
};

/// Behind the "." of the seconds. The white space that the number scanner skips counts as digits, on purpose.
bool readFraction(XmlScanner& scanner, DateTime& out) noexcept
{
    const wchar_t* begin = scanner.position();
    const std::uint32_t value = scanner.readNumber();
    const std::size_t consumed = static_cast<std::size_t>(scanner.position() - begin);
    if (consumed > kMaxFractionDigits) {
        return false;
    }
    out.m_nFraction = scaleToNanoseconds(value, consumed);
    return true;
}

/// Behind the ":" that follows the hour. A text that ends here has no second colon either.
XmlType readTime(XmlScanner scanner, std::uint32_t hour, DateTime& out) noexcept
{
    if (hour > 23) {
        return ParseDateTime::kInvalid;
    }
    out.m_nHour = static_cast<std::uint16_t>(hour);
    if (!scanner.readField(0, 59, out.m_nMinute) || !scanner.skip(L':') || !scanner.readField(0, 59, out.m_nSecond)) {
        return ParseDateTime::kInvalid;
    }
    if (scanner.skip(L'.') && !readFraction(scanner, out)) {
        return ParseDateTime::kInvalid;
    }
    return scanner.endsTime() ? ParseDateTime::kXmlTime : ParseDateTime::kInvalid;
}

/// Behind the "T" of a date-time, where only a time will do.
XmlType readTimeOfDate(XmlScanner scanner, DateTime& out) noexcept
{
    scanner.skipWhiteSpace();
    const std::uint32_t hour = scanner.readShortNumber();
    if (!scanner.skip(L':') || readTime(scanner, hour, out) != ParseDateTime::kXmlTime) {
        return ParseDateTime::kInvalid;
    }
    return ParseDateTime::kXmlDateTime;
}

/// Behind the "-" that follows the year.
XmlType readDate(XmlScanner scanner, DateTime& out) noexcept
{
    if (!scanner.readField(1, 12, out.m_nMonth)) {
        return ParseDateTime::kInvalid;
    }
    if (!scanner.skip(L'-')) {
        return scanner.endsDate() ? ParseDateTime::kXmlYearMonth : ParseDateTime::kInvalid;
    }
    if (!scanner.readField(1, 31, out.m_nDay)) {
        return ParseDateTime::kInvalid;
    }
    if (scanner.skip(L'T')) {
        return readTimeOfDate(scanner, out);
    }
    return scanner.endsDate() ? ParseDateTime::kXmlDate : ParseDateTime::kInvalid;
}

/// A form that begins with a number: a time, a date, or a year.
XmlType readNumberForm(XmlScanner scanner, DateTime& out) noexcept
{
    const std::uint32_t number = scanner.readNumber();
    if (scanner.skip(L':')) {
        return readTime(scanner, number, out);
    }
    // The number as read must not be 0; the field may be, when it is cut to 16 bits.
    if (number == 0) {
        return ParseDateTime::kInvalid;
    }
    out.m_nYear = static_cast<std::int16_t>(number);
    if (scanner.skip(L'-')) {
        return readDate(scanner, out);
    }
    return scanner.endsDate() ? ParseDateTime::kXmlYear : ParseDateTime::kInvalid;
}

XmlType readDay(XmlScanner scanner, DateTime& out, XmlType form) noexcept
{
    return scanner.readField(1, 31, out.m_nDay) && scanner.endsDate() ? form : ParseDateTime::kInvalid;
}

/// Behind the "--" of the forms without a year.
XmlType readYearlessForm(XmlScanner scanner, DateTime& out) noexcept
{
    if (scanner.skip(L'-')) {
        return readDay(scanner, out, ParseDateTime::kXmlDay);
    }
    if (!scanner.readField(1, 12, out.m_nMonth) || !scanner.skip(L'-') || scanner.atEnd()) {
        return ParseDateTime::kInvalid;
    }
    if (!scanner.skip(L'-')) {
        return readDay(scanner, out, ParseDateTime::kXmlMonthDay);
    }
    return scanner.endsDate() ? ParseDateTime::kXmlMonth : ParseDateTime::kInvalid;
}

/// Applies the signs that stood before a form: it must have a year, and each one turns it.
XmlType applySigns(std::size_t signs, XmlType form, DateTime& out) noexcept
{
    if (signs == 0 || form == ParseDateTime::kInvalid) {
        return form;
    }
    if (out.m_nYear == 0) {
        return ParseDateTime::kInvalid;
    }
    if (signs % 2 == 1) {
        out.m_nYear = static_cast<std::int16_t>(-out.m_nYear);
    }
    return form;
}

}  // namespace

ParseDateTime::XmlType ParseDateTime::parseXmlDateTime(const wchar_t* begin, const wchar_t* end, DateTime& out) noexcept
{
    XmlScanner scanner(begin, end);
    // Behind a sign the whole grammar applies again, white space and further signs included; a loop, since the text
    // decides how many there are.
    for (std::size_t signs = 0;; ++signs) {
        scanner.skipWhiteSpace();
        if (scanner.atEnd()) {
            return kInvalid;
        }
        out.clear();
        if (!scanner.skip(L'-')) {
            return applySigns(signs, readNumberForm(scanner, out), out);
        }
        if (scanner.skip(L'-')) {
            return applySigns(signs, readYearlessForm(scanner, out), out);
        }
    }
}

}  // namespace vel
