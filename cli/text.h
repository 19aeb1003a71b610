#pragma once

#include <string>
#include <string_view>

#include "vel/core/string.h"

namespace cli {

/// The wide form of text from outside. Throws UsageError, which begins with `where` and names the byte offset, for
/// what is no UTF-8.
///
///     "argument 2", "a\xFF" -> argument 2: invalid UTF-8 at byte offset 1
vel::String wideText(std::string_view utf8, const std::string& where);

/// The UTF-8 form.
std::string utf8Text(std::wstring_view text);

/// The UTF-8 form on one line, for people: line feeds, tabs and other control characters are spelled out.
///
///     "a(line feed)b" -> a\nb    "a(tab)b" -> a\tb    "(zero)" -> \u{0}    "a\b" -> a\b
std::string visibleText(std::wstring_view text);

/// The same between quotation marks, with the names of white space other than the blank and of invisible characters.
///
///     "," -> ","    " " -> " "    no-break space -> " " (U+00A0)
std::string quotedText(std::wstring_view text);

}  // namespace cli
