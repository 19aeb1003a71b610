#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "answers/useroverrides.h"
#include "webi18n/locale.h"

namespace cli {

using answers::userOverrideNames;

/// Applies KEY=VALUE settings, the last of a key counts. Throws UsageError, which says what is accepted.
///
///     decimalSeparator=,   dateOrder=dmy   24hours=true
void applyUserOverrides(const std::vector<std::string>& settings, vel::Locale& locale);

}  // namespace cli
