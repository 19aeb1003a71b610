#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "vel/core/autobuffer.h"

namespace vel::i18n_details {

/// The patterns of an ordered list of rules as a table of their prefixes: finds the rules that match a text, in their
/// order, without looking at the others. Filled by one thread, then only read.
///
/// A pattern with a "*" matches texts that begin with what stands before its first "*"; one without matches the whole
/// text. The table knows every prefix of every pattern, for "fr-CA" the prefixes "f", "fr", "fr-" ...: as long as it
/// knows the text's prefixes, every rule that ends with a star on one of them may match, and the rules without one that
/// end on the last, if the text ends there too. Prefixes are known by their hash, which is carried on from one to the
/// next; the characters are compared for the rules found that way.
class LocaleRuleTable
{
public:
    using RuleIndex = std::uint32_t;

    LocaleRuleTable();

    /// Appends the next rule.
    void add(std::wstring_view pattern);

    /// Calls `visit(index)` for the matching rules in rising order, until it returns true.
    template <typename Visit>
    void visitMatches(std::wstring_view text, Visit visit) const;

private:
    static constexpr RuleIndex kNone = std::numeric_limits<RuleIndex>::max();

    /// The rules of one kind that end on a prefix, as a list through Rule::m_nNext, in rising order.
    struct RuleList
    {
        RuleIndex m_nFirst = kNone;
        RuleIndex m_nLast = kNone;
    };
    /// A place of the open-addressed table, whose size is a power of two and which is never full. No hash is 0: that
    /// marks a free place.
    struct Prefix
    {
        std::uint64_t m_nHash = 0;
        RuleList m_tStarRules;
        RuleList m_tExactRules;
    };
    struct Rule
    {
        RuleIndex m_nNext = kNone;
        std::uint32_t m_nLength = 0;  ///< of what stands before the star
        std::size_t m_nStart = 0;     ///< in m_vCharacters
        bool m_bWhole = false;        ///< no star: the text must end there
    };
    using Heads = AutoBuffer<RuleIndex, 16>;

    /// The hash of a prefix with one character more.
    static std::uint64_t extended(std::uint64_t hash, wchar_t character) noexcept
    {
        return ((hash ^ static_cast<std::uint32_t>(character)) * 0x9E3779B97F4A7C15ULL) | 1;
    }
    std::size_t placeOf(std::uint64_t hash) const noexcept
    {
        const std::size_t mask = m_vPrefixes.size() - 1;
        std::size_t place = static_cast<std::size_t>(hash >> 32) & mask;
        while (m_vPrefixes[place].m_nHash != 0 && m_vPrefixes[place].m_nHash != hash) {
            place = (place + 1) & mask;
        }
        return place;
    }
    bool matches(const Rule& rule, std::wstring_view text) const noexcept
    {
        const std::wstring_view prefix(m_vCharacters.data() + rule.m_nStart, rule.m_nLength);
        return (rule.m_bWhole ? text : text.substr(0, rule.m_nLength)) == prefix;
    }

    std::size_t placeOfOrAdd(std::uint64_t hash);
    void grow();
    void append(RuleList& list, RuleIndex rule);
    std::size_t collectHeads(std::wstring_view text, Heads& heads) const;

    Prefix m_tEmptyPrefix;
    std::vector<Prefix> m_vPrefixes;
    std::size_t m_nPrefixes = 0;
    std::vector<Rule> m_vRules;
    std::vector<wchar_t> m_vCharacters;
};

template <typename Visit>
void LocaleRuleTable::visitMatches(std::wstring_view text, Visit visit) const
{
    Heads heads;
    std::size_t count = collectHeads(text, heads);
    while (count > 0) {
        std::size_t least = 0;
        for (std::size_t i = 1; i < count; ++i) {
            least = heads[i] < heads[least] ? i : least;
        }
        const RuleIndex index = heads[least];
        const Rule& rule = m_vRules[index];
        if (matches(rule, text) && visit(index)) {
            return;
        }
        heads[least] = rule.m_nNext;
        if (heads[least] == kNone) {
            heads[least] = heads[--count];
        }
    }
}

}  // namespace vel::i18n_details
