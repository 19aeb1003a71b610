#include "check/rulecover.h"

namespace cli {

std::optional<RuleCover::Rule> RuleCover::covering(std::wstring_view pattern) const
{
    const std::size_t star = pattern.find(L'*');
    std::optional<Rule> shorter;
    NodeIndex node = 0;
    for (const wchar_t character : pattern.substr(0, star)) {
        shorter = shorter ? shorter : m_vNodes[node].m_tPrefixRule;
        const auto edge = m_tEdges.find(keyOf(node, character));
        if (edge == m_tEdges.end()) {
            return shorter;
        }
        node = edge->second;
    }
    const Node& last = m_vNodes[node];
    if (star == pattern.npos) {
        return last.m_tExactRule ? last.m_tExactRule : shorter ? shorter : last.m_tPrefixRule;
    }
    return last.m_tPrefixRule ? last.m_tPrefixRule : shorter;
}

void RuleCover::add(std::wstring_view pattern, Rule rule)
{
    const std::size_t star = pattern.find(L'*');
    NodeIndex node = 0;
    for (const wchar_t character : pattern.substr(0, star)) {
        const auto [edge, isNew] = m_tEdges.emplace(keyOf(node, character), static_cast<NodeIndex>(m_vNodes.size()));
        if (isNew) {
            m_vNodes.emplace_back();
        }
        node = edge->second;
    }
    (star == pattern.npos ? m_vNodes[node].m_tExactRule : m_vNodes[node].m_tPrefixRule) = rule;
}

}  // namespace cli
