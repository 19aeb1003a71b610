#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "check/findings.h"

namespace cli {

/// Judges one separator by itself: characters that look like those of a keyboard but are others, and line feeds or
/// tabs, which come from the layout of the file.
///
///     "," -> (nothing)    ". " -> (nothing)    U+2019 -> look-alike-separator, write ' instead
///     U+202F -> look-alike-separator, write a blank instead    "(line feed)," -> white-space
std::optional<Problem> checkSeparator(std::wstring_view name, std::wstring_view text);

}  // namespace cli
