#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "vel/core/autobuffer.h"
#include "vel/core/string.h"

namespace vel::i18n_details {

/// The patterns of an ordered list of rules as a tree of characters: finds the rules that match a text, in their order,
/// without looking at the others. Filled by one thread, then only read.
///
/// A pattern with a "*" matches texts that begin with what stands before its first "*"; one without matches the whole
/// text. The nodes on the way of "fr-CA" are "", "f", "fr", "fr-" ...: every rule that ends with a star on one of them
/// matches, and the rules without one that end on the last, if the text ends there too.
class LocaleRuleTree
{
public:
    using RuleIndex = std::uint32_t;

    LocaleRuleTree();

    /// Appends the next rule.
    void add(std::wstring_view pattern);

    /// Calls `visit(index)` for the matching rules in rising order, until it returns true.
    template <typename Visit>
    void visitMatches(std::wstring_view text, Visit visit) const;

private:
    using NodeIndex = std::uint32_t;
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    /// The rules of one kind that end on a node, as a list through m_vNextRule, in rising order.
    struct RuleList
    {
        RuleIndex m_nFirst = kNone;
        RuleIndex m_nLast = kNone;
    };
    struct Node
    {
        RuleList m_tPrefixRules;
        RuleList m_tExactRules;
    };
    /// The way from a node by a character; the table is open-addressed, its size a power of two.
    struct Edge
    {
        NodeIndex m_nFrom = kNone;
        wchar_t m_cCharacter = 0;
        NodeIndex m_nTo = kNone;
    };
    using Heads = AutoBuffer<RuleIndex, 16>;

    static std::size_t hash(NodeIndex from, wchar_t character) noexcept
    {
        const std::uint64_t key = std::uint64_t{from} << 32 | static_cast<std::uint32_t>(character);
        return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15ULL >> 32);
    }

    /// The place of the edge, or the free place where it would stand.
    std::size_t placeOf(NodeIndex from, wchar_t character) const noexcept
    {
        std::size_t place = hash(from, character) & (m_vEdges.size() - 1);
        while (m_vEdges[place].m_nTo != kNone &&
               (m_vEdges[place].m_nFrom != from || m_vEdges[place].m_cCharacter != character)) {
            place = (place + 1) & (m_vEdges.size() - 1);
        }
        return place;
    }

    NodeIndex follow(NodeIndex from, wchar_t character) const noexcept
    {
        return m_vEdges[placeOf(from, character)].m_nTo;
    }

    NodeIndex followOrAdd(NodeIndex from, wchar_t character);
    void growEdges();
    void append(RuleList& list, RuleIndex rule);
    std::size_t collectHeads(std::wstring_view text, Heads& heads) const;

    std::vector<Node> m_vNodes;  // the first is the root, the empty prefix
    std::vector<Edge> m_vEdges;
    std::vector<RuleIndex> m_vNextRule;  // by rule: the next one on the same list
    std::size_t m_nEdges = 0;
};

template <typename Visit>
void LocaleRuleTree::visitMatches(std::wstring_view text, Visit visit) const
{
    Heads heads;
    std::size_t count = collectHeads(text, heads);
    while (count > 0) {
        std::size_t least = 0;
        for (std::size_t i = 1; i < count; ++i) {
            least = heads[i] < heads[least] ? i : least;
        }
        const RuleIndex rule = heads[least];
        if (visit(rule)) {
            return;
        }
        heads[least] = m_vNextRule[rule];
        if (heads[least] == kNone) {
            heads[least] = heads[--count];
        }
    }
}

}  // namespace vel::i18n_details
