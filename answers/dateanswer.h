#pragma once

#include <optional>
#include <string_view>

#include "answers/json.h"
#include "vel/core/datetime.h"
#include "webi18n/parsedatetime.h"

namespace answers {

/// Every name that expectationOf accepts, for people.
inline constexpr const char* ksExpectationNames =
    "date, time, datetime, timestamp, year-month, month-day and hour-minute";

/// What is expected, by its name; nothing for any other name.
///
///     date -> kDate    timestamp -> kTimeStamp    Date -> nothing
std::optional<vel::ParseDateTime::Fields> expectationOf(std::string_view name);

/// Adds year, month, day, hour, minute, second and fraction.
void addDateTime(const vel::DateTime& value, Json& json);

/// The names of the fields in the set: year month day hour minute second nanoseconds.
Json fieldNames(unsigned fields);

/// What a typed text says: `text`, `result` (0: it cannot be read), `fields`, the seven numbers, and what the same text
/// says under another date order (`ambiguous`, `alternatives`), with the conventions that were `used`.
Json describeTyped(const vel::String& text, const vel::Locale& locale, vel::ParseDateTime::Fields expected);

}  // namespace answers
