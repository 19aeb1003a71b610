#pragma once

#include <optional>
#include <string_view>

#include "answers/json.h"
#include "vel/core/datetime.h"
#include "webi18n-render/decimal.h"
#include "webi18n/currencylookup.h"
#include "webi18n/locale.h"

namespace server {

// How values look in a locale, rendered. Each row of a list has the `picture` and the `text`, those of the formats that
// have one the `name` of the property too.

/// The short, the long and the input format, then the list of date formats.
answers::Json sampleDates(const vel::Locale& locale, const vel::DateTime& moment);
/// The format, the input format, then the list of time formats.
answers::Json sampleTimes(const vel::Locale& locale, const vel::DateTime& moment);
/// The list of formats of both together.
answers::Json sampleDateTimes(const vel::Locale& locale, const vel::DateTime& moment);

/// A number and its negation.
struct Quantity
{
    vel::Decimal m_tPositive;
    vel::Decimal m_tNegative;

    /// Of ASCII digits with a point and a sign, as Decimal reads them; nothing for any other text.
    static std::optional<Quantity> of(std::wstring_view text);
};

/// Each way to show a number, by `name`: positive and negative (in full and in units of the largest scale factor), and
/// a ratio of 0.256 as percent.
answers::Json sampleNumbers(const vel::Locale& locale, const Quantity& number);

/// The amount in a currency: its `tag`, the `positive` text, and under `negatives` a row for each of the currency's
/// negative pictures, that which is `preferred` marked so.
answers::Json sampleAmounts(const vel::Locale& locale, const Quantity& amount, const vel::Currency& currency);

/// The month of the date as a calendar shows it: `weeks` of seven days from the locale's first day of the week on, 0
/// for the days of other months; `days` are their names, `shortDays` the abbreviated ones. The year is 1 to 9999.
answers::Json sampleMonth(const vel::Locale& locale, const vel::DateTime& date);

/// The currency that the user chose, else the locale's own; a null handle when there is none.
vel::Handle<const vel::Currency> currencyOf(const vel::Locale& locale, const vel::CurrencyLookup& currencies);

}  // namespace server
