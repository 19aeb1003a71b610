#pragma once

#include <cstddef>
#include <optional>

#include "sortcursor.h"
#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// The first difference of two texts on each of the lower levels, or the last one of accents where these count from the
/// end; taken down as long as both texts have elements of equal primary weights.
class LowerLevels
{
public:
    explicit LowerLevels(const SortData& data) noexcept : m_bBackwards(data.m_tRules.isFrench()) {}

    void add(SortEntry left, SortEntry right) noexcept
    {
        if (entry::secondary(left) != entry::secondary(right) && (m_nSecondary == 0 || m_bBackwards)) {
            m_nSecondary = compareCodes(entry::secondary(left), entry::secondary(right), kSecondaryTop);
        }
        if (entry::tertiary(left) != entry::tertiary(right) && m_nTertiary == 0) {
            m_nTertiary = compareCodes(entry::tertiary(left), entry::tertiary(right), kTertiaryTop);
        }
    }
    bool hasSecondary() const noexcept { return m_nSecondary != 0; }
    /// What they say up to the third level.
    int order(SortStrength strength) const noexcept
    {
        if (strength == SortStrength::kPrimary || m_nSecondary != 0) {
            return strength == SortStrength::kPrimary ? 0 : m_nSecondary;
        }
        return strength == SortStrength::kSecondary ? 0 : m_nTertiary;
    }

private:
    /// Codes as they order: the common weight, which has none, between the lower and the higher ones.
    static int compareCodes(unsigned left, unsigned right, unsigned top) noexcept
    {
        const auto rank = [&](unsigned code) { return code == 0 ? 2 * top + 1 : 2 * code; };
        return rank(left) < rank(right) ? -1 : 1;
    }

    bool m_bBackwards;
    int m_nSecondary = 0;
    int m_nTertiary = 0;
};

/// The order of two texts up to the third level, by the bytes of their primary weights; nothing where only keys can
/// tell. The texts are equal up to `equal`.
std::optional<int> compareByBytes(const SortData& data, WideText a, WideText b, std::size_t equal,
                                  SortStrength strength) noexcept;

}  // namespace vel::nls
