#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "localerules.h"
#include "vel/core/nonowningptr.h"
#include "vel/xml/xmldocument.h"
#include "webi18n/localemapping.h"

namespace vel::i18n_details {

/// The rules of a mapping file and the catalogue that they are resolved against, request by request.
class LocaleMappingImpl
{
public:
    /// Takes the process's catalogue when the handle is null.
    explicit LocaleMappingImpl(const Handle<const LocaleTagLookup>& hLocaleTagLookup);
    virtual ~LocaleMappingImpl();

    const Handle<const LocaleTagLookup>& getLocaleTagLookup() const noexcept { return m_hLocaleTagLookup; }

    void loadMappings(const String& sFile);
    bool isLanguageSupported(const String& sLanguage) const;
    std::pair<Locale, String> mapLanguage(const Locale& rOldTag, const String& sLanguage) const;
    std::pair<Locale, String> mapLocale(const String& sLocale, const String& sLanguage) const;
    LocaleMappingExplanation explainLocale(const String& sLocale, const String& sLanguage) const;

private:
    /// The target of a rule. Its hash is kept, so that a request need not read the name to find the locale.
    struct Target
    {
        String m_sDefinition;
        std::uint32_t m_nHash = 0;
        bool m_bExists = false;  ///< false for a rule without a target
    };
    /// What the rules made of a locale string.
    struct Decision
    {
        const Locale* m_pLocale;             ///< lives as long as the catalogue does not change
        std::optional<std::size_t> m_tRule;  ///< none for the default locale
    };

    static Target targetOf(const XmlElement& rule);
    const Locale* findTarget(std::size_t rule) const;
    LocaleMappingRule describe(std::size_t rule) const;
    template <typename Skip>
    Decision applyRules(const String& sLocale, Skip skip) const;
    std::pair<Locale, String> withLanguage(const Locale& rLocale, const String& sLanguage) const;

    XmlDocument m_tXmlDocument;  // kept: the rules point into it
    std::vector<NonOwningPtr<const XmlElement>> m_vMappings;
    Locale m_tDefaultLocaleTag;
    Handle<const LocaleTagLookup> m_hLocaleTagLookup;
    String m_sDefaultLanguage;
    std::vector<Target> m_vTargets;  // by rule
    LocaleRuleTable m_tRuleTable;
};

}  // namespace vel::i18n_details
