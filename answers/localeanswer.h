#pragma once

#include "answers/json.h"
#include "webi18n/locale.h"

namespace answers {

/// Everything that a locale holds: `locale`, each string property by its name, `dateOrder`, `24hours`,
/// `firstDayOfWeek`, a user's `currencyTag`, the lists as they are stored, `scaleFactors`, and under `effective` the
/// names and formats that are used.
Json describeLocale(const vel::Locale& locale);

}  // namespace answers
