#pragma once

#include <string>

#include "answers/captions.h"
#include "answers/json.h"
#include "webi18n/locale.h"

namespace answers {

/// The locale's name in the captions' language; one that the language lacks is the English one, and without that the
/// locale's own.
vel::String nameOf(const vel::Locale& locale, const Captions& captions);

/// `locale`, its `name` in the captions' language, and its `defaultLanguage`.
Json describeName(const vel::Locale& locale, const Captions& captions);

/// The definition's name spelled as language tags are, for a page's "lang"; the default language for a name that is
/// none.
///
///     fr-ca -> fr-CA      sr-latn-rs -> sr-Latn-RS      es-419 -> es-419      my locale -> its default language
std::string languageTag(const vel::Locale& locale);

/// "rtl" when the names of the locale's months and days are written from right to left, else "ltr".
///
///     en-us -> ltr      ar-eg, he-il -> rtl      pa-pk -> rtl      pa-in -> ltr
const char* directionOf(const vel::Locale& locale);

}  // namespace answers
