#pragma once

#include "output.h"

namespace cli {

/// The same facts as the JSON object on the output; members that are objects or lists are shown as JSON.
void answerWithFacts(const Json& json, Output& output);

}  // namespace cli
