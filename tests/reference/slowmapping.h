#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlpath.h"
#include "webi18n/localemapping.h"

// The mapping of a locale string by rules, as slowly and as plainly as it can be said: what the library's rule tree is
// compared with.
namespace slowmapping {

struct Rule
{
    std::wstring m_sMatches;
    std::optional<std::wstring> m_tDefinition;  ///< none: the rule has no target
};

struct Decision
{
    std::optional<std::size_t> m_tRule;   ///< the rule that applied
    std::vector<std::size_t> m_vSkipped;  ///< matching rules before it, without an allowed target
};

inline bool matches(const std::wstring& pattern, std::wstring_view text)
{
    const std::size_t star = pattern.find(L'*');
    if (star == std::wstring::npos) {
        return text == pattern;
    }
    return text.substr(0, star) == pattern.substr(0, star);
}

/// `isAllowed(name)`: whether the catalogue finds a locale of that name.
template <typename IsAllowed>
Decision decide(const std::vector<Rule>& rules, std::wstring_view text, IsAllowed isAllowed)
{
    Decision decision;
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (!matches(rules[i].m_sMatches, text)) {
            continue;
        }
        if (rules[i].m_tDefinition && isAllowed(*rules[i].m_tDefinition)) {
            decision.m_tRule = i;
            return decision;
        }
        decision.m_vSkipped.push_back(i);
    }
    return decision;
}

/// The rules of a mapping document, read by walking its elements one by one.
inline std::vector<Rule> rulesOf(const vel::XmlDocument& document)
{
    std::vector<Rule> rules;
    for (const vel::XmlElement& mapping : vel::children(document.root())) {
        if (mapping.name() != L"localeMapping" || mapping.attribute(L"name") != L"httpAcceptLanguage") {
            continue;
        }
        for (const vel::XmlElement& choose : vel::children(mapping)) {
            for (const vel::XmlElement& when : vel::children(choose)) {
                if (choose.name() != L"choose" || when.name() != L"when") {
                    continue;
                }
                Rule rule{std::wstring(when.attribute(L"matches")), std::nullopt};
                for (const vel::XmlElement& target : vel::children(when)) {
                    if (target.name() == L"localeDefinition" && !rule.m_tDefinition) {
                        rule.m_tDefinition = std::wstring(target.attribute(L"name"));
                    }
                }
                rules.push_back(std::move(rule));
            }
        }
    }
    return rules;
}

inline bool sameRule(const vel::LocaleMappingRule& seen, const std::vector<Rule>& rules, std::size_t index)
{
    return seen.m_nIndex == index && seen.m_sMatches.view() == rules[index].m_sMatches &&
           seen.m_sDefinition.view() == rules[index].m_tDefinition.value_or(std::wstring());
}

/// Whether the library explains the decision as it was taken here.
inline bool sameDecision(const Decision& decision, const vel::LocaleMappingExplanation& seen,
                         const std::vector<Rule>& rules)
{
    if (seen.m_tRule.has_value() != decision.m_tRule.has_value() ||
        seen.m_tSkipped.size() != decision.m_vSkipped.size()) {
        return false;
    }
    for (std::size_t i = 0; i < decision.m_vSkipped.size(); ++i) {
        if (!sameRule(seen.m_tSkipped[i], rules, decision.m_vSkipped[i])) {
            return false;
        }
    }
    return !decision.m_tRule || sameRule(*seen.m_tRule, rules, *decision.m_tRule);
}

}  // namespace slowmapping
