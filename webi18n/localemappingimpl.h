#pragma once

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
    /// The target of a rule; nothing when it has none.
    using Target = std::optional<String>;

    static Target targetOf(const XmlElement& rule);
    bool findTarget(std::size_t rule, Locale& rLocale) const;
    LocaleMappingRule describe(std::size_t rule) const;
    template <typename Skip>
    std::optional<std::size_t> applyRules(const String& sLocale, Locale& candidate, Skip skip) const;

    XmlDocument m_tXmlDocument;  // kept: the rules point into it
    std::vector<NonOwningPtr<const XmlElement>> m_vMappings;
    Locale m_tDefaultLocaleTag;
    Handle<const LocaleTagLookup> m_hLocaleTagLookup;
    String m_sDefaultLanguage;
    std::vector<Target> m_vTargets;  // by rule
    LocaleRuleTree m_tRuleTree;
};

}  // namespace vel::i18n_details
