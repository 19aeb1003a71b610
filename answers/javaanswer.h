#pragma once

#include "answers/json.h"
#include "webi18n/nlsutils.h"

namespace answers {

/// `language`, `country`, `variant` and the whole as `string`.
Json describeJava(const vel::JavaLocale& java);

}  // namespace answers
