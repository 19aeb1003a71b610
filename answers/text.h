#pragma once

#include <string>
#include <string_view>

namespace answers {

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

/// Two small hexadecimal digits for each byte.
///
///     "\x0A\xFF" -> 0aff
std::string hexadecimalText(std::string_view bytes);

}  // namespace answers
