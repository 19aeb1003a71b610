/// \file
/// ICU's locales of the pack's definitions, and ICU's texts as the pack holds them.
#pragma once

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <map>
#include <string>

namespace shipped {

/// The locale's name with its likely subtags, which ICU's spelling of a locale and a definition's have in common:
/// "zh-hk" and "zh_Hant_HK" -> "zh_Hant_HK"
std::string maximalName(icu::Locale locale);

/// Every ICU locale with a region and no variant by its maximalName().
/// \throws std::runtime_error when two of them have one name.
const std::map<std::string, icu::Locale>& icuLocales();

/// ICU's locale of a definition, with the Gregorian calendar and ASCII digits.
/// \throws std::out_of_range when ICU has none.
icu::Locale icuLocale(const std::string& definition);

/// The text in UTF-8 with plain blanks, without direction marks, with the keyboard's minus.
std::string plainText(const icu::UnicodeString& text);

/// plainText() of a separator, with the keyboard's apostrophe and comma as well.
std::string plainSeparator(const icu::UnicodeString& text);

}  // namespace shipped
