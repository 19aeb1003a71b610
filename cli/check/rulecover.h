#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace cli {

/// The texts that the rules so far take, to tell whether a later rule can ever apply. Time per pattern is that of its
/// length and the logarithm of what was taken before. A pattern with a "*" takes the texts that begin with what stands
/// before its first "*", one without just itself.
class RuleCover
{
public:
    using Rule = std::uint32_t;

    RuleCover() : m_vNodes(1) {}

    /// The earlier rule that takes every text of this pattern, if one does; one of the same pattern before others.
    ///
    ///     after "fr*": "fr-CA*" -> it    "fr" -> it    "f*" -> none
    ///     after "fr": "fr" -> it         "fr*" -> none
    std::optional<Rule> covering(std::wstring_view pattern) const;
    /// Takes the texts of the pattern for a rule; one that is covered already need not be added.
    void add(std::wstring_view pattern, Rule rule);

private:
    using NodeIndex = std::uint32_t;
    struct Node
    {
        std::optional<Rule> m_tPrefixRule;
        std::optional<Rule> m_tExactRule;
    };

    static std::uint64_t keyOf(NodeIndex from, wchar_t character) noexcept
    {
        return std::uint64_t{from} << 32 | static_cast<std::uint32_t>(character);
    }

    std::vector<Node> m_vNodes;  // the first is the empty prefix
    std::map<std::uint64_t, NodeIndex> m_tEdges;
};

}  // namespace cli
