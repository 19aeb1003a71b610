/// \file
/// From ICU's date and time patterns to the token language of the definitions.
#pragma once

#include <unicode/unistr.h>

#include <string>
#include <vector>

namespace datapack {

/// A piece of a pattern: a field (ICU's pattern letter and how often it stands) or literal text (letter 0).
struct PatternPiece
{
    char16_t letter;
    int count;
    icu::UnicodeString literal;
};

/// The pieces of an ICU pattern, in order, literals unquoted and typable, neighbouring literals joined. Eras and time
/// zones, for which the definitions have no token, are dropped with the blanks on one side of them.
using Pattern = std::vector<PatternPiece>;

Pattern readPattern(const icu::UnicodeString& icuPattern);

/// The pattern in the definitions' tokens. A letter that would read as a token is quoted.
///
///     EEEE, d MMMM y             -> dddd, d MMMM yyyy
///     EEEE, d 'de' MMMM 'de' y   -> dddd, d 'de' MMMM 'de' yyyy
///     d. LLLL y 'г'.             -> d. MMMM yyyy г.
///     y年M月d日EEEE              -> yyyy年M月d日dddd
///     ah:mm:ss                   -> tth:mm:ss
///     K:mm a                     -> h:mm tt
///     EEEEที่ d MMMM G y           -> ddddที่ d MMMM yyyy
///     d/M/yy                     -> d/M/yy
std::string toTokens(const Pattern& pattern);

/// The pattern with every year in `digits` digits, 2 or 4.
Pattern withYear(Pattern pattern, int digits);

/// The pattern with days and numeric months in `digits` digits: 2, or 1 for as many as needed.
Pattern withDayAndMonth(Pattern pattern, int digits);

/// The pattern with hours in `digits` digits: 2, or 1 for as many as needed.
Pattern withHour(Pattern pattern, int digits);

/// The pattern with AM or PM at its end when its hours are those of a 12-hour clock and it says neither: some locales'
/// data leaves that to the context, which a list of formats to choose from does not have.
///
///     h:mm -> h:mm tt        h:mm a -> h:mm tt        HH:mm -> HH:mm
Pattern withDayPeriod(Pattern pattern);

/// Whether the pattern's hours are those of a 24-hour clock. False for a pattern without hours.
bool is24Hours(const Pattern& pattern);

/// "dmy", "mdy" or "ymd": the order of a date pattern's fields. A year that stands first decides alone.
std::string dateOrder(const Pattern& pattern);

/// What stands between the first two numeric fields: d. M. y -> ". "; empty when that is nothing or holds letters.
std::string fieldSeparator(const Pattern& pattern);

}  // namespace datapack
