/// \file
/// Reads a locale's properties from ICU.
#pragma once

#include "locales.h"
#include "properties.h"

namespace datapack {

/// Every property that ICU can fill, monetary separators included; the Gregorian calendar and ASCII digits whatever the
/// locale's own are. Readings that are this pack's own decisions:
/// - formats, separators, markers and templates hold what can be typed (icutext.h);
/// - listSeparator is ";" where a decimal separator is ",", else ",";
/// - timeSeparator is ":" where the locale's own would make a date read as a time (fi: 31.12.2005 with "." for both);
/// - negativeNumberTemplate has the sign where the locale has it, and it is always the keyboard's "-";
/// - percentFormat is a picture as in the negative template: "#" the number, "# %", "%#"; percentSymbolLocation says
///   "before" or "after";
/// - month names stand alone (monthNames) or in a date (genetiveMonthNames, only where that differs; abbrevMonthNames);
///   days are those of the locale's long date, from Monday;
/// - collationNLS_SORT is the BCP 47 tag of the sort that ICU arrives at ("und" for the root order), so locales that
///   sort alike name one sort;
/// - a locale without a country (ar-001) has no currency symbol, and two digits.
Properties readProperties(const PackLocale& locale);

}  // namespace datapack
