#pragma once

#include <string>
#include <string_view>

#include "webi18n/parsedatetime.h"

// The rules of the date and time parsers a second time, as plainly as they can be written: tables of rows, values
// passed and returned, nothing clever. For comparison only, never for speed.

namespace reference {

/// What the typed parser takes from a locale.
struct Conventions
{
    vel::Locale::DateOrder m_eOrder = vel::Locale::kMDY;
    std::wstring m_sAM;
    std::wstring m_sPM;
    std::wstring m_sTimeSeparator;
    std::wstring m_sDateSeparator;

    static Conventions of(const vel::Locale& locale);
};

struct TypedAnswer
{
    unsigned m_nFound = 0;
    vel::DateTime m_tValue;  ///< after a failure what was stored before it
    /// The first fraction character was no digit: then the fraction has no range.
    bool m_bOddFraction = false;
};

TypedAnswer parseTyped(std::wstring_view text, const Conventions& conventions, unsigned expected);

struct XmlAnswer
{
    vel::ParseDateTime::XmlType m_eForm = vel::ParseDateTime::kInvalid;
    vel::DateTime m_tValue;  ///< meaningful unless the form is kInvalid
    /// The text was white space only: the caller's value stays as it was.
    bool m_bUntouched = false;
};

/// Recurses once a sign: not for texts of thousands of them.
XmlAnswer parseXml(std::wstring_view text);

}  // namespace reference
