#pragma once

#include "output.h"

namespace cli {

/// The same facts as the JSON object, for people: texts between quotation marks, lists with commas, and the members of
/// an object within it as facts of their own.
///
///     {"symbol":"$","digits":2}           -> symbol: "$"    digits: 2
///     {"days":["Mon","Tue"]}              -> days: "Mon", "Tue"
///     {"scaleFactors":[["k","1000"]]}     -> scaleFactors: "k"="1000"
///     {"negativeFormats":{"minus":"-$#"}} -> negativeFormats minus: "-$#"
Facts factsOf(const Json& json);

}  // namespace cli
