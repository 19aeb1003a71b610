#pragma once

#include <string_view>

#include "vel/core/string.h"

namespace cli {

/// A mapping pattern as browsers spell language tags: hyphens, the language in lower case, the script with a capital,
/// the region in capitals. What stands behind the first character that no tag has stays as it is, and so does a last
/// part before a "*" that may be incomplete.
///
///     "fr-ca*" -> fr-CA*    "FR" -> fr    "zh_Hant_TW*" -> zh-Hant-TW*    "sr-latn*" -> sr-Latn*
///     "fr-CA,fr*" -> fr-CA,fr*    "en-u*" -> en-u*    "*" -> *    "es-419*" -> es-419*
vel::String browserSpelling(std::wstring_view pattern);

}  // namespace cli
