/// \file
/// Which locales the pack holds, what they are called, and which of them is based on which.
#pragma once

#include <unicode/locid.h>

#include <string>
#include <vector>

namespace datapack {

/// One locale of the pack. Texts are ASCII.
struct PackLocale
{
    icu::Locale icu;          ///< with the Gregorian calendar and ASCII digits
    icu::Locale display;      ///< for its display name: without keywords, script only where the name has it
    std::string language;     ///< "sr"
    std::string script;       ///< the script it is written in, always set: "Latn"
    std::string region;       ///< "RS", "419"
    std::string name;         ///< the definition name: "sr-latn-rs", "en-us"
    std::string base;         ///< the name of the definition it is based on; empty for a language's main locale
    std::string messageKey;   ///< "kmsgLocaleName_srLatnRS"
    std::string uiLanguage;   ///< the language of its messages: "sr-Latn", "en"
    bool isScriptMain;        ///< the main locale of its language and script
    bool hasLanguageScripts;  ///< ICU tells the locales of its language apart by script
};

/// Every locale that ICU has with a region and without a variant.
///
/// The main locale of a language and script is the one of the likely region (en-us of en, zh-tw of zh in Hant). It
/// stands before its group; the main locale of a language's usual script stands before the language's other locales
/// and is based on nothing. So a base always stands earlier. Within these rules the order is that of the names.
std::vector<PackLocale> packLocales();

/// The locale with its likely subtags: "sr_ME" -> "sr_Latn_ME". Unchanged where ICU knows none.
icu::Locale withLikelySubtags(const icu::Locale& locale);

}  // namespace datapack
