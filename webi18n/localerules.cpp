#include "localerules.h"

namespace vel::i18n_details {

namespace {

constexpr std::size_t kFirstEdges = 64;

}  // namespace

LocaleRuleTree::LocaleRuleTree() : m_vNodes(1), m_vEdges(kFirstEdges)
{}

void LocaleRuleTree::add(std::wstring_view pattern)
{
    const std::size_t star = pattern.find(L'*');
    NodeIndex node = 0;
    for (const wchar_t character : pattern.substr(0, star)) {
        node = followOrAdd(node, character);
    }
    const RuleIndex rule = static_cast<RuleIndex>(m_vNextRule.size());
    m_vNextRule.push_back(kNone);
    append(star == std::wstring_view::npos ? m_vNodes[node].m_tExactRules : m_vNodes[node].m_tPrefixRules, rule);
}

LocaleRuleTree::NodeIndex LocaleRuleTree::followOrAdd(NodeIndex from, wchar_t character)
{
    if (const NodeIndex known = follow(from, character); known != kNone) {
        return known;
    }
    if ((m_nEdges + 1) * 2 > m_vEdges.size()) {
        growEdges();
    }
    const NodeIndex added = static_cast<NodeIndex>(m_vNodes.size());
    m_vNodes.emplace_back();
    m_vEdges[placeOf(from, character)] = {from, character, added};
    ++m_nEdges;
    return added;
}

void LocaleRuleTree::growEdges()
{
    std::vector<Edge> old(m_vEdges.size() * 2);
    old.swap(m_vEdges);
    for (const Edge& each : old) {
        if (each.m_nTo != kNone) {
            m_vEdges[placeOf(each.m_nFrom, each.m_cCharacter)] = each;
        }
    }
}

void LocaleRuleTree::append(RuleList& list, RuleIndex rule)
{
    if (list.m_nFirst == kNone) {
        list.m_nFirst = rule;
    } else {
        m_vNextRule[list.m_nLast] = rule;
    }
    list.m_nLast = rule;
}

/// The first rule of every list that the text reaches; returns how many.
std::size_t LocaleRuleTree::collectHeads(std::wstring_view text, Heads& heads) const
{
    std::size_t count = 0;
    const auto take = [&](RuleIndex head) {
        if (head != kNone) {
            if (count == heads.capacity()) {
                heads.ensureCapacity(count * 2);
            }
            heads[count++] = head;
        }
    };
    NodeIndex node = 0;
    take(m_vNodes[node].m_tPrefixRules.m_nFirst);
    for (const wchar_t character : text) {
        node = follow(node, character);
        if (node == kNone) {
            return count;
        }
        take(m_vNodes[node].m_tPrefixRules.m_nFirst);
    }
    take(m_vNodes[node].m_tExactRules.m_nFirst);
    return count;
}

}  // namespace vel::i18n_details
