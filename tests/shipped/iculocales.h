/// \file
/// ICU's locales of the pack's definitions, and ICU's texts as the pack holds them.
#pragma once

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <string>

namespace shipped {

/// ICU's locale of a definition, with the Gregorian calendar and ASCII digits.
/// \throws std::out_of_range when ICU has none.
icu::Locale icuLocale(const std::string& definition);

/// The text in UTF-8 with plain blanks, without direction marks, with the keyboard's minus.
std::string plainText(const icu::UnicodeString& text);

}  // namespace shipped
