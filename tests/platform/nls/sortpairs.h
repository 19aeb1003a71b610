#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sortpairs {

/// What came of comparing pairs of texts.
struct Report
{
    std::size_t m_nPairs = 0;        ///< each at every strength
    std::size_t m_nDifferences = 0;  ///< from ICU, or between keys and comparison
    std::string m_sFirst;            ///< the first difference
};

/// Compares each pair of the texts at each strength: the order of our keys, and of the comparison without keys, has to
/// be that of ICU's keys. `tag` names the sort. Throws std::runtime_error when there is none.
Report compareTexts(const std::string& tag, const std::vector<std::u16string>& texts);

/// compareTexts, with at least `pairs` pairs of made texts.
Report comparePairs(const std::string& tag, std::size_t pairs, std::uint64_t seed);

/// ICU's name of the sort. Throws std::runtime_error when the tag is none.
std::string icuLocaleOf(const std::string& tag);

}  // namespace sortpairs
