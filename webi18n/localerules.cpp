#include "localerules.h"

namespace vel::i18n_details {

namespace {

constexpr std::size_t kFirstPrefixes = 64;
constexpr std::uint64_t kHashOfNothing = 1;

}  // namespace

LocaleRuleTable::LocaleRuleTable() : m_vPrefixes(kFirstPrefixes)
{}

void LocaleRuleTable::add(std::wstring_view pattern)
{
    const std::size_t star = pattern.find(L'*');
    const std::wstring_view text = pattern.substr(0, star);
    std::uint64_t hash = kHashOfNothing;
    Prefix* prefix = &m_tEmptyPrefix;
    for (const wchar_t character : text) {
        hash = extended(hash, character);
        prefix = &m_vPrefixes[placeOfOrAdd(hash)];
    }
    const RuleIndex rule = static_cast<RuleIndex>(m_vRules.size());
    const bool isWhole = star == std::wstring_view::npos;
    m_vRules.push_back({kNone, static_cast<std::uint32_t>(text.size()), m_vCharacters.size(), isWhole});
    m_vCharacters.insert(m_vCharacters.end(), text.begin(), text.end());
    append(isWhole ? prefix->m_tExactRules : prefix->m_tStarRules, rule);
}

std::size_t LocaleRuleTable::placeOfOrAdd(std::uint64_t hash)
{
    if (const std::size_t known = placeOf(hash); m_vPrefixes[known].m_nHash != 0) {
        return known;
    }
    if ((m_nPrefixes + 1) * 2 > m_vPrefixes.size()) {
        grow();
    }
    const std::size_t place = placeOf(hash);
    m_vPrefixes[place].m_nHash = hash;
    ++m_nPrefixes;
    return place;
}

void LocaleRuleTable::grow()
{
    std::vector<Prefix> old(m_vPrefixes.size() * 2);
    old.swap(m_vPrefixes);
    for (const Prefix& each : old) {
        if (each.m_nHash != 0) {
            m_vPrefixes[placeOf(each.m_nHash)] = each;
        }
    }
}

void LocaleRuleTable::append(RuleList& list, RuleIndex rule)
{
    if (list.m_nFirst == kNone) {
        list.m_nFirst = rule;
    } else {
        m_vRules[list.m_nLast].m_nNext = rule;
    }
    list.m_nLast = rule;
}

/// The first rule of every list that the text's prefixes reach; returns how many.
std::size_t LocaleRuleTable::collectHeads(std::wstring_view text, Heads& heads) const
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
    std::uint64_t hash = kHashOfNothing;
    const Prefix* prefix = &m_tEmptyPrefix;
    take(prefix->m_tStarRules.m_nFirst);
    for (const wchar_t character : text) {
        hash = extended(hash, character);
        prefix = &m_vPrefixes[placeOf(hash)];
        if (prefix->m_nHash == 0) {
            return count;
        }
        take(prefix->m_tStarRules.m_nFirst);
    }
    take(prefix->m_tExactRules.m_nFirst);
    return count;
}

}  // namespace vel::i18n_details
