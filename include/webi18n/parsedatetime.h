#pragma once

#include <string_view>

#include "vel/core/api.h"
#include "vel/core/datetime.h"
#include "webi18n/locale.h"

namespace vel {

/// Reads dates and times: what people type, in a locale's conventions, and the values of XML Schema. Stateless; every
/// operation is safe from any thread, allocates nothing, and takes time linear in the text. A typed text is compared
/// with the locale's AM and PM markers at each of its letters, so its time is at most that of its length times theirs.
class WEBI18N_API ParseDateTime
{
public:
    /// A set of fields: what a caller expects, and what was found.
    enum Fields : unsigned
    {
        kParseError = 0,
        kYear = 1,
        kMonth = 2,
        kDay = 4,
        kHour = 8,
        kMinute = 16,
        kSecond = 32,
        kNanoseconds = 64,
        kYearMonth = 3,
        kMonthDay = 6,
        kDate = 7,
        kHourMinute = 24,
        kTime = 56,
        kTimeFraction = 120,
        kDateTime = 63,
        kTimeStamp = 127
    };

    /// The form of an XML Schema value.
    enum XmlType : unsigned
    {
        kInvalid = 0,
        kXmlDateTime = 1,   ///< 2005-12-31T23:59:59, fraction and Z optional
        kXmlDate = 2,       ///< 2005-12-31, Z optional
        kXmlTime = 3,       ///< 23:59:59, fraction and Z optional
        kXmlYear = 4,       ///< 2005, Z optional
        kXmlYearMonth = 5,  ///< 2005-12, Z optional
        kXmlMonthDay = 6,   ///< --12-31, Z optional
        kXmlMonth = 7,      ///< --12--, Z optional
        kXmlDay = 8         ///< ---31, Z optional
    };

    /// What parse makes of a text, and the order by which it read the date.
    struct Explanation
    {
        Fields m_eFound = kParseError;
        DateTime m_tValue;
        /// "mdy", "dmy" or "ymd", and "myd" for values of year and month: the order by which the first number of the
        /// date got its field, or would have where there is none. A literal.
        std::wstring_view m_sDateOrder;
    };

    ParseDateTime() = delete;

    /// Reads a typed date, time or both. Forgiving: picks out the runs of digits and gives each to the next field of
    /// the locale's date order, corrected by the separator behind the run, its length and its value; words are skipped,
    /// the AM and PM markers of the locale and of English are seen in any case. A two-digit year up to 62 is in the
    /// 2000s.
    ///
    /// `expected` chooses the order (year-month and month-day values have their own) and whether the first run is a
    /// date or a time; what was found is not compared with it. Result: the fields found, kParseError (0) for none or a
    /// failure. `out` is cleared first; after a failure it may hold what was read before. An invalid locale throws
    /// InvalidHandleException; nothing else does.
    ///
    /// In en-us, where nothing else is said, expecting kTimeStamp:
    ///
    ///     12/31/2005              -> kDate, 2005-12-31
    ///     31/12/2005              -> kParseError (31 is no month; nothing is swapped)
    ///     2005-12-31              -> kDate: a long first run is a year and makes the date year-first
    ///     5/6/62, 5/6/63          -> 2062, 1963
    ///     12/31/2005 3:15:20.5 PM -> kTimeStamp, hour 15, fraction 500000000
    ///     10:30 (kDate expected)  -> kHourMinute: the separator says that it is a time
    ///     12 2005 (de-de)         -> kYearMonth, month 12
    ///     December 2005           -> kYear
    ///     24:00                   -> kHourMinute, hour 24, accepted on purpose
    ///     12:30:45.               -> kTime, no fraction
    static Fields parse(std::wstring_view text, const Locale& locale, Fields expected, DateTime& out);
    /// The same for a text that ends at its first zero; a null pointer is an empty text.
    static Fields parse(const wchar_t* text, const Locale& locale, Fields expected, DateTime& out);

    /// The same decision with the order that was used, for those who show why a text was read as it was.
    ///
    ///     en-us: 12/31/2005 -> "mdy"          10:30:45 2005-12-31 -> "ymd": the long run makes it year-first
    ///     de-de: 12 2005 (kYearMonth) -> "myd"          31/12 10:30:45 2005 -> "dmy": the date had begun before
    static Explanation explain(const String& text, const Locale& locale, Fields expected);

    /// Reads the text from `begin` up to `end`, which need not be terminated, as an XML Schema date or time. Strict but
    /// for a few fixed places where white space may stand; the only time zone is "Z", which changes nothing. Days are
    /// not checked against their month; a year is cut to 16 bits. Result: the form, or kInvalid. `out` holds the form's
    /// fields, the others are 0; after kInvalid it may hold what was read before, but for a text of white space only it
    /// is not touched.
    ///
    ///     2005-12-31T23:59:59.123Z -> kXmlDateTime, fraction 123000000
    ///     -2005                    -> kXmlYear, year -2005
    ///     --12--                   -> kXmlMonth        --12-25 -> kXmlMonthDay        ---25 -> kXmlDay
    ///     2005-12-31T24:00:00      -> kInvalid
    ///     10:00:00+05:00           -> kInvalid
    ///     10:00:00.5 and a blank   -> kXmlTime, fraction 50000000: the blank counts as a digit's place
    ///     2005Z and a blank        -> kXmlYear        10:00:00Z and a blank -> kInvalid
    static XmlType parseXmlDateTime(const wchar_t* begin, const wchar_t* end, DateTime& out) noexcept;
};

}  // namespace vel
