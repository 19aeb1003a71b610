#pragma once

#include "answers/captions.h"
#include "answers/json.h"
#include "webi18n/currency.h"

namespace answers {

/// Everything that a currency holds, with its `caption` and `name` in the captions' language. The captions of local
/// currencies name their locale as the process's catalogue knows it.
Json describeCurrency(const vel::Currency& currency, const Captions& captions);

}  // namespace answers
