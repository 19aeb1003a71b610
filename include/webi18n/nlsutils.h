#pragma once

#include "vel/core/api.h"
#include "vel/core/kwwuilanguage.h"
#include "vel/core/string.h"
#include "webi18n/locale.h"

namespace vel {

/// A locale as Java writes it. A plain value.
struct WEBI18N_API JavaLocale
{
    String m_sLanguage;  ///< as found, letter case untouched
    String m_sCountry;   ///< in upper case when NLSUtils made it
    String m_sVariant;   ///< empty when NLSUtils made it

    /// Language, underscore, country; a variant follows a second underscore.
    ///
    ///     (en, US, "")  -> en_US        (en, "", X)   -> en__X
    ///     (en, "", "")  -> en           ("", US, "")  -> _US
    ///     (en, US, X)   -> en_US_X      ("", "", "")  -> ""
    String toString() const;

    /// All three parts, by character value.
    friend bool operator==(const JavaLocale&, const JavaLocale&) = default;
};

/// Conversions to Java locales. They look at names and tags only, at no tables. Any thread.
class WEBI18N_API NLSUtils
{
public:
    NLSUtils() = delete;

    /// Splits the locale's definition name at its first hyphen; what follows is the country, further hyphens included.
    /// A name without a hyphen gives an empty JavaLocale, deliberately, not one with a language only. Throws
    /// InvalidHandleException for a locale that holds nothing.
    ///
    ///     en-us      -> (en, US)          fr -> ("", "")
    ///     zh-hant-tw -> (zh, HANT-TW)     fr- -> (fr, "")
    static JavaLocale localeToJavaLocale(const Locale& rLocale);

    /// The interface's language with the locale's country. A language tag with a hyphen is split as it is, whatever the
    /// name of the locale; otherwise the first two characters of the tag are the language, in the spelling of the
    /// locale when it has the same one but for letter case. Throws InvalidHandleException for a locale that holds
    /// nothing, whatever the tag.
    ///
    ///     fr, locale FR-ca    -> (FR, CA)     zh-Hant-TW, locale en-us -> (zh, HANT-TW)
    ///     de, locale en-us    -> (de, US)     deu, locale en-us        -> (de, US)
    ///     de, locale fr       -> (de, "")     "", locale en-us         -> ("", US)
    static JavaLocale languageLocaleToJavaLocale(const KWWUILanguage& rLanguage, const Locale& rLocale);
};

}  // namespace vel
