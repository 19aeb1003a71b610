#pragma once

#include <optional>
#include <string_view>

#include "check/findings.h"

namespace cli {

/// What a format is for, and so what it may and must hold.
enum FormatKind
{
    kDateFormat,     ///< the date: day, month and year, no time
    kTimeFormat,     ///< the time: hours and minutes, no date
    kDateEntry,      ///< an entry of a list of date formats: no time
    kTimeEntry,      ///< an entry of a list of time formats: no date
    kDateTimeEntry,  ///< an entry of a list of both
};

/// Judges a date or time format in the token language of definitions: d dd ddd dddd M MM MMM MMMM yy yyyy h hh H HH m
/// mm s ss t tt; text that holds letters from A to Z stands between apostrophes. Gives the first problem.
///
///     "dd/MM/yyyy" -> (nothing)            "DD/MM/YYYY" -> foreign-token, write dd
///     "d 'de' MMMM yyyy" -> (nothing)      "d de MMMM yyyy" -> foreign-token, 'e'
///     "dd/mm/yyyy" -> misplaced-token, mm are minutes
///     "h:mm" -> missing-token, no tt       "d 'de MMMM" -> unclosed-quote
std::optional<Problem> checkFormat(FormatKind kind, std::wstring_view name, std::wstring_view format);

}  // namespace cli
