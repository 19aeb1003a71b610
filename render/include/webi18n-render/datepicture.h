#pragma once

#include <string_view>

#include "vel/core/api.h"
#include "vel/core/datetime.h"
#include "vel/core/handle.h"
#include "vel/core/stringbuffer.h"
#include "webi18n/locale.h"

namespace vel {

namespace render_details {
class DateSteps;
}  // namespace render_details

/// A picture of a date, a time or both in the token language of the definitions, taken apart once and then rendered as
/// often as wanted. A cheap value: copies share immutable steps, and any number of threads may render one picture at
/// the same time.
///
/// A token is a run of one letter, as long as it can be:
///
///     d, dd        day of the month: 5, 05             ddd, dddd    name of the day: Mon, Monday
///     M, MM        month: 2, 02                        MMM, MMMM    name of the month: Feb, February
///     yy, yyyy     year: 05, 2005                      h, hh        hour of the 12-hour clock: 3, 03
///     H, HH        hour of the 24-hour clock: 9, 09    m, mm        minute: 7, 07
///     s, ss        second: 1, 01                       t, tt        A, AM: the locale's marker, t its first character
///
/// MMMM beside a day (d or dd, anywhere in the picture) is the genitive name where the locale has such names. Names
/// that the locale lacks are English and whole. Text stands between apostrophes; two of them, inside or outside, are
/// one; without a closing one the text goes to the end. All other characters stand for themselves, and so does a run of
/// letters that is no token. For Saturday, 2005-02-05 15:07:01 in en-us:
///
///     dddd, MMMM dd, yyyy       -> Saturday, February 05, 2005
///     d.M.yy                    -> 5.2.05
///     h:mm:ss tt                -> 3:07:01 PM          HH'h'mm -> 15h07
///     hh 'o''clock' t           -> 03 o'clock P        ''yy    -> '05
///     MMMMM yyy y D ttt         -> the same: none of them is a token
///     d 'of MMMM                -> 5 of MMMM
///     d MMMM yyyy (ru-ru)       -> 5 февраля 2005      MMMM yyyy (ru-ru) -> февраль 2005
///     tth:mm (ja-jp)            -> 午後3:07
///
/// A separator stands in an input format as the definition or the user wrote it, so letters and apostrophes in it are
/// read as here: with the separator "d", "MMddddyyyy" -> 02Saturday2005.
///
/// Fields outside of their ranges have their output too: numbers are written as they are, hours of the 12-hour clock
/// are taken modulo 12 and their markers modulo 24, and what has no name has no text.
///
///     month 13: M -> 13, MMMM -> nothing                 day 0: dd -> 00
///     February 30, month 0, year -32768: dddd -> nothing: there is no such date (the year: beyond the calendar)
///     hour 0: h tt -> 12 AM      hour 24: H -> 24, h tt -> 12 AM      hour 37: h tt -> 1 PM
///     year 5: yyyy -> 0005       year 12005: yyyy -> 12005, yy -> 05      year -44: yyyy -> -0044, yy -> 44
class WEBI18N_API DatePicture
{
public:
    /// The empty picture, which renders as nothing.
    DatePicture() noexcept;
    /// Takes any text; it is not needed afterwards. Throws std::bad_alloc.
    explicit DatePicture(std::wstring_view picture);
    DatePicture(const DatePicture&) noexcept;
    DatePicture& operator=(const DatePicture&) noexcept;
    ~DatePicture();

    /// Appends the moment. Allocates nothing where `out` has room and a name of a day has at most 64 characters. An
    /// invalid locale throws InvalidHandleException, and nothing is appended; when memory runs out, std::bad_alloc, and
    /// `out` may end in a part of the text.
    void append(const DateTime& moment, const Locale& locale, StringBufferBaseTemplate<wchar_t>& out) const;

    /// The same for a picture that is rendered once: nothing is kept of it. The picture may not lie in `out`.
    static void append(std::wstring_view picture, const DateTime& moment, const Locale& locale,
                       StringBufferBaseTemplate<wchar_t>& out);

private:
    Handle<const render_details::DateSteps> m_hSteps;
};

}  // namespace vel
