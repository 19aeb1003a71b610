#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "webi18n/locale.h"
#include "webi18n/localetaglookup.h"

namespace vel {

namespace i18n_details {
class LocaleMappingImpl;
}  // namespace i18n_details

/// A rule of the mapping file that matched a locale string.
struct LocaleMappingRule
{
    std::size_t m_nIndex;  ///< position in the file, from 0
    String m_sMatches;     ///< its pattern
    String m_sDefinition;  ///< its target; empty when it has none
};

/// Why mapLocale decided as it did.
struct LocaleMappingExplanation
{
    Locale m_tLocale;
    String m_sLanguage;
    std::optional<LocaleMappingRule> m_tRule;   ///< the rule that applied; none when the default locale was taken
    std::vector<LocaleMappingRule> m_tSkipped;  ///< earlier rules that matched: without a target, or it is not allowed
};

/// Maps a browser's locale string to an allowed locale and an interface language, by the rules of a mapping file:
///
///     <localeMappings><localeMapping name="httpAcceptLanguage"><choose>
///       <when matches="fr-CA*"><localeDefinition name="fr-ca"/></when>
///       <when matches="fr*"><localeDefinition name="fr-fr"/></when>
///       <when matches="*"><localeDefinition name="en-us"/></when>
///     </choose></localeMapping></localeMappings>
///
/// Rules are tried in the order of the file. A pattern with a "*" matches strings that begin with what stands before
/// its first "*" (what follows is ignored); one without matches the whole string only. Comparison is exact and
/// case-sensitive; the string is not split at commas or semicolons. The first rule that matches and names an allowed
/// locale applies; when none does, the locale is Locale::kUSA.
///
///     "fr-CA,fr;q=0.9" -> fr-ca     "fr" -> fr-fr     "FR" -> en-us (by "*")     "" -> en-us
///
/// Threads: const operations are safe from any thread once loadMappings has finished. Memory and time are linear in the
/// file; mapping time depends on the length of the matching patterns only, not on the number of rules or the string's
/// length.
class WEBI18N_API LocaleMapping
{
public:
    /// Uses the process's catalogue.
    LocaleMapping();
    /// Uses the given catalogue; the process's when the handle is null.
    explicit LocaleMapping(const Handle<const LocaleTagLookup>& hLocaleTagLookup);
    virtual ~LocaleMapping();
    LocaleMapping(const LocaleMapping&) = delete;
    LocaleMapping& operator=(const LocaleMapping&) = delete;

    const Handle<const LocaleTagLookup>& getLocaleTagLookup() const;

    /// Replaces the rules by those of the file. Throws XmlException; then the rules are as before.
    void loadMappings(const String& sFile);

    /// The locale unchanged, and the language: `sNewLanguage` when not empty (any text counts as a language), else the
    /// locale's default language, else "en".
    std::pair<Locale, String> mapLanguage(const Locale& rOldTag, const String& sNewLanguage) const;
    /// The locale by the rules, and the language as mapLanguage chooses it.
    std::pair<Locale, String> mapLocale(const String& sNewLocale, const String& sNewLanguage) const;
    /// The same decision with its reasons. Slower: it copies the rules that it names.
    LocaleMappingExplanation explainLocale(const String& sNewLocale, const String& sNewLanguage) const;

private:
    i18n_details::LocaleMappingImpl* m_pImpl;
};

}  // namespace vel
