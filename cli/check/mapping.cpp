#include "check/mapping.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "check/rulecover.h"
#include "check/tagspelling.h"
#include "text.h"

namespace cli {

namespace {

using vel::String;
using vel::XmlElement;

constexpr const wchar_t* ksMappingName = L"httpAcceptLanguage";
constexpr std::size_t kNamesShown = 5;
constexpr std::size_t kMostSingleTargets = 5;

struct Rule
{
    const XmlElement* m_pElement;
    const XmlElement* m_pTarget;  // or null
    std::wstring_view m_sPattern;
};

class MappingCheck
{
public:
    MappingCheck(const XmlElement& root, const Knowledge& knowledge, Findings& findings)
        : m_tRoot(root), m_tKnowledge(knowledge), m_tFindings(findings)
    {}

    void run();

private:
    void readMapping(const XmlElement& mapping);
    void readRules(const XmlElement& choose);
    void readRule(const XmlElement& when);
    void addSkipped(const XmlElement& element, const char* expected);

    void checkRule(std::size_t index);
    std::optional<Problem> checkTarget(const Rule& rule) const;
    bool isNotAllowed(const Rule& rule) const;
    void addNotAllowed(const Rule& rule);
    std::optional<Problem> checkCover(std::size_t index);
    std::optional<Problem> checkPattern(const Rule& rule) const;
    void checkCatchAll();
    void checkAllowed();

    const XmlElement& m_tRoot;
    const Knowledge& m_tKnowledge;
    Findings& m_tFindings;
    const XmlElement* m_pMapping = nullptr;
    std::vector<Rule> m_vRules;
    std::set<std::wstring_view> m_tPatterns;
    RuleCover m_tCover;
    std::size_t m_nNotAllowed = 0;
    bool m_bSaidNotAllowed = false;
    bool m_bSaidAfterCatchAll = false;
};

std::string lineOf(const Rule& rule)
{
    return "line " + std::to_string(rule.m_pElement->line());
}

std::wstring_view textToStar(std::wstring_view pattern)
{
    const std::size_t star = pattern.find(L'*');
    return star == pattern.npos ? pattern : pattern.substr(0, star + 1);
}

bool isCatchAll(std::wstring_view pattern)
{
    return pattern.starts_with(L'*');
}

void MappingCheck::addSkipped(const XmlElement& element, const char* expected)
{
    m_tFindings.add(element, {kWarning, "skipped-element",
                              "<" + visibleText(element.name()) + "> is skipped: here stands " + expected});
}

void MappingCheck::run()
{
    for (const XmlElement& child : vel::children(m_tRoot)) {
        if (child.name() != L"localeMapping") {
            addSkipped(child, "<localeMapping>");
        } else if (child.attribute(L"name") == ksMappingName) {
            readMapping(child);
        }
    }
    if (m_pMapping == nullptr) {
        m_tFindings.add(m_tRoot, {kWarning, "no-accept-language-mapping",
                                  "no <localeMapping> is named 'httpAcceptLanguage', so no rule is read: name it so"});
        return;
    }
    if (m_vRules.empty()) {
        m_tFindings.add(*m_pMapping, {kWarning, "no-rules",
                                      "there is no rule, so every browser gets the built-in locale: add <when> " +
                                          std::string("elements in <choose>")});
        return;
    }
    m_nNotAllowed = static_cast<std::size_t>(
        std::count_if(m_vRules.begin(), m_vRules.end(), [this](const Rule& rule) { return isNotAllowed(rule); }));
    for (std::size_t index = 0; index < m_vRules.size(); ++index) {
        checkRule(index);
    }
    checkCatchAll();
    checkAllowed();
}

void MappingCheck::readMapping(const XmlElement& mapping)
{
    m_pMapping = &mapping;
    for (const XmlElement& child : vel::children(mapping)) {
        if (child.name() == L"choose") {
            readRules(child);
        } else {
            addSkipped(child, "<choose> with the rules in it");
        }
    }
}

void MappingCheck::readRules(const XmlElement& choose)
{
    for (const XmlElement& child : vel::children(choose)) {
        if (child.name() == L"when") {
            readRule(child);
        } else {
            addSkipped(child, "<when>; for all other browsers, end with the rule '*'");
        }
    }
}

void MappingCheck::readRule(const XmlElement& when)
{
    const XmlElement* target = nullptr;
    for (const XmlElement& child : vel::children(when)) {
        if (child.name() != L"localeDefinition") {
            addSkipped(child, "<localeDefinition>");
        } else if (target != nullptr) {
            m_tFindings.add(
                child, {kWarning, "skipped-element", "a second target is skipped: write a rule of its own for it"});
        } else {
            target = &child;
        }
    }
    m_vRules.push_back({&when, target, when.attribute(L"matches")});
    m_tPatterns.insert(m_vRules.back().m_sPattern);
}

/// One finding at most: what is first wrong with a rule explains the rest.
void MappingCheck::checkRule(std::size_t index)
{
    const Rule& rule = m_vRules[index];
    // A rule without a target that counts is passed over when browsers are mapped, so it covers no later one.
    if (isNotAllowed(rule)) {
        addNotAllowed(rule);
        return;
    }
    if (auto problem = checkTarget(rule)) {
        m_tFindings.add(rule.m_pTarget == nullptr ? *rule.m_pElement : *rule.m_pTarget, std::move(*problem));
        return;
    }
    const bool isCovered = m_tCover.covering(rule.m_sPattern).has_value();
    if (auto problem = isCovered ? checkCover(index) : checkPattern(rule)) {
        m_tFindings.add(*rule.m_pElement, std::move(*problem));
    }
    if (!isCovered) {
        m_tCover.add(rule.m_sPattern, static_cast<RuleCover::Rule>(index));
    }
}

std::optional<Problem> MappingCheck::checkTarget(const Rule& rule) const
{
    if (rule.m_pTarget == nullptr || rule.m_pTarget->attribute(L"name").empty()) {
        return Problem{kWarning, "rule-without-target",
                       "the rule " + quotedName(rule.m_sPattern) +
                           " names no definition and is passed over: add <localeDefinition name=\"...\"/>"};
    }
    const std::wstring_view name = rule.m_pTarget->attribute(L"name");
    if (m_tKnowledge.isUsable(name)) {
        return std::nullopt;
    }
    return Problem{kWarning, "unknown-definition",
                   "there is no definition " + quotedName(name) + ", so the rule " + quotedName(rule.m_sPattern) +
                       " is passed over: correct the name"};
}

/// Whether the rule's target is there, but is no allowed locale.
bool MappingCheck::isNotAllowed(const Rule& rule) const
{
    if (rule.m_pTarget == nullptr) {
        return false;
    }
    const std::wstring_view name = rule.m_pTarget->attribute(L"name");
    return !name.empty() && !m_tKnowledge.isUsable(name) && m_tKnowledge.isDefined(name);
}

/// Few such rules are accidents, each its own. Many are one decision: rules for all locales, of which few are allowed.
void MappingCheck::addNotAllowed(const Rule& rule)
{
    const bool isOne = m_nNotAllowed > kMostSingleTargets;
    if (isOne && std::exchange(m_bSaidNotAllowed, true)) {
        return;
    }
    const std::string others =
        isOne ? ", and " + std::to_string(m_nNotAllowed - 1) +
                    " more rules of this file for the same reason: allow the locales or take the rules out"
              : ": allow the locale or take the rule out";
    m_tFindings.add(*rule.m_pTarget,
                    {kWarning, "target-not-allowed",
                     "the definition " + quotedName(rule.m_pTarget->attribute(L"name")) +
                         " is not allowed, so the rule " + quotedName(rule.m_sPattern) + " is passed over" + others});
}

/// For a rule that never applies: which one takes its texts. The rules behind a "*" are one accident.
std::optional<Problem> MappingCheck::checkCover(std::size_t index)
{
    const Rule& rule = m_vRules[index];
    const Rule& earlier = m_vRules[*m_tCover.covering(rule.m_sPattern)];
    if (textToStar(earlier.m_sPattern) == textToStar(rule.m_sPattern)) {
        return Problem{kWarning, "duplicate-pattern",
                       "the rule " + quotedName(rule.m_sPattern) + " never applies, as the one in " + lineOf(earlier) +
                           " has the same pattern: keep one of them"};
    }
    if (!isCatchAll(earlier.m_sPattern)) {
        return Problem{kWarning, "covered-rule",
                       "the rule " + quotedName(rule.m_sPattern) + " never applies, as the rule " +
                           quotedName(earlier.m_sPattern) + " in " + lineOf(earlier) +
                           " takes all its texts: move it before that one"};
    }
    if (std::exchange(m_bSaidAfterCatchAll, true)) {
        return std::nullopt;
    }
    const std::size_t others = m_vRules.size() - index - 1;
    return Problem{kWarning, "rule-after-catch-all",
                   "the rule " + quotedName(rule.m_sPattern) +
                       (others == 0 ? "" : " and those after it (" + std::to_string(others) + ")") +
                       " never apply, as the rule " + quotedName(earlier.m_sPattern) + " in " + lineOf(earlier) +
                       " takes every text: move that one to the end"};
}

std::optional<Problem> MappingCheck::checkPattern(const Rule& rule) const
{
    if (!rule.m_pElement->hasAttribute(L"matches")) {
        return Problem{kWarning, "rule-without-pattern",
                       "a rule without 'matches' takes the empty text only: write its pattern"};
    }
    if (textToStar(rule.m_sPattern) != rule.m_sPattern) {
        return Problem{kWarning, "text-after-star",
                       "what follows the first * in " + quotedName(rule.m_sPattern) + " is ignored: write " +
                           quotedName(textToStar(rule.m_sPattern))};
    }
    const String spelled = browserSpelling(rule.m_sPattern);
    // Who has a rule for the usual spelling too serves other clients with this one.
    if (spelled.view() == rule.m_sPattern || m_tPatterns.contains(spelled.view())) {
        return std::nullopt;
    }
    return Problem{kMinorWarning, "pattern-spelling",
                   "browsers do not send what the pattern " + quotedName(rule.m_sPattern) +
                       " matches, and letter case counts: write " + quotedName(spelled)};
}

void MappingCheck::checkCatchAll()
{
    for (const Rule& rule : m_vRules) {
        if (isCatchAll(rule.m_sPattern)) {
            return;
        }
    }
    m_tFindings.add(*m_pMapping, {kMinorWarning, "no-catch-all",
                                  "no rule takes every text, so other browsers get the built-in locale: end with " +
                                      std::string("the rule '*'")});
}

/// One finding for all of them: rules that were never written are one omission.
void MappingCheck::checkAllowed()
{
    if (!m_tKnowledge.m_tAllowed) {
        return;
    }
    NameSet named;
    for (const Rule& rule : m_vRules) {
        if (rule.m_pTarget != nullptr) {
            named.insert(String(rule.m_pTarget->attribute(L"name")));
        }
    }
    std::string names;
    std::size_t count = 0;
    for (const String& allowed : *m_tKnowledge.m_tAllowed) {
        if (!named.contains(allowed) && ++count <= kNamesShown) {
            names += (count == 1 ? "" : ", ") + quotedName(allowed);
        }
    }
    if (count == 0) {
        return;
    }
    const std::string more = count > kNamesShown ? " and " + std::to_string(count - kNamesShown) + " more" : "";
    m_tFindings.add(*m_pMapping, {kMinorWarning, "no-rule-for-locale",
                                  "no rule leads to the allowed " + std::string(count == 1 ? "locale " : "locales ") +
                                      names + more + ", so no browser gets it: add a rule"});
}

}  // namespace

void checkMapping(const XmlElement& root, const Knowledge& knowledge, Findings& findings)
{
    MappingCheck(root, knowledge, findings).run();
}

}  // namespace cli
