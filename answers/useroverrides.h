#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "webi18n/locale.h"

namespace answers {

/// The names of the overrides.
std::vector<const char*> userOverrides();

/// The same, separated by ", ".
std::string userOverrideNames();

/// Whether there is an override of that name.
bool isUserOverride(std::string_view key);

/// Applies what a user sets instead of the locale's own; an empty value leaves it to the locale again. Nothing, or what
/// would have been accepted; then the locale is unchanged.
///
///     decimalSeparator ,  -> nothing      dateOrder dmy -> nothing      dateOrder (empty) -> nothing
///     24hours yes         -> accepted are true and false
///     colour red          -> the keys are currencyTag, dateFormat, ...
std::optional<std::string> applyUserOverride(std::string_view key, const vel::String& value, vel::Locale& locale);

}  // namespace answers
