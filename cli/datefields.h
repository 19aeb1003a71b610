#pragma once

#include "output.h"
#include "vel/core/datetime.h"
#include "webi18n/parsedatetime.h"

namespace cli {

/// Adds year, month, day, hour, minute, second and fraction.
void addDateTime(const vel::DateTime& value, Json& json);

/// The names of the fields in the set: year month day hour minute second nanoseconds.
Json fieldNames(unsigned fields);

/// The same facts as the JSON object on the output; members that are objects or lists are shown as JSON.
void answerWithFacts(const Json& json, Output& output);

}  // namespace cli
