#include "webi18n/localemapping.h"

#include "localemappingimpl.h"
#include "localetaglookupstate.h"
#include "vel/core/staticinit.h"
#include "vel/log/logger.h"
#include "vel/xml/xmlpath.h"

namespace vel {

namespace i18n_details {

namespace {

// Registered names; no operation makes them current.
[[maybe_unused]] constexpr LogSource klsLocaleMapping(L"vel.i18n.localeMapping");
[[maybe_unused]] constexpr LogSource klsLocaleMappingMapLocale(L"vel.i18n.localeMapping.mapLocale");
constexpr LogSource klsLocaleMappingLoad(L"vel.i18n.localeMapping.load");
constexpr LogSource klsLocaleMappingMapLanguage(L"vel.i18n.localeMapping.mapLanguage");
constexpr const wchar_t* kPropertyFile = L"mappingFile";

VEL_INIT_TABLES const StaticValue<XmlPath> kpfMappings([] {
    return XmlPath(L"localeMapping[@name=\"httpAcceptLanguage\"]/choose/when");
});
VEL_INIT_TABLES const StaticValue<XmlPath> kpfLocaleDefinition([] { return XmlPath(L"localeDefinition"); });

}  // namespace

LocaleMappingImpl::LocaleMappingImpl(const Handle<const LocaleTagLookup>& hLocaleTagLookup)
    : m_tDefaultLocaleTag(Locale::kUSA),
      m_hLocaleTagLookup(hLocaleTagLookup.isNull() ? LocaleTagLookup::getInstanceHandle() : hLocaleTagLookup),
      m_sDefaultLanguage(L"en")
{}

LocaleMappingImpl::~LocaleMappingImpl() = default;

void LocaleMappingImpl::loadMappings(const String& sFile)
{
    const ScopedLogSource source(klsLocaleMappingLoad);
    const ScopedLogProperty file(kPropertyFile, sFile.view());
    XmlDocument document = XmlDocument::load(sFile);
    std::vector<NonOwningPtr<const XmlElement>> mappings = document.root().select(kpfMappings);
    std::vector<Target> targets;
    LocaleRuleTable table;
    targets.reserve(mappings.size());
    for (const NonOwningPtr<const XmlElement>& rule : mappings) {
        table.add(rule->attribute(L"matches"));
        targets.push_back(targetOf(*rule));
    }
    m_vMappings.swap(mappings);
    m_vTargets.swap(targets);
    std::swap(m_tRuleTable, table);
    m_tXmlDocument = std::move(document);
}

LocaleMappingImpl::Target LocaleMappingImpl::targetOf(const XmlElement& rule)
{
    const auto found = rule.select(kpfLocaleDefinition, 1);
    if (found.empty()) {
        return {};
    }
    const std::wstring_view name = found.front()->attribute(L"name");
    return {name, NamedLocales::hashOf(name), true};
}

bool LocaleMappingImpl::isLanguageSupported(const String& sLanguage) const
{
    // There is no list behind it: any text counts as a language.
    return !sLanguage.isEmpty();
}

std::pair<Locale, String> LocaleMappingImpl::mapLanguage(const Locale& rOldTag, const String& sLanguage) const
{
    const ScopedLogSource source(klsLocaleMappingMapLanguage);
    return withLanguage(rOldTag, sLanguage);
}

std::pair<Locale, String> LocaleMappingImpl::withLanguage(const Locale& rLocale, const String& sLanguage) const
{
    if (isLanguageSupported(sLanguage)) {
        return {rLocale, sLanguage};
    }
    const std::wstring_view language = rLocale.getInfoView(Locale::kDefaultLanguage);
    return {rLocale, language.empty() ? m_sDefaultLanguage : String(language)};
}

/// The locale of the rule's target, or null when it has none or that is not allowed.
const Locale* LocaleMappingImpl::findTarget(std::size_t rule) const
{
    const Target& target = m_vTargets[rule];
    if (!target.m_bExists) {
        return nullptr;
    }
    return m_hLocaleTagLookup->m_pState->m_tSupportedLocales.find(target.m_sDefinition.view(), target.m_nHash);
}

LocaleMappingRule LocaleMappingImpl::describe(std::size_t rule) const
{
    return {rule, String(m_vMappings[rule]->attribute(L"matches")), m_vTargets[rule].m_sDefinition};
}

/// The first rule that matches and whose locale is allowed decides; calls `skip(rule)` for the matching rules before
/// it.
template <typename Skip>
LocaleMappingImpl::Decision LocaleMappingImpl::applyRules(const String& sLocale, Skip skip) const
{
    Decision decision{&m_tDefaultLocaleTag, std::nullopt};
    m_tRuleTable.visitMatches(sLocale.view(), [&](std::size_t rule) {
        const Locale* const locale = findTarget(rule);
        if (locale == nullptr) {
            skip(rule);
            return false;
        }
        decision = {locale, rule};
        return true;
    });
    return decision;
}

std::pair<Locale, String> LocaleMappingImpl::mapLocale(const String& sLocale, const String& sLanguage) const
{
    // Mapping a locale logs under the language's source, deliberately.
    const ScopedLogSource source(klsLocaleMappingMapLanguage);
    return withLanguage(*applyRules(sLocale, [](std::size_t) {}).m_pLocale, sLanguage);
}

LocaleMappingExplanation LocaleMappingImpl::explainLocale(const String& sLocale, const String& sLanguage) const
{
    const ScopedLogSource source(klsLocaleMappingMapLanguage);  // as mapLocale does
    LocaleMappingExplanation explanation;
    const Decision decision =
        applyRules(sLocale, [&](std::size_t rule) { explanation.m_tSkipped.push_back(describe(rule)); });
    if (decision.m_tRule) {
        explanation.m_tRule = describe(*decision.m_tRule);
    }
    std::tie(explanation.m_tLocale, explanation.m_sLanguage) = withLanguage(*decision.m_pLocale, sLanguage);
    return explanation;
}

}  // namespace i18n_details

LocaleMapping::LocaleMapping() : LocaleMapping(Handle<const LocaleTagLookup>())
{}

LocaleMapping::LocaleMapping(const Handle<const LocaleTagLookup>& hLocaleTagLookup)
    : m_pImpl(new i18n_details::LocaleMappingImpl(hLocaleTagLookup))
{}

LocaleMapping::~LocaleMapping()
{
    delete m_pImpl;
}

const Handle<const LocaleTagLookup>& LocaleMapping::getLocaleTagLookup() const
{
    return m_pImpl->getLocaleTagLookup();
}

void LocaleMapping::loadMappings(const String& sFile)
{
    m_pImpl->loadMappings(sFile);
}

std::pair<Locale, String> LocaleMapping::mapLanguage(const Locale& rOldTag, const String& sNewLanguage) const
{
    return m_pImpl->mapLanguage(rOldTag, sNewLanguage);
}

std::pair<Locale, String> LocaleMapping::mapLocale(const String& sNewLocale, const String& sNewLanguage) const
{
    return m_pImpl->mapLocale(sNewLocale, sNewLanguage);
}

LocaleMappingExplanation LocaleMapping::explainLocale(const String& sNewLocale, const String& sNewLanguage) const
{
    return m_pImpl->explainLocale(sNewLocale, sNewLanguage);
}

}  // namespace vel
