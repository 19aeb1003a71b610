/// \file
/// ICU's results as the pack holds them: failures become exceptions, texts become UTF-8 that a user can type.
#pragma once

#include <unicode/unistr.h>
#include <unicode/utypes.h>

#include <string>

namespace datapack {

/// Does nothing on success (warnings included).
/// \throws std::runtime_error "ICU: `what`: <error name>"
void checkIcu(UErrorCode status, const std::string& what);

/// The text in UTF-8, unchanged.
std::string toUtf8(const icu::UnicodeString& text);

/// The text as it can be typed and compared: without direction marks (U+200E, U+200F, U+061C), with plain blanks for
/// no-break, narrow no-break and thin ones. Data carries those for typesetting; in a format that is matched
/// against typed text they are invisible traps.
///
///     "h:mm:ss<U+202F>a" -> "h:mm:ss a"        "d<U+200F>/M<U+200F>/y" -> "d/M/y"        "1 000" -> "1 000"
icu::UnicodeString typable(const icu::UnicodeString& text);

/// typable() for separators, where the typographic apostrophe and the Arabic comma become the ones on the keyboard as
/// well: "’" -> "'", "،" -> ","
std::string typableSeparator(const icu::UnicodeString& text);

}  // namespace datapack
